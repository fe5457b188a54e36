#include "app/WindowMain.h"

#include "app/MainWindowSetup.h"
#include "app/ZuSettings.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include <cstdio>

namespace
{

// For start-up measurements: with ZUSETTINGS_QUIT_AFTER_FIRST_FRAME=1 the
// program prints "first-frame" and quits once the window has painted. It stays
// in the program because the benchmarks time the installed program itself,
// dynamic linking and all, which no test harness around the window can.
class FirstFrameQuit : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !seen) {
            seen = true;
            std::fputs("first-frame\n", stdout);
            std::fflush(stdout);
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool seen = false;
};

} // namespace

int zusettings_window_main(int* argc, char** argv)
{
    QApplication app(*argc, argv);
    ZuSettings window(nullptr, Qt::WindowFlags());
    prepareMainWindow(window, QGuiApplication::primaryScreen()->geometry());
    FirstFrameQuit firstFrame;
    if (qEnvironmentVariableIntValue("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME") == 1)
        window.installEventFilter(&firstFrame);
    window.show();
    return app.exec();
}
