// The least a Qt program with one window can do: start, paint its first
// frame, report it and quit. The start-up benchmark measures against it.
#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace
{
class Window : public QWidget
{
protected:
    void paintEvent(QPaintEvent*) override
    {
        if (painted)
            return;
        painted = true;
        std::fputs("first-frame\n", stdout);
        std::fflush(stdout);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    }

private:
    bool painted = false;
};
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    Window window;
    window.resize(600, 435);
    window.setWindowState(Qt::WindowFullScreen);
    window.show();
    return app.exec();
}
