// Turns the GPS receiver's NMEA text into the texts of the GPS page: date and
// time, position, satellites, altitude, speed and heading, accuracy.
//
// Three sentences are decoded: $GPRMC, $GPGGA and $PFST,FOM. The fields of a
// line are kept in one array that is never cleared, so a field that a line
// does not supply (a short or cut sentence) keeps the text an earlier line
// gave it, whatever sentence that was. No checksum is checked: the receiver's
// values are shown as they come, cut sentences included.
#ifndef NMEADECODER_H
#define NMEADECODER_H

#include <QString>

#include <atomic>
#include <functional>

class NmeaDecoder
{
public:
    enum Output { Time, Position, Satellites, Altitude, Speed, Accuracy };
    using Sink = std::function<void(Output, const QString&)>;

    // The longest line taken whole; a longer line is decoded by its first
    // 511 characters and ends the block.
    static constexpr int maxLine = 511;

    // Decodes the lines of one block of `length` bytes as read from the
    // receiver; the block ends at its first zero byte. Stops early when
    // `running` is cleared.
    void decodeBlock(const char* block, int length, const std::atomic<bool>& running, const Sink& sink);

    // Decodes one line (without its newline).
    void decodeLine(const QByteArray& line, const Sink& sink);

private:
    void splitFields(const QByteArray& line);
    void decodeRmc(const Sink& sink);
    void decodeGga(const Sink& sink);

    static constexpr int maxFields = 19;
    QString fields[maxFields];
    QString time; // hh:mm:ss of the last RMC
};

#endif // NMEADECODER_H
