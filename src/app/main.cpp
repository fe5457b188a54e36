#include "AppMode.h"
#include "SystemReport.h"
#include "WriteDefaultValues.h"
#include "ZuSettings.h"

#include <QApplication>
#include <QCoreApplication>
#include <QScreen>
#include <QTimer>

#include <cstdio>

namespace
{

// For start-up measurements: with ZUSETTINGS_QUIT_AFTER_FIRST_FRAME=1 the
// program prints "first-frame" and quits once the window has painted.
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

int main(int argc, char* argv[])
{
    switch (chooseMode(argc, argv)) {
    case AppMode::SystemReport: {
        QCoreApplication app(argc, argv);
        writeReportFile(QString::fromLocal8Bit(argv[2]), SystemReport);
        return 0;
    }
    case AppMode::FactoryDefaults: {
        QCoreApplication app(argc, argv);
        WriteDefaultValues();
        return 0;
    }
    case AppMode::Interactive:
        break;
    }

    QApplication app(argc, argv);
    ZuSettings window(nullptr, Qt::WindowFlags());
    prepareMainWindow(window, QGuiApplication::primaryScreen()->geometry());
    FirstFrameQuit firstFrame;
    if (qEnvironmentVariableIntValue("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME") == 1)
        window.installEventFilter(&firstFrame);
    window.show();
    return app.exec();
}
