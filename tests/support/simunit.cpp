#include "simunit.h"

#include <QFile>

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

QByteArray fileContents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
