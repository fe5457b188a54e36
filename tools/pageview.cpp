// Opens one page class alone in a 600 x 435 window with the application's
// style, on the unit the ZUAUX_SIM_* variables describe, whether the main
// window offers the page or not:
//
//   pageview [--profile <name or INI path>] [--tab <index>] [--grab <file.png> [--wait <ms>]] <page>
//
// <page> is a short name of the page catalogue; pageview alone lists them.
// --tab opens that sub-page of a page that has sub-pages.
// --grab renders the window into a PNG file after --wait ms (default 0) and
// quits; message boxes are then recorded and listed on stdout instead of
// being shown, so that the run never blocks.
//
// Without ZUSETTINGS_INPUT_DEVICE the Buttons page reads key events from a
// FIFO of the viewer's own, whose path it prints: press the front buttons
// with `ZUSETTINGS_INPUT_DEVICE=<path> zuaux-sim press <button>`.
#include "app/FontSetup.h"
#include "app/PageCatalogue.h"
#include "app/PageWindow.h"
#include "dialogs/Dialogs.h"
#include "tabs/tabDlg.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <sys/stat.h>

namespace
{

int usage(const char* program)
{
    std::fprintf(stderr,
        "usage: %s [--profile <name>] [--tab <index>] [--grab <file.png> [--wait <ms>]] <page>\npages:",
        program);
    for (const PageClass& page : pageClasses())
        std::fprintf(stderr, " %s", page.name);
    std::fputc('\n', stderr);
    return 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QByteArray profile;
    QString grabFile;
    QString name;
    int waitMs = 0;
    int tab = 0;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        bool ok = true;
        if (arg.startsWith("--") && i + 1 >= argc)
            ok = false;
        else if (arg == "--profile")
            profile = argv[++i];
        else if (arg == "--grab")
            grabFile = QString::fromLocal8Bit(argv[++i]);
        else if (arg == "--wait")
            waitMs = QByteArray(argv[++i]).toInt(&ok);
        else if (arg == "--tab")
            tab = QByteArray(argv[++i]).toInt(&ok);
        else if (name.isEmpty() && !arg.startsWith("--"))
            name = QString::fromLocal8Bit(arg);
        else
            ok = false;
        if (!ok || waitMs < 0 || tab < 0)
            return usage(argv[0]);
    }
    const PageClass* pageClass = findPageClass(name);
    if (!pageClass)
        return usage(argv[0]);

    // The unit must be chosen before the first library call.
    if (!profile.isEmpty())
        qputenv("ZUAUX_SIM_PROFILE", profile);
    QTemporaryDir fifoDir;
    const QByteArray fifo = QFile::encodeName(fifoDir.filePath(QStringLiteral("buttons")));
    if (qEnvironmentVariableIsEmpty("ZUSETTINGS_INPUT_DEVICE") && fifoDir.isValid()
        && mkfifo(fifo.constData(), 0600) == 0) {
        qputenv("ZUSETTINGS_INPUT_DEVICE", fifo);
        std::fprintf(stderr, "pageview: front buttons: ZUSETTINGS_INPUT_DEVICE=%s zuaux-sim press <button>\n",
            fifo.constData());
    }
    // The fonts as the program has them.
    useOwnFontConfiguration();
    QApplication app(argc, argv);

    std::unique_ptr<Dialogs::Recorder> recorder;
    if (!grabFile.isEmpty())
        recorder = std::make_unique<Dialogs::Recorder>();
    PageWindow window(pageClass->create(nullptr));
    window.show();
    if (auto* tabs = window.page()->findChild<QTabWidget*>())
        tabs->setCurrentIndex(tab);
    if (grabFile.isEmpty())
        return app.exec();

    QEventLoop loop;
    QTimer::singleShot(waitMs, &loop, &QEventLoop::quit);
    loop.exec();
    for (const Dialogs::Shown& box : recorder->shown)
        std::printf("  message box \"%s\": %s\n", qPrintable(box.title), qPrintable(box.text));
    if (!window.grab().save(grabFile)) {
        std::fprintf(stderr, "pageview: cannot write %s\n", qPrintable(grabFile));
        return 1;
    }
    return 0;
}
