#include "fuzzing.h"

#include "telematics/gsmanswer.h"
#include "telematics/nmeadecoder.h"

#include <QtGlobal>

#include <algorithm>
#include <cstring>
#include <memory>

namespace
{
// A copy of `data` in a buffer of its own exact size.
std::unique_ptr<char[]> exactCopy(const uint8_t* data, size_t size)
{
    std::unique_ptr<char[]> copy(new char[std::max<size_t>(size, 1)]);
    if (size)
        std::memcpy(copy.get(), data, size);
    return copy;
}

void expect(bool promise, const char* what)
{
    if (!promise)
        qFatal("decoder broke its promise: %s", what);
}
} // namespace

void fuzzNmea(const uint8_t* data, size_t size)
{
    static NmeaDecoder decoder;
    static const std::atomic<bool> running { true };
    const NmeaDecoder::Sink sink = [](NmeaDecoder::Output output, const QString& text) {
        switch (output) {
        case NmeaDecoder::Accuracy:
        case NmeaDecoder::Altitude:
            expect(text.endsWith(QLatin1String(" meters")), "a distance in meters");
            break;
        case NmeaDecoder::Speed:
            expect(
                text.contains(QLatin1String(" knots, Heading: ")) && text.endsWith(QLatin1String(" degrees")),
                "speed and heading");
            break;
        case NmeaDecoder::Time:
            expect(text.startsWith(QLatin1String("20")) && text.contains(QLatin1String(" - ")),
                "a date and time");
            break;
        case NmeaDecoder::Position:
        case NmeaDecoder::Satellites:
            expect(!text.contains(QLatin1Char('\n')), "one line");
            break;
        }
    };
    for (size_t at = 0; at < size; at += 512) {
        const size_t length = std::min<size_t>(512, size - at);
        const std::unique_ptr<char[]> block = exactCopy(data + at, length);
        decoder.decodeBlock(block.get(), static_cast<int>(length), running, sink);
    }
}

void fuzzModemAnswer(const uint8_t* data, size_t size)
{
    const std::unique_ptr<char[]> answer = exactCopy(data, size);
    const QString text = gsmAnswerText(answer.get(), static_cast<int>(size));
    expect(text.size() <= 2 * static_cast<qsizetype>(size), "no more text than bytes and line breaks");
    expect(!text.contains(QChar(0)), "no zero bytes");
    expect(networkStatusText(text).startsWith(QLatin1String("Network status: ")), "a network status");
    expect(pinStatusText(text).startsWith(QLatin1String("PIN code status: ")), "a PIN status");
}
