#include "telematics/nmeadecoder.h"

#include <cstring>

void NmeaDecoder::decodeBlock(
    const char* block, int length, const std::atomic<bool>& running, const Sink& sink)
{
    const char* end = static_cast<const char*>(std::memchr(block, 0, static_cast<size_t>(length)));
    if (end)
        length = static_cast<int>(end - block);
    int pos = 0;
    while (pos < length && running) {
        const char* nl
            = static_cast<const char*>(std::memchr(block + pos, '\n', static_cast<size_t>(length - pos)));
        const int lineEnd = nl ? static_cast<int>(nl - block) : length;
        if (lineEnd - pos > maxLine) {
            decodeLine(QByteArray(block + pos, maxLine), sink);
            return;
        }
        decodeLine(QByteArray::fromRawData(block + pos, lineEnd - pos), sink);
        pos = lineEnd + 1;
    }
}

void NmeaDecoder::splitFields(const QByteArray& line)
{
    qsizetype comma = line.indexOf(',');
    for (int i = 0; i < maxFields && comma >= 0; ++i) {
        const qsizetype next = line.indexOf(',', comma + 1);
        if (next < 0)
            break;
        fields[i] = QString::fromLatin1(line.mid(comma + 1, next - comma - 1));
        comma = next;
    }
}

void NmeaDecoder::decodeLine(const QByteArray& line, const Sink& sink)
{
    splitFields(line);
    if (line.contains("$GPRMC,"))
        decodeRmc(sink);
    if (line.contains("$GPGGA,"))
        decodeGga(sink);
    if (line.contains("$PFST,FOM,")) {
        const qsizetype star = line.indexOf('*');
        // Characters 10 on, just after the tag when the line begins with it.
        const QByteArray merit = star >= 10 ? line.mid(10, star - 10) : line.mid(10);
        sink(Accuracy, QString::fromLatin1(merit) + QLatin1String(" meters"));
    }
}

void NmeaDecoder::decodeRmc(const Sink& sink)
{
    // A time field too short for hh, mm and ss gives what it has.
    const QString& utc = fields[0];
    time = utc.mid(0, 2) + QLatin1Char(':') + utc.mid(2, 2) + QLatin1Char(':') + utc.mid(4, 2);
    const bool valid = fields[1] == QLatin1String("A");
    const QString& latitude = fields[2];
    const QString& longitude = fields[4];
    const QString& date = fields[8];
    if (date.size() > 5) {
        sink(Time,
            QLatin1String("20") + date.mid(4, 2) + QLatin1Char('-') + date.mid(2, 2) + QLatin1Char('-')
                + date.mid(0, 2) + QLatin1String(" - ") + time);
    }
    if (latitude.contains(QLatin1Char('.')) && longitude.contains(QLatin1Char('.'))) {
        sink(Position,
            latitude + fields[3] + QLatin1Char(' ') + longitude + fields[5]
                + (valid ? QLatin1String(" ") : QLatin1String(" - INVALID")));
    }
    sink(Speed,
        fields[6] + QLatin1String(" knots") + QLatin1String(", Heading: ") + fields[7]
            + QLatin1String(" degrees"));
}

void NmeaDecoder::decodeGga(const Sink& sink)
{
    const QString& altitude = fields[8];
    if (!altitude.isEmpty() && (altitude.size() < 6 || altitude.contains(QLatin1Char('.'))))
        sink(Altitude, altitude + QLatin1String(" meters"));
    const QString& satellites = fields[6];
    if (!satellites.contains(QLatin1Char('.')))
        sink(Satellites, satellites);
}
