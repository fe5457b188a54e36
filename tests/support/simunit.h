// Test helpers around the simulated unit.
#ifndef SIMUNIT_H
#define SIMUNIT_H

#include "zuauxsim.h"

#include <QString>
#include <QStringList>

// Puts the simulated unit into a known state for one test: the given profile,
// no state file, live readings frozen at their profile values, empty trace.
void resetUnit(const QString& profile = QStringLiteral("full"));

// The trace lines that start with `prefix` (an operation name, or "Family_").
QStringList callsTo(const QString& prefix);

// The bytes of a file, or nothing when it cannot be read.
QByteArray fileContents(const QString& path);

// Makes `path` hold exactly `bytes`; false when it cannot.
bool writeFile(const QString& path, const QByteArray& bytes);

// Everything that tells one version of a file from another: inode, size,
// modification and change times; empty when there is no such file.
QString fileStamp(const QString& path);

#endif // SIMUNIT_H
