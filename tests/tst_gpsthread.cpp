// The GPS reader: NMEA decoding into the GPS page's texts, and the reader
// thread on a pseudo-terminal fed with recorded receiver output.
#include "ptydevice.h"
#include "simunit.h"
#include "telematics/MyGPSThread.h"
#include "telematics/nmeadecoder.h"
#include "telematics/serial.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

namespace
{

const char* const outputNames[] = { "time", "pos", "sat", "alt", "speed", "acc" };

QStringList decode(const QByteArray& block, bool running = true)
{
    QStringList out;
    NmeaDecoder decoder;
    const std::atomic<bool> flag { running };
    decoder.decodeBlock(
        block.constData(), int(block.size()), flag, [&](NmeaDecoder::Output o, const QString& text) {
            out << QString::fromLatin1(outputNames[o]) + u'=' + text;
        });
    return out;
}

QString corpusDir()
{
    return QStringLiteral(ZUSETTINGS_CORPUS_DIR "/nmea");
}

QStringList captures()
{
    return QDir(corpusDir()).entryList({ "*.log" }, QDir::Files, QDir::Name);
}

// A running reader thread on a pseudo-terminal, with what it showed. It is
// stopped and its pending signals dropped when the test ends, passed or not.
struct Reader {
    enum Port { None, Open, HungUp };
    explicit Reader(Port port)
    {
        if (port != None) {
            serial_dev_gps = serial_open(device.path());
            serial_setup(
                serial_dev_gps, SERIAL_BAUD_9600, SERIAL_BITS_8, SERIAL_PARITY_NONE, SERIAL_STOPBIT_1);
        }
        if (port == HungUp)
            device.hangUp();
        QObject::connect(
            &thread, &MyGPSThread::newText, &receiver, [this](const QString& text) { raw += text; });
        for (auto signal : { &MyGPSThread::newTime, &MyGPSThread::newPos, &MyGPSThread::newSat,
                 &MyGPSThread::newAlt, &MyGPSThread::newSpeed, &MyGPSThread::newAcc })
            QObject::connect(&thread, signal, &receiver, [this] { ++decoded; });
        thread.start();
    }
    ~Reader()
    {
        gpsThreadRunning = false;
        thread.wait();
    }

    PtyDevice device;
    MyGPSThread thread;
    QObject receiver;
    QString raw;
    int decoded = 0;
};

} // namespace

class tst_gpsthread : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { resetUnit(); }

    void decoding_data()
    {
        QTest::addColumn<QByteArray>("block");
        QTest::addColumn<QStringList>("shown");

        const QByteArray rmc("$GPRMC,140307.000,A,5740.1234,N,01158.5678,E,0.13,274.5,210612,,,A*6B\r\n");
        QTest::newRow("RMC") << rmc
                             << QStringList { "time=2012-06-21 - 14:03:07", "pos=5740.1234N 01158.5678E ",
                                    "speed=0.13 knots, Heading: 274.5 degrees" };
        QTest::newRow("RMC, status V")
            << QByteArray("$GPRMC,000416.984,V,3600.0000,S,07200.0000,W,,,260120,,*3B")
            << QStringList { "time=2020-01-26 - 00:04:16", "pos=3600.0000S 07200.0000W - INVALID",
                   "speed= knots, Heading:  degrees" };
        QTest::newRow("RMC without date and position")
            << QByteArray("$GPRMC,,V,,,,,,,,,,N*53\n") << QStringList { "speed= knots, Heading:  degrees" };
        QTest::newRow("RMC, short time field")
            << QByteArray("$GPRMC,12,A,5740.1,N,01158.5,E,1.5,90.0,010199,,*00")
            << QStringList { "time=2099-01-01 - 12::", "pos=5740.1N 01158.5E ",
                   "speed=1.5 knots, Heading: 90.0 degrees" };
        // A cut sentence keeps the fields an earlier line left: the last field
        // of a line is never taken, so the longitude and the date are old.
        QTest::newRow("cut RMC reuses fields")
            << rmc + "$GPRMC,140308.000,A,5741.0000,S,012"
            << QStringList { "time=2012-06-21 - 14:03:07", "pos=5740.1234N 01158.5678E ",
                   "speed=0.13 knots, Heading: 274.5 degrees", "time=2012-06-21 - 14:03:08",
                   "pos=5741.0000S 01158.5678E ", "speed=0.13 knots, Heading: 274.5 degrees" };
        // The GGA line leaves its altitude where RMC has the date, and its east
        // letter where RMC has the longitude.
        QTest::newRow("GGA fields under a short RMC") << QByteArray(
            "$GPGGA,140307,5740.1,N,01158.5,E,1,08,1.0,1234.5,M,,M,,*4A\n$GPRMC,140309,A,5740.1,N,*0\n")
                                                      << QStringList { "alt=1234.5 meters", "sat=08",
                                                             "time=20.5-34-12 - 14:03:09",
                                                             "speed=08 knots, Heading: 1.0 degrees" };
        QTest::newRow("GGA altitude 123456 and 12345") << QByteArray(
            "$GPGGA,1,2,N,3,E,1,12,1.0,123456,M,,,,*00\n$GPGGA,1,2,N,3,E,1,4.5,1.0,12345,M,,,,*00\n")
                                                       << QStringList { "sat=12", "alt=12345 meters" };
        QTest::newRow("GGA without fix")
            << QByteArray("$GPGGA,,,,,,0,,,,,,,,*66\r\n") << QStringList { "sat=" };
        QTest::newRow("figure of merit") << QByteArray("$PFST,FOM,6*63\n$PFST,FOM,12\nxx$PFST,FOM,7*0\n")
                                         << QStringList { "acc=6 meters", "acc=12 meters", "acc=M,7 meters" };
        QTest::newRow("other talkers and sentences")
            << QByteArray("$GNRMC,1,A,1.0,N,2.0,E,1,2,010101,,*0\n$GPGSA,A,3,05*30\n$GPGGA\n")
            << QStringList();
        // Both tags in one line share one field split.
        QTest::newRow("glued GGA and RMC")
            << QByteArray("$GPGGA,1,2,N,3,E,1,07,1.0,9.5$GPRMC,1,A,1.0,N,2.0,E,,,,*0\n")
            << QStringList { "time=20GP-5$-9. - 1::", "speed=07 knots, Heading: 1.0 degrees",
                   "alt=9.5$GPRMC meters", "sat=07" };
        QTest::newRow("zero byte ends the block")
            << QByteArray("$PFST,FOM,5*0\n\0$PFST,FOM,6*0\n", 28) << QStringList { "acc=5 meters" };
        QTest::newRow("511 characters are a whole line")
            << "$PFST,FOM," + QByteArray(500, '9') + "*\n$PFST,FOM,4*\n"
            << QStringList { "acc=" + QString(500, u'9') + " meters", "acc=4 meters" };
        QTest::newRow("a longer line ends the block") << "$PFST,FOM," + QByteArray(502, '9')
                + "\n$PFST,FOM,4*\n" << QStringList { "acc=" + QString(501, u'9') + " meters" };
    }

    void decoding()
    {
        QFETCH(QByteArray, block);
        QFETCH(QStringList, shown);
        QCOMPARE(decode(block), shown);
        QVERIFY(decode(block, false).isEmpty());
    }

    void reader_data()
    {
        QTest::addColumn<QString>("capture");
        for (const QString& name : captures())
            QTest::newRow(qPrintable(name)) << name;
    }

    // The recording, sent in pieces with pauses, reaches the page as raw text
    // in 512-byte reads that end at a zero byte, and decoded; the thread stops
    // at once and closes the port.
    void reader()
    {
        QFETCH(QString, capture);

        QByteArray stream = fileContents(corpusDir() + '/' + capture);
        QVERIFY(!stream.isEmpty());
        // Newlines up to a whole read, so that the last read ends at once.
        stream.append(QByteArray((512 - stream.size() % 512) % 512, '\n'));
        QString expected;
        for (qsizetype at = 0; at < stream.size(); at += 512) {
            const QByteArray block = stream.mid(at, 512);
            const qsizetype zero = block.indexOf('\0');
            expected += QString::fromLatin1(zero < 0 ? block : block.left(zero));
        }

        Reader reader(Reader::Open);
        QScopedPointer<QThread> sender(QThread::create([&] {
            QRandomGenerator random(uint(stream.size()));
            for (qsizetype at = 0; at < stream.size();) {
                const qsizetype n = random.bounded(1, 700);
                reader.device.send(stream.mid(at, n));
                at += n;
                QThread::msleep(random.bounded(20));
            }
        }));
        sender->start();
        QTRY_COMPARE_WITH_TIMEOUT(reader.raw.size(), expected.size(), 60000);
        QVERIFY(sender->wait(1000));
        QVERIFY(reader.raw == expected);
        const bool hasSentences = stream.contains("$GPRMC,") || stream.contains("$GPGGA,");
        // The thread decodes a block after it has passed its text on.
        if (hasSentences)
            QTRY_VERIFY_WITH_TIMEOUT(reader.decoded > 0, 10000);
        else
            QCOMPARE(reader.decoded, 0);

        // Woken by more text, it ends at once and closes the port.
        gpsThreadRunning = false;
        reader.device.send(QByteArray(512, '\n'));
        QVERIFY(reader.thread.wait(1000));
        QVERIFY(!serial_dev_gps);
    }

    // A silent receiver, a vanished one and none at all: nothing is shown and
    // the thread ends within a read time-out of being told to.
    void stop_data()
    {
        QTest::addColumn<int>("port");
        QTest::addColumn<int>("maxMs");
        QTest::newRow("silent receiver") << int(Reader::Open) << 3500;
        QTest::newRow("hung-up receiver") << int(Reader::HungUp) << 300;
        QTest::newRow("no port") << int(Reader::None) << 300;
    }

    void stop()
    {
        QFETCH(int, port);
        QFETCH(int, maxMs);

        ZuAuxSim::clearTrace();
        Reader reader(static_cast<Reader::Port>(port));
        QTest::qWait(500);
        QVERIFY(reader.thread.isRunning());
        QElapsedTimer clock;
        clock.start();
        gpsThreadRunning = false;
        QVERIFY(reader.thread.wait(maxMs + 1000));
        QVERIFY2(clock.elapsed() < maxMs, QByteArray::number(clock.elapsed()));
        QCoreApplication::processEvents();
        QVERIFY(reader.raw.isEmpty());
        QCOMPARE(reader.decoded, 0);
        QVERIFY(!serial_dev_gps);
        QCOMPARE(ZuAuxSim::trace().filter("Telematics").size(), 2);
    }

    // Told to stop before it got going, the thread still ends.
    void stopBeforeStart()
    {
        MyGPSThread thread;
        gpsThreadRunning = false;
        thread.start();
        QVERIFY(thread.wait(1000));
    }
};

QTEST_GUILESS_MAIN(tst_gpsthread)
#include "tst_gpsthread.moc"
