#include "app/WindowMain.h"

#include "app/FirstFrame.h"
#include "app/FontSetup.h"
#include "app/MainWindowSetup.h"
#include "app/ZuSettings.h"

#include <QApplication>
#include <QScreen>

int zusettings_window_main(int* argc, char** argv)
{
    useOwnFontConfiguration();
    QApplication app(*argc, argv);
    // Built with its final flags: changing them once the widgets exist would
    // style every one of them a second time. Setting them again below then
    // changes nothing.
    ZuSettings window(nullptr, Qt::WindowFlags::fromInt(mainWindowFlags));
    prepareMainWindow(window, QGuiApplication::primaryScreen()->geometry());
    const FirstFrameQuit firstFrame;
    window.show();
    return app.exec();
}
