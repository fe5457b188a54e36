// Placement of the main window on the screen, kept apart from the window so
// that it can be checked on any widget.
#ifndef MAINWINDOWSETUP_H
#define MAINWINDOWSETUP_H

#include <QMargins>

class QRect;
class QWidget;

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

#endif // MAINWINDOWSETUP_H
