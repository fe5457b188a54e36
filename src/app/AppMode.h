// Start-up decisions of the program, kept apart from main() so that they can
// be checked without starting a process.
#ifndef APPMODE_H
#define APPMODE_H

#include <QMargins>
#include <QString>

#include <functional>

class QRect;
class QWidget;

enum class AppMode { SystemReport, FactoryDefaults, Interactive };

// The mode for a command line: the exact argument count and whole,
// case-sensitive arguments. Anything unrecognised opens the window.
AppMode chooseMode(int argc, const char* const* argv);

// Opens `path` for writing, replacing the file, and only then builds the
// report and writes it as Latin-1 bytes. False when the file cannot be opened;
// the report is not built then.
bool writeReportFile(const QString& path, const std::function<QString()>& report);

// Margins that centre the 600 x 435 form on a screen of the given size, or put
// it at the top left when the screen is smaller.
QMargins centringMargins(int screenWidth, int screenHeight);

// The unit's "Screen_Rotation" file setting as a decimal number. The layout
// does not depend on it; reading it at start-up is what the unit expects.
long readScreenRotation();

// Window flags, centring margins and full-screen state of the main window on a
// screen with the given geometry.
void prepareMainWindow(QWidget& window, const QRect& screen);

// Given to the interactive window: Qt::MSWindowsFixedSizeDialogHint |
// WindowTitleHint | WindowSystemMenuHint | CustomizeWindowHint | WindowCloseButtonHint.
constexpr unsigned mainWindowFlags = 0x0A003100u;

#endif // APPMODE_H
