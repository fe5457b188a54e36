// Helpers shared by the report tests.
#ifndef REPORTCHECK_H
#define REPORTCHECK_H

#include <QStringList>
#include <QVariant>

// The unit reports exactly this value from now on, live readings included.
void put(const QString& key, const QVariant& value);

// "Family/Key=value" puts a value (an int, or else the text) as above;
// "Operation=code" makes that operation answer the code.
void change(const QString& setting);

// "Error(<code>) <library text>", as failed reads print it.
QString libraryError(int code);

// What comes before the first ':' of every non-empty line (the whole line
// when it has none), in order.
QStringList labels(const QString& text);

#endif // REPORTCHECK_H
