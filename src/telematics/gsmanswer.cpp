#include "telematics/gsmanswer.h"

#include <QStringList>

#include <cstring>

namespace
{
// A piece is copied through a 256-byte buffer with its terminating zero.
const int maxPiece = 255;
} // namespace

QString gsmAnswerText(const char* data, int length)
{
    QStringList pieces;
    int pos = 0;
    while (pos < length) {
        const int piece
            = static_cast<int>(strnlen(data + pos, static_cast<size_t>(std::min(maxPiece, length - pos))));
        if (piece == 0) {
            ++pos;
            continue;
        }
        pieces << QString::fromLatin1(data + pos, piece);
        pos += piece;
    }
    return pieces.join(QLatin1Char('\n'));
}

QString networkStatusText(const QString& answer)
{
    static const struct {
        const char* code;
        const char* status;
    } states[] = {
        { "0,0", "Network status: Searching" },
        { "0,1", "Network status: Ok, registered" },
        { "0,2", "Network status: Searching" },
        { "0,3", "Network status: Registration denied" },
        { "0,5", "Network status: Ok, Roaming" },
    };
    for (const auto& state : states) {
        if (answer.contains(QLatin1String(state.code), Qt::CaseInsensitive))
            return QLatin1String(state.status);
    }
    return QStringLiteral("Network status: Unknown");
}

QString pinStatusText(const QString& answer)
{
    if (answer.contains(QLatin1String("READY"), Qt::CaseInsensitive))
        return QStringLiteral("PIN code status: Ok");
    if (answer.contains(QLatin1String("SIM PIN"), Qt::CaseInsensitive))
        return QStringLiteral("PIN code status: Enter PIN");
    return QStringLiteral("PIN code status: Unknown");
}
