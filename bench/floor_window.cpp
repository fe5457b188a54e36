// The least a Qt program with one window can do: start, show its first
// frame, report it as the settings program does and quit. The start-up
// benchmark measures against it.
#include "app/FirstFrame.h"

#include <QApplication>
#include <QWidget>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    const FirstFrameQuit firstFrame;
    QWidget window;
    window.resize(600, 435);
    window.setWindowState(Qt::WindowFullScreen);
    window.show();
    return app.exec();
}
