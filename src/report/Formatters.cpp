#include "report/Formatters.h"

using Korvane::eErr;

QString errorString(eErr err)
{
    return QString::fromLatin1(Korvane::GetErrorStringA(err));
}

QString doubleText(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', 6);
}

QString errorLine(const QString& label, eErr err)
{
    return QStringLiteral("%1: Error(%2) %3\n").arg(label).arg(static_cast<int>(err)).arg(errorString(err));
}

namespace
{

// The create... decision: 0 value line, 2 nothing, 18 "N/A", else error.
// `prefix` is everything before the value; the templates differ only there.
QString countedLine(eErr err, const QString& prefix, const QString& value)
{
    if (err == Korvane::ERR_SUCCESS)
        return prefix + value + QLatin1Char('\n');
    if (err == Korvane::ERR_NOT_SUPPORTED)
        return QString();
    if (err == Korvane::ERR_NOT_AVAILABLE)
        return prefix + QStringLiteral("N/A\n");
    return prefix + QStringLiteral("Error(%1) %2\n").arg(static_cast<int>(err)).arg(errorString(err));
}

} // namespace

QString createString(eErr err, QString label, QString value, QString unit)
{
    // An empty unit leaves a blank before the newline, as the report always had.
    return countedLine(err, label + QStringLiteral(": "), value + QLatin1Char(' ') + unit);
}

QString createString(eErr err, QString label, const char* value, QString unit)
{
    return createString(err, label, QStringLiteral("%1").arg(QString::fromLatin1(value)), unit);
}

QString createString(eErr err, QString label, short value, QString unit)
{
    return createString(err, label, QStringLiteral("%1").arg(value), unit);
}

QString createString(eErr err, QString label, unsigned short value, QString unit)
{
    return createString(err, label, QStringLiteral("%1").arg(value), unit);
}

QString createString(eErr err, QString label, double value, QString unit)
{
    return createString(err, label, doubleText(value), unit);
}

QString createStringTime(eErr err, QString label, unsigned long minutes)
{
    const QString value = QStringLiteral("%1 min ").arg(minutes)
        + QStringLiteral("(%1 days, %2h, %3min)")
              .arg(minutes / 1440)
              .arg((minutes % 1440) / 60)
              .arg(minutes % 60);
    return createString(err, label, value, QString());
}

QString createStringNumberOf(eErr err, QString label, unsigned char count)
{
    return countedLine(err, QStringLiteral("Number of %1 connections: ").arg(label),
        QString::number(static_cast<unsigned>(count)));
}

QString createStringNumberOf2(eErr err, QString label, unsigned char count)
{
    return countedLine(
        err, QStringLiteral("Number of %1: ").arg(label), QString::number(static_cast<unsigned>(count)));
}

QString createStringMounted(eErr err, QString label, bool mounted)
{
    return countedLine(err, QStringLiteral("%1 device mounted: ").arg(label),
        mounted ? QStringLiteral("Yes") : QStringLiteral("No"));
}

QString PrintVersion(QString label, unsigned char major, unsigned char minor, unsigned char release,
    unsigned char build, eErr err)
{
    if (err != Korvane::ERR_SUCCESS)
        return errorLine(label, err);
    return QStringLiteral("%1: v%2.%3.%4.%5\n")
        .arg(label)
        .arg(static_cast<unsigned>(major))
        .arg(static_cast<unsigned>(minor))
        .arg(static_cast<unsigned>(release))
        .arg(static_cast<unsigned>(build));
}

namespace
{

QString settingLine(const QString& label, const QString& text, eErr err)
{
    if (err != Korvane::ERR_SUCCESS)
        return errorLine(label, err);
    return QStringLiteral("%1: %2\n").arg(label, text);
}

} // namespace

QString PrintSettingTriggerConfig(QString label, Korvane::TriggerConf value, eErr err)
{
    QString text;
    switch (value) {
    case 1:
        text = QStringLiteral("Front button");
        break;
    case 2:
        text = QStringLiteral("OnOff Signal");
        break;
    case 3:
        text = QStringLiteral("Both Front button and OnOff signal");
        break;
    default:
        text = QStringLiteral("Undefined value");
        break;
    }
    return settingLine(label, text, err);
}

QString PrintSettingAction(QString label, Korvane::PowerAction value, eErr err)
{
    QString text;
    switch (value) {
    case 0:
        text = QStringLiteral("NoAction");
        break;
    case 1:
        text = QStringLiteral("Suspend");
        break;
    case 2:
        text = QStringLiteral("ShutDown");
        break;
    default:
        text = QStringLiteral("Undefined value");
        break;
    }
    return settingLine(label, text, err);
}

QString PrintSettingCanFrameType(QString label, Korvane::CanFrameType value, eErr err)
{
    QString text;
    switch (value) {
    case 0:
        text = QStringLiteral("Standard");
        break;
    case 1:
        text = QStringLiteral("Extended");
        break;
    case 2:
        text = QStringLiteral("Standard, Extended");
        break;
    default:
        text = QStringLiteral("Undefined value");
        break;
    }
    return settingLine(label, text, err);
}

QString PrintSettingDouble(QString label, double value, eErr err)
{
    return settingLine(label, doubleText(value), err);
}

QString PrintSettingInt(QString label, int value, eErr err)
{
    return settingLine(label, QString::number(value), err);
}

QString PrintSettingButtonConfig(QString label, Korvane::ButtonConfigEnum value, eErr err)
{
    if (err == Korvane::ERR_NOT_SUPPORTED)
        return QString();
    if (err != Korvane::ERR_SUCCESS)
        return errorLine(label, err);
    const char* name = nullptr;
    switch (value) {
    case 0:
        name = "BUTTON_ONLY_MP_ACTION";
        break;
    case 2:
        name = "BUTTON_AS_STARTUP_TRIG";
        break;
    case 4:
        name = "BUTTON_AS_ACTION_TRIG";
        break;
    case 6:
        name = "BUTTON_AS_ACTION_STARTUP_TRIG";
        break;
    case 8:
        name = "BUTTON_AS_BACKLIGHT_DECREASE";
        break;
    case 10:
        name = "BUTTON_AS_BACKLIGHT_DECR_STARTUP_TRIG";
        break;
    case 12:
        name = "BUTTON_AS_BACKLIGHT_INCREASE";
        break;
    case 14:
        name = "BUTTON_AS_BACKLIGHT_INCR_STARTUP_TRIG";
        break;
    default:
        // Odd values and values above 14 are not valid configurations.
        return QStringLiteral("%1: %2 - Incorrect setting\n").arg(label).arg(static_cast<int>(value));
    }
    return QStringLiteral("%1: %2\n").arg(label, QLatin1String(name));
}

QString PrintSettingStatus(QString label, Korvane::ZuStatus value, eErr err)
{
    return settingLine(
        label, value == Korvane::ZU_ENABLED ? QStringLiteral("Enabled") : QStringLiteral("Disabled"), err);
}
