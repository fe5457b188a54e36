// Line formatters of the system report. Each takes the library's result code
// beside the value and returns one complete line with its newline, or an empty
// string when the line is to be left out (code 2 in the create... family).
//
// The create... family takes the code first, the Print... family last.
#ifndef FORMATTERS_H
#define FORMATTERS_H

#include "zuaux2.h"

#include <QString>

QString createString(Korvane::eErr err, QString label, QString value, QString unit);
QString createString(Korvane::eErr err, QString label, const char* value, QString unit);
QString createString(Korvane::eErr err, QString label, short value, QString unit);
QString createString(Korvane::eErr err, QString label, unsigned short value, QString unit);
QString createString(Korvane::eErr err, QString label, double value, QString unit);
QString createStringTime(Korvane::eErr err, QString label, unsigned long minutes);
QString createStringNumberOf(Korvane::eErr err, QString label, unsigned char count);
QString createStringNumberOf2(Korvane::eErr err, QString label, unsigned char count);
QString createStringMounted(Korvane::eErr err, QString label, bool mounted);

QString PrintVersion(QString label, unsigned char major, unsigned char minor, unsigned char release,
    unsigned char build, Korvane::eErr err);
QString PrintSettingTriggerConfig(QString label, Korvane::TriggerConf value, Korvane::eErr err);
QString PrintSettingAction(QString label, Korvane::PowerAction value, Korvane::eErr err);
QString PrintSettingCanFrameType(QString label, Korvane::CanFrameType value, Korvane::eErr err);
QString PrintSettingDouble(QString label, double value, Korvane::eErr err);
QString PrintSettingInt(QString label, int value, Korvane::eErr err);
QString PrintSettingButtonConfig(QString label, Korvane::ButtonConfigEnum value, Korvane::eErr err);
QString PrintSettingStatus(QString label, Korvane::ZuStatus value, Korvane::eErr err);

// The library's text for `err`, as the report prints it.
QString errorString(Korvane::eErr err);

// "<label>: Error(<code>) <library text>\n", for a failed read.
QString errorLine(const QString& label, Korvane::eErr err);

// A double as the report prints it: general form, six significant digits.
QString doubleText(double value);

#endif // FORMATTERS_H
