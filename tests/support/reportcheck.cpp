#include "reportcheck.h"

#include "zuaux2.h"
#include "zuauxsim.h"

void put(const QString& key, const QVariant& value)
{
    ZuAuxSim::setValue(key, value);
    ZuAuxSim::hold(key, value);
}

void change(const QString& setting)
{
    const QString name = setting.section(QLatin1Char('='), 0, 0);
    const QString text = setting.section(QLatin1Char('='), 1);
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!name.contains(QLatin1Char('/')))
        ZuAuxSim::forceCode(name, number);
    else if (isNumber)
        put(name, number);
    else
        put(name, text);
}

QString libraryError(int code)
{
    return QStringLiteral("Error(%1) %2")
        .arg(code)
        .arg(QString::fromLatin1(Korvane::GetErrorStringA(static_cast<Korvane::eErr>(code))));
}

QStringList labels(const QString& text)
{
    QStringList result;
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        result << line.section(QLatin1Char(':'), 0, 0);
    return result;
}
