// A bounded random run of the fuzz targets of the device-text decoders: the
// recorded device traffic, cut at random places and mutated (bits flipped,
// zero bytes, commas, tags and stars put in, pieces dropped or repeated), and
// plain noise. A decoder that reads past its input stops the run under
// AddressSanitizer; one that breaks its promises aborts it.
#include "fuzzing.h"
#include "simunit.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <iterator>

namespace
{
using Target = void (*)(const uint8_t*, size_t);

QByteArray mutated(QRandomGenerator& random, const QList<QByteArray>& samples)
{
    const QByteArray& sample = samples[random.bounded(int(samples.size()))];
    const qsizetype length = random.bounded(1100);
    const qsizetype from = sample.size() > length ? random.bounded(sample.size() - length) : 0;
    QByteArray input = random.bounded(8) == 0 ? QByteArray(length, '\0') : sample.mid(from, length);
    static const char* const pieces[] = { "\0", ",", "*", "\n", "\r\n", "$GPRMC,", "$GPGGA,", "$PFST,FOM,",
        "0,1", "READY", ",,,,,,,,,,,,,,,,,,,,,,", "." };
    for (int edits = random.bounded(6); edits > 0 && !input.isEmpty(); --edits) {
        const qsizetype at = random.bounded(input.size());
        switch (random.bounded(5)) {
        case 0:
            input[at] = char(input[at] ^ (1 << random.bounded(8)));
            break;
        case 1:
            input[at] = char(random.bounded(256));
            break;
        case 2: {
            const char* piece = pieces[random.bounded(int(std::size(pieces)))];
            input.insert(at, piece, qMax<qsizetype>(1, qstrlen(piece)));
            break;
        }
        case 3:
            input.remove(at, random.bounded(64));
            break;
        default:
            input.insert(at, input.mid(at, random.bounded(600)));
        }
    }
    return input;
}
} // namespace

Q_DECLARE_METATYPE(Target)

class tst_fuzz : public QObject
{
    Q_OBJECT

private slots:
    void run_data()
    {
        QTest::addColumn<Target>("target");
        QTest::addColumn<QString>("samples");
        QTest::addColumn<int>("inputs");
        QTest::newRow("NMEA decoding") << Target(fuzzNmea) << "nmea/*.log" << 10000;
        QTest::newRow("modem answers") << Target(fuzzModemAnswer) << "at/responses.txt" << 30000;
    }

    void run()
    {
        QFETCH(Target, target);
        QFETCH(QString, samples);
        QFETCH(int, inputs);

        const QDir dir(QStringLiteral(ZUSETTINGS_CORPUS_DIR "/") + samples.section(u'/', 0, -2));
        QList<QByteArray> recorded;
        for (const QString& name : dir.entryList({ samples.section(u'/', -1) }, QDir::Files))
            recorded << fileContents(dir.filePath(name));
        QVERIFY(!recorded.isEmpty());

        QRandomGenerator random(20261123);
        for (int i = 0; i < inputs; ++i) {
            const QByteArray input = mutated(random, recorded);
            target(reinterpret_cast<const uint8_t*>(input.constData()), size_t(input.size()));
        }
    }
};

QTEST_GUILESS_MAIN(tst_fuzz)
#include "tst_fuzz.moc"
