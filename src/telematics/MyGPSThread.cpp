#include "telematics/MyGPSThread.h"

#include "telematics/nmeadecoder.h"
#include "telematics/serial.h"
#include "zuaux2.h"

#include <cstring>

std::atomic<bool> gpsThreadRunning { false };

namespace
{
const int blockSize = 512;
// How often a thread without a usable port looks at its run flag.
const unsigned long idlePollMs = 100;
const unsigned long pauseMs = 10;
} // namespace

MyGPSThread::MyGPSThread(QObject* parent)
    : QThread(parent)
{
    gpsThreadRunning = true;
}

void MyGPSThread::run()
{
    Korvane::TelematicsHandle telematics = Korvane::GetTelematics();
    NmeaDecoder decoder;
    const NmeaDecoder::Sink sink = [this](NmeaDecoder::Output output, const QString& text) {
        switch (output) {
        case NmeaDecoder::Time:
            emit newTime(text);
            break;
        case NmeaDecoder::Position:
            emit newPos(text);
            break;
        case NmeaDecoder::Satellites:
            emit newSat(text);
            break;
        case NmeaDecoder::Altitude:
            emit newAlt(text);
            break;
        case NmeaDecoder::Speed:
            emit newSpeed(text);
            break;
        case NmeaDecoder::Accuracy:
            emit newAcc(text);
            break;
        }
    };

    char block[blockSize];
    while (gpsThreadRunning) {
        const serial_t* port = serial_dev_gps;
        // A port that could not be opened or set up gives nothing to read.
        if (!port || !port->configured) {
            msleep(idlePollMs);
            continue;
        }
        std::memset(block, 0, sizeof block);
        serial_read(port, block, sizeof block);
        if (block[0] == 0) {
            // A vanished device answers at once instead of after the time-out.
            msleep(pauseMs);
            continue;
        }
        const void* zero = std::memchr(block, 0, sizeof block);
        const int length = zero ? static_cast<int>(static_cast<const char*>(zero) - block) : blockSize;
        emit newText(QString::fromLatin1(block, length));
        msleep(pauseMs);
        decoder.decodeBlock(block, length, gpsThreadRunning, sink);
    }

    Korvane::Telematics_release(telematics);
    if (serial_t* port = serial_dev_gps.exchange(nullptr))
        serial_close(port);
}
