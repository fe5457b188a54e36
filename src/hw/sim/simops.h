// Building blocks of the simulated operations: the call frame that applies
// injected codes and writes the trace line, the argument formatting of the
// trace, and the generic reads and writes of the value store.
#ifndef SIMOPS_H
#define SIMOPS_H

#include "simstore.h"
#include "zuaux2.h"

#include <cstring>
#include <type_traits>

namespace SimOps
{

using Korvane::eErr;
using SimStore::Store;

inline Store& unit()
{
    return Store::instance();
}

inline QString traceArg(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}
QString traceArg(double value);
inline QString traceArg(float value)
{
    return traceArg(double(value));
}
QString traceArg(const char* value);
template <class T, std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>, int> = 0>
QString traceArg(T value)
{
    return QString::number(static_cast<long long>(value));
}

template <class... Args> QString traceArgs(const Args&... args)
{
    const QStringList list { traceArg(args)... };
    return list.join(QStringLiteral(", "));
}

void traceHandleCall(const char* call);

// Runs one operation: an injected code wins, a null handle is refused, and
// otherwise `body` decides. Exactly one trace line either way. The body must
// write its outputs only on success.
template <class Body> eErr run(const char* operation, const void* handle, const QString& arguments, Body body)
{
    Store& u = unit();
    Store::Lock lock(u.mutex);
    auto code = eErr(u.codeFor(QLatin1String(operation)));
    if (code == Korvane::ERR_SUCCESS)
        code = handle ? body(u) : Korvane::ERR_INVALID_HANDLE;
    u.trace(QStringLiteral("%1(%2) -> %3").arg(QLatin1String(operation), arguments).arg(int(code)));
    return code;
}

template <class T> T fromStore(Store& u, const QString& key)
{
    if constexpr (std::is_same_v<T, bool>)
        return u.integer(key) != 0;
    else if constexpr (std::is_floating_point_v<T>)
        return T(u.number(key));
    else
        return static_cast<T>(u.integer(key));
}

template <class T> QVariant toStore(T value)
{
    if constexpr (std::is_floating_point_v<T>)
        return SimStore::numberText(value);
    else
        return static_cast<int>(value);
}

inline bool flag(Store& u, const char* key)
{
    return u.integer(QLatin1String(key)) != 0;
}
inline bool inRange(Store& u, const char* countKey, int number)
{
    return number >= 1 && number <= u.integer(QLatin1String(countKey));
}
inline QString indexed(const char* key, int index)
{
    return QLatin1String(key) + QLatin1Char('_') + QString::number(index);
}

template <class T> eErr getOne(Store& u, const QString& key, T* out)
{
    if (!u.has(key))
        return Korvane::ERR_NOT_SUPPORTED;
    if (!out)
        return Korvane::ERR_INVALID_PARAMETER;
    *out = fromStore<T>(u, key);
    return Korvane::ERR_SUCCESS;
}

// Two outputs kept under two keys; the value exists only with both of them.
template <class A, class B> eErr getPair(Store& u, const QString& keyA, A* a, const QString& keyB, B* b)
{
    if (!u.has(keyA) || !u.has(keyB))
        return Korvane::ERR_NOT_SUPPORTED;
    if (!a || !b)
        return Korvane::ERR_INVALID_PARAMETER;
    *a = fromStore<A>(u, keyA);
    *b = fromStore<B>(u, keyB);
    return Korvane::ERR_SUCCESS;
}

template <class T> eErr setOne(Store& u, const QString& key, T value, bool valid)
{
    if (!u.has(key))
        return Korvane::ERR_NOT_SUPPORTED;
    if (!valid)
        return Korvane::ERR_INVALID_PARAMETER;
    u.write(key, toStore(value));
    return Korvane::ERR_SUCCESS;
}

// Copies as much of `text` as fits and always terminates it.
eErr copyText(const QString& text, char* buffer, uint32_t size);

eErr getVersion(
    Store& u, const QString& key, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);

} // namespace SimOps

#endif // SIMOPS_H
