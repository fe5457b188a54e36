#include "simunit.h"

#include <QRegularExpression>

void resetUnit(const QString& profile)
{
    ZuAuxSim::reset(profile, QString());
    ZuAuxSim::freezeLive(true);
}

QStringList callsTo(const QString& prefix)
{
    return ZuAuxSim::trace().filter(QRegularExpression(u'^' + QRegularExpression::escape(prefix)));
}
