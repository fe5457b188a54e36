// For start-up measurements: with ZUSETTINGS_QUIT_AFTER_FIRST_FRAME=1 a
// program prints "first-frame" and quits once its first frame is on screen.
// It stays in the program because the benchmarks time the installed program
// itself, dynamic linking and all; the bare window they compare it with marks
// the moment alike.
#ifndef FIRSTFRAME_H
#define FIRSTFRAME_H

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWindow>

#include <cstdio>

class FirstFrameQuit : public QObject
{
public:
    // Watches every window of the application, when the environment asks for
    // it; to be made before the first window is shown.
    FirstFrameQuit()
    {
        if (qEnvironmentVariableIntValue("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME") == 1)
            QCoreApplication::instance()->installEventFilter(this);
    }

    // A window's first expose event is handled by painting its widgets and
    // flushing the backing store to the screen; the zero timer fires once that
    // handling is over. The first paint event would come earlier, with the
    // children still to paint and nothing flushed.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!m_seen && event->type() == QEvent::Expose && watched->isWindowType()
            && static_cast<QWindow*>(watched)->isExposed()) {
            m_seen = true;
            QTimer::singleShot(0, this, [] {
                std::fputs("first-frame\n", stdout);
                std::fflush(stdout);
                QCoreApplication::quit();
            });
        }
        return false;
    }

private:
    bool m_seen = false;
};

#endif // FIRSTFRAME_H
