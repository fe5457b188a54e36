#include "simstore.h"
#include "zuauxsim.h"

using SimStore::Store;

namespace ZuAuxSim
{

void reset(const QString& profile, const QString& stateFile)
{
    Store::instance().reset(profile, stateFile);
}

bool setValue(const QString& key, const QVariant& value)
{
    return Store::instance().write(
        key, value.userType() == QMetaType::Double ? QVariant(SimStore::toText(value)) : value);
}

QVariant value(const QString& key)
{
    Store& unit = Store::instance();
    const Store::Lock lock(unit.mutex);
    return unit.current(key);
}

void hold(const QString& key, const QVariant& value)
{
    Store::instance().hold(key, value);
}

void freezeLive(bool frozen)
{
    Store::instance().freezeLive(frozen);
}

void forceCode(const QString& operation, int code)
{
    Store::instance().forceCode(operation, code);
}

void clearCodes()
{
    Store::instance().clearCodes();
}

QStringList trace()
{
    return Store::instance().memoryTrace();
}

void clearTrace()
{
    Store::instance().clearTrace();
}

void traceCalls(bool on)
{
    Store::instance().setMemoryTrace(on);
}

} // namespace ZuAuxSim
