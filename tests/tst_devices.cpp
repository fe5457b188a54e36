// The simulated telematics devices: a running zuaux-devices, seen through the
// serial layer on the ports it stored in the unit: NMEA with valid checksums
// from the receiver, AT answers from the modem.
#include "simunit.h"
#include "telematics/nmeadecoder.h"
#include "telematics/serial.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace
{
// A zuaux-devices process on a state file of its own, stopped at the end.
struct Devices {
    explicit Devices(const QStringList& arguments)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("ZUAUX_SIM_STATE", state());
        process.setProcessEnvironment(env);
        process.start(ZUSETTINGS_BINARY_DIR "/tools/zuaux-devices", arguments);
        while (!output.contains("stop with") && process.waitForReadyRead(10000))
            output += process.readAllStandardOutput();
        const QRegularExpression port(" on (\\S+)");
        modem = port.match(output).captured(1).toLatin1();
        gps = port.match(output, output.indexOf("GPS receiver")).captured(1).toLatin1();
    }
    ~Devices()
    {
        process.terminate();
        process.waitForFinished(10000);
    }

    QString state() const { return dir.filePath("state.ini"); }

    // The port of one device, set up as the Telematics page sets it up.
    static serial_t* open(const QByteArray& path, serial_baud_t baud)
    {
        serial_t* port = serial_open(path.constData());
        if (port)
            serial_setup(port, baud, SERIAL_BITS_8, SERIAL_PARITY_NONE, SERIAL_STOPBIT_1);
        return port;
    }

    QTemporaryDir dir;
    QProcess process;
    QString output;
    QByteArray modem;
    QByteArray gps;
};

bool checksumValid(const QByteArray& line)
{
    const qsizetype star = line.lastIndexOf('*');
    unsigned char sum = 0;
    for (qsizetype i = 1; i < star; ++i)
        sum ^= static_cast<unsigned char>(line[i]);
    return line.startsWith('$') && star > 0
        && line.mid(star + 1) == QByteArray::number(sum, 16).toUpper().rightJustified(2, '0') + '\r';
}
} // namespace

class tst_devices : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { resetUnit(); }

    // The ports stored for the page; a fix of one second in two: every second
    // RMC, GGA and FOM with valid checksums, a moving position, valid and
    // invalid in turn.
    void receiver()
    {
        Devices devices({ "--fix", "1,1" });
        ZuAuxSim::reset("full", devices.state());
        QCOMPARE(ZuAuxSim::value("File/ZusettingsGsmPort").toByteArray(), devices.modem);
        QCOMPARE(ZuAuxSim::value("File/ZusettingsGpsPort").toByteArray(), devices.gps);
        resetUnit();
        serial_t* port = Devices::open(devices.gps, SERIAL_BAUD_9600);
        QVERIFY(port);
        QByteArray stream(3 * 512, '\0');
        QCOMPARE(serial_read(port, stream.data(), static_cast<unsigned int>(stream.size())), SERIAL_OK);
        serial_close(port);

        QList<QByteArray> lines = stream.split('\n');
        lines.removeLast(); // cut by the read
        if (!lines[0].startsWith('$')) // the port was opened in the middle of a line
            lines.removeFirst();
        QByteArray tags;
        QStringList valid, invalid;
        NmeaDecoder decoder;
        for (const QByteArray& line : lines) {
            QVERIFY2(checksumValid(line), line.constData());
            tags += line.mid(1, 5) + ' ';
            decoder.decodeLine(line.chopped(1), [&](NmeaDecoder::Output output, const QString& text) {
                if (output == NmeaDecoder::Position)
                    (text.endsWith(" - INVALID") ? invalid : valid) << text;
            });
        }
        QVERIFY(tags.contains("GPRMC GPGGA PFST, GPRMC GPGGA PFST, GPRMC"));
        QVERIFY(valid.size() >= 2 && invalid.size() >= 2);
        QVERIFY(valid[0] != valid[1]);
    }

    void modem_data()
    {
        QTest::addColumn<QList<QByteArray>>("commands");
        QTest::addColumn<QList<QByteArray>>("answers");
        QTest::addColumn<QString>("printed");

        using Bytes = QList<QByteArray>;
        QTest::newRow("PIN entry") << Bytes { "AT+CPIN?\r\n", "AT+CPIN=0000\r\n", "at+cpin=\"4321\"\r\n",
            "AT+CPIN?\r\n", "AT+CREG?\r\n" }
                                   << Bytes { "AT+CPIN?\r\r\n+CPIN: SIM PIN\r\n\r\nOK\r\n",
                                          "AT+CPIN=0000\r\r\n+CME ERROR: 16\r\n",
                                          "at+cpin=\"4321\"\r\r\nOK\r\n",
                                          "AT+CPIN?\r\r\n+CPIN: READY\r\n\r\nOK\r\n",
                                          "AT+CREG?\r\r\n+CREG: 0,1\r\n\r\nOK\r\n" }
                                   << QString();
        QTest::newRow("three wrong PINs block the SIM")
            << Bytes { "ATE0\r", "AT+CPIN=1\r", "AT+CPIN=2\r", "AT+CPIN=3\r", "AT+CPIN=4321\r", "AT+CPIN?\r" }
            << Bytes { "ATE0\r\r\nOK\r\n", "\r\n+CME ERROR: 16\r\n", "\r\n+CME ERROR: 16\r\n",
                   "\r\n+CME ERROR: 16\r\n", "\r\n+CME ERROR: 12\r\n", "\r\n+CPIN: SIM PUK\r\n\r\nOK\r\n" }
            << QString();
        // As the modem console sends it: the fixed command with its zero
        // byte, the text followed by Ctrl-Z and the tail of the number command.
        QTest::newRow("SMS") << Bytes { "AT+CPIN=4321\r\n", QByteArray("AT+CMGF=1\r\n", 12),
            "AT+CMGS=0123456\r\n",
            "Hi\x1a"
            "CMGS=0123456\r\n" }
                             << Bytes { "AT+CPIN=4321\r\r\nOK\r\n", "AT+CMGF=1\r\r\nOK\r\n",
                                    "AT+CMGS=0123456\r\r\n> ", "Hi\r\n+CMGS: 1\r\n\r\nOK\r\nCMGS=0123456\r" }
                             << "SMS 1 to 0123456: Hi";
        QTest::newRow("what a modem does not know, or not yet")
            << Bytes { "ATE0\r", "AT+CMGS=1\r", "AT+XYZ\r", "hello\rAT\r", "AT+CREG=2\r", "AT+CREG?\r",
                   "AT+CPIN=4321\r", "AT+CMGS=1\r" }
            << Bytes { "ATE0\r\r\nOK\r\n", "\r\n+CMS ERROR: 311\r\n", "\r\nERROR\r\n", "\r\nOK\r\n",
                   "\r\nOK\r\n", "\r\n+CREG: 2,0\r\n\r\nOK\r\n", "\r\nOK\r\n", "\r\n+CMS ERROR: 304\r\n" }
            << QString();
    }

    void modem()
    {
        QFETCH(QList<QByteArray>, commands);
        QFETCH(QList<QByteArray>, answers);
        QFETCH(QString, printed);

        Devices devices({ "--pin", "4321" });
        serial_t* port = Devices::open(devices.modem, SERIAL_BAUD_57600);
        QVERIFY(port);
        for (qsizetype i = 0; i < commands.size(); ++i) {
            serial_write(port, commands[i].constData(), static_cast<unsigned int>(commands[i].size()));
            QByteArray answer(answers[i].size(), '\0');
            serial_read(port, answer.data(), static_cast<unsigned int>(answer.size()));
            QCOMPARE(answer, answers[i]);
        }
        serial_close(port);
        devices.process.terminate();
        QVERIFY(devices.process.waitForFinished(10000));
        QCOMPARE(devices.process.exitCode(), 0);
        QVERIFY(QString(devices.process.readAllStandardOutput()).contains(printed));
    }
};

QTEST_GUILESS_MAIN(tst_devices)
#include "tst_devices.moc"
