#include "simops.h"

#include <cstdio>

namespace SimOps
{

QString traceArg(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return QString::fromLatin1(text);
}

QString traceArg(const char* value)
{
    if (!value)
        return QStringLiteral("NULL");
    return QLatin1Char('"') + QString::fromLatin1(value) + QLatin1Char('"');
}

void traceHandleCall(const char* call)
{
    Store& u = unit();
    Store::Lock lock(u.mutex);
    if (u.tracing())
        u.trace(QString::fromLatin1(call));
}

eErr copyText(const QString& text, char* buffer, uint32_t size)
{
    if (!buffer || size == 0)
        return Korvane::ERR_INVALID_PARAMETER;
    const QByteArray bytes = text.toLatin1();
    const auto length = std::min<qsizetype>(bytes.size(), qsizetype(size) - 1);
    std::memcpy(buffer, bytes.constData(), size_t(length));
    buffer[length] = '\0';
    return Korvane::ERR_SUCCESS;
}

eErr getVersion(
    Store& u, const QString& key, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build)
{
    if (!u.has(key))
        return Korvane::ERR_NOT_SUPPORTED;
    if (!major || !minor || !release || !build)
        return Korvane::ERR_INVALID_PARAMETER;
    const QStringList parts = u.text(key).split(QLatin1Char('.'));
    uint8_t* const outputs[] = { major, minor, release, build };
    for (int i = 0; i < 4; ++i)
        *outputs[i] = uint8_t(i < parts.size() ? parts.at(i).trimmed().toUInt() : 0);
    return Korvane::ERR_SUCCESS;
}

} // namespace SimOps
