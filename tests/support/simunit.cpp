#include "simunit.h"

#include <QFile>

#include <QRegularExpression>

#include <sys/stat.h>

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

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QString fileStamp(const QString& path)
{
    struct stat info;
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return QString();
    return QStringLiteral("%1 %2 %3.%4 %5.%6")
        .arg(info.st_ino)
        .arg(info.st_size)
        .arg(info.st_mtim.tv_sec)
        .arg(info.st_mtim.tv_nsec)
        .arg(info.st_ctim.tv_sec)
        .arg(info.st_ctim.tv_nsec);
}
