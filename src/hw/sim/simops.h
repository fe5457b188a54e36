// Building blocks of the simulated operations: the call frame that applies
// injected codes and writes the trace line, the argument formatting of the
// trace, and the generic reads and writes of the value store.
#ifndef SIMOPS_H
#define SIMOPS_H

#include "simstore.h"
#include "zuaux2.h"

#include <cstring>
#include <limits>
#include <tuple>
#include <type_traits>
#include <utility>

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

// The input arguments of a call, kept as they are and turned into trace text
// only when calls are traced.
template <class... Args> struct TraceArgs {
    std::tuple<Args...> values;
    operator QString() const
    {
        return std::apply(
            [](const Args&... args) {
                const QStringList list { traceArg(args)... };
                return list.join(QStringLiteral(", "));
            },
            values);
    }
};

template <class... Args> TraceArgs<std::decay_t<Args>...> traceArgs(const Args&... args)
{
    return { { args... } };
}

inline QString traceText(const QString& text)
{
    return text;
}
template <class... Args> QString traceText(const TraceArgs<Args...>& args)
{
    return args;
}

void traceHandleCall(const char* call);

// Runs one operation: an injected code wins, a null handle is refused, and
// otherwise `body` decides. The writes of the body are saved together when it
// ends; when they cannot be saved the operation fails with ERR_FLASH_WRITE and
// the unit keeps its values. Exactly one trace line either way. The body must
// write its outputs only on success.
template <class Args, class Body>
eErr run(const char* operation, const void* handle, const Args& arguments, Body body)
{
    Store& u = unit();
    Store::Lock lock(u.mutex);
    auto code = eErr(u.codeFor(operation));
    if (code == Korvane::ERR_SUCCESS && !handle)
        code = Korvane::ERR_INVALID_HANDLE;
    if (code == Korvane::ERR_SUCCESS) {
        Store::Change change(u);
        code = body(u);
        if (!change.commit() && code == Korvane::ERR_SUCCESS)
            code = Korvane::ERR_FLASH_WRITE;
    }
    if (u.tracing())
        u.trace(QStringLiteral("%1(%2) -> %3")
                    .arg(QLatin1String(operation), traceText(arguments))
                    .arg(int(code)));
    return code;
}

template <class T> T fromValue(const QVariant& value)
{
    if constexpr (std::is_same_v<T, bool>)
        return Store::wholeOf(value) != 0;
    else if constexpr (std::is_floating_point_v<T>)
        return T(Store::numberOf(value));
    else
        return static_cast<T>(Store::wholeOf(value));
}

template <class T> T fromStore(Store& u, const QString& key)
{
    return fromValue<T>(u.current(key));
}

template <class T> QVariant toStore(T value)
{
    if constexpr (std::is_floating_point_v<T>)
        return SimStore::numberText(value);
    else
        return static_cast<int>(value);
}

// Keys given as QStringLiteral: made without allocating or looking up.
inline bool flag(Store& u, const QString& key)
{
    return u.integer(key) != 0;
}
inline bool inRange(Store& u, const QString& countKey, int number)
{
    return number >= 1 && number <= u.integer(countKey);
}
inline QString indexed(const char* key, int index)
{
    return unit().key(key, index);
}

// The lowest and highest value of type T, for the ranges profile and state
// lines must keep to; enumerations hold what an int holds.
template <class T> constexpr std::pair<double, double> limitsOf()
{
    if constexpr (std::is_same_v<T, bool>)
        return { 0, 1 };
    else if constexpr (std::is_enum_v<T>)
        return limitsOf<int>();
    else
        return { double(std::numeric_limits<T>::lowest()), double(std::numeric_limits<T>::max()) };
}

// Declares that the values under `key` have the type T.
#define SIM_RANGE(id, key, Type)                                                                             \
    static const SimStore::ValueRange id(key, SimOps::limitsOf<Type>().first,                                \
        SimOps::limitsOf<Type>().second, !std::is_floating_point_v<Type>);

template <class T> eErr getOne(Store& u, const QString& key, T* out)
{
    QVariant value;
    if (!u.read(key, value))
        return Korvane::ERR_NOT_SUPPORTED;
    if (!out)
        return Korvane::ERR_INVALID_PARAMETER;
    *out = fromValue<T>(value);
    return Korvane::ERR_SUCCESS;
}

// Two outputs kept under two keys; the value exists only with both of them.
template <class A, class B> eErr getPair(Store& u, const QString& keyA, A* a, const QString& keyB, B* b)
{
    QVariant valueA;
    QVariant valueB;
    if (!u.read(keyA, valueA) || !u.read(keyB, valueB))
        return Korvane::ERR_NOT_SUPPORTED;
    if (!a || !b)
        return Korvane::ERR_INVALID_PARAMETER;
    *a = fromValue<A>(valueA);
    *b = fromValue<B>(valueB);
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
