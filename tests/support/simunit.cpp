#include "simunit.h"

void resetUnit(const QString& profile)
{
    ZuAuxSim::reset(profile, QString());
    ZuAuxSim::freezeLive(true);
}

QStringList callsTo(const QString& prefix)
{
    QStringList result;
    for (const QString& line : ZuAuxSim::trace()) {
        if (line.startsWith(prefix))
            result.append(line);
    }
    return result;
}
