// Start-up decisions of the program, kept apart from main() so that they can
// be checked without starting a process.
#ifndef APPMODE_H
#define APPMODE_H

#include <QString>

#include <functional>

enum class AppMode { SystemReport, FactoryDefaults, Interactive };

// The mode for a command line: the exact argument count and whole,
// case-sensitive arguments. Anything unrecognised opens the window.
AppMode chooseMode(int argc, const char* const* argv);

// Opens `path` for writing, replacing the file, and only then builds the
// report and writes it as Latin-1 bytes. False when the file cannot be opened;
// the report is not built then.
bool writeReportFile(const QString& path, const std::function<QString()>& report);

#endif // APPMODE_H
