#include "app/MainWindowSetup.h"

#include "hwsupport/HwHandle.h"

#include <QRect>
#include <QWidget>

#include <cstdlib>

namespace
{
constexpr int formWidth = 600;
constexpr int formHeight = 435;
} // namespace

QMargins centringMargins(int screenWidth, int screenHeight)
{
    const int width = qMax(screenWidth, formWidth);
    const int height = qMax(screenHeight, formHeight);
    return QMargins((width - formWidth) >> 1, (height - formHeight) >> 1, 0, 0);
}

long readScreenRotation()
{
    char buffer[50] = {};
    const ZuAuxPrivateRef handle;
    Korvane::ZuAuxPrivate_getFileSetting(handle, "Screen_Rotation", buffer, sizeof buffer);
    return std::strtol(buffer, nullptr, 10);
}

void prepareMainWindow(QWidget& window, const QRect& screen)
{
    // With the window type the widget has: Qt adds it anyway, and a window
    // built with these flags is then left as it is.
    window.setWindowFlags(window.windowType() | Qt::WindowFlags::fromInt(mainWindowFlags));
    // Geometry as right - left + 1 and bottom - top + 1.
    const int width = screen.right() - screen.left() + 1;
    const int height = screen.bottom() - screen.top() + 1;
    readScreenRotation();
    window.setContentsMargins(centringMargins(width, height));
    window.setWindowState(window.windowState() ^ Qt::WindowFullScreen);
}
