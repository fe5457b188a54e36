// What each page class costs the first frame, measured in one process as the
// processor time of its thread (offscreen, after a warm-up window, median of
// several rounds), which other processes on the machine hardly move: the main
// window's first frame, then for every page of the catalogue the time it adds
// to a window's first frame when built as the main window builds every page
// but the menu (hidden, outside the window until shown), and the first frame
// of a window that shows it.
#include "benchsupport.h"

#include "app/PageCatalogue.h"
#include "app/PageWindow.h"
#include "app/ZuSettings.h"
#include "dialogs/Dialogs.h"
#include "tabs/tabDlg.h"

#include <QApplication>

#include <ctime>
#include <functional>

namespace
{

constexpr int rounds = 7;

double threadMs()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// Processor time from building a window to its first frame: once shown, the
// queued expose event paints and flushes it.
double firstFrameMs(const std::function<QWidget*()>& build)
{
    const double start = threadMs();
    QWidget* window = build();
    window->show();
    QCoreApplication::processEvents();
    const double ms = threadMs() - start;
    delete window;
    QCoreApplication::processEvents();
    return ms;
}

double medianMs(const std::function<QWidget*()>& build)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i)
        times.push_back(firstFrameMs(build));
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// A page window showing a bare page, with `hidden` built as the main window
// builds a page it does not show yet; it goes with the window.
QWidget* windowWithHidden(const PageClass* hidden)
{
    auto* window = new PageWindow(new tabDlg);
    if (hidden) {
        auto* unplaced = new QWidget;
        QObject::connect(window, &QObject::destroyed, [unplaced] { delete unplaced; });
        tabDlg* page = hidden->create(unplaced);
        page->hide();
        page->holdUntilShown();
    }
    return window;
}

} // namespace

int main(int argc, char* argv[])
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    bench::useThrowAwayUnit(dir);
    bench::useFrozenUnit(dir);
    bench::useOwnInputDevice(dir);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication app(argc, argv);
    Dialogs::Recorder dialogs;

    const auto mainWindow = [] {
        auto* window = new ZuSettings;
        window->resize(600, 435);
        return window;
    };
    firstFrameMs(mainWindow); // warm-up: fonts, images, style
    const double whole = medianMs(mainWindow);
    const double bare = medianMs([] { return windowWithHidden(nullptr); });
    std::printf("main window, first frame %6.1f ms; a page window with a bare page %6.1f ms\n", whole, bare);
    std::printf("%-12s %14s %16s %16s\n", "page", "built hidden", "share of main", "shown alone");
    for (const PageClass& page : pageClasses()) {
        const double hidden = medianMs([&page] { return windowWithHidden(&page); }) - bare;
        const double shown = medianMs([&page] { return new PageWindow(page.create(nullptr)); });
        std::printf(
            "%-12s %11.2f ms %14.1f %% %13.2f ms\n", page.name, hidden, 100.0 * hidden / whole, shown);
    }
    return 0;
}
