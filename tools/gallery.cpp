// Renders the main window once per registered page into PNG files, and each
// page class that the menu never offers alone in a page window, for
// looking at every page of a unit profile without a display:
//
//   gallery [--profile <name or INI path>] [--out <dir>] [--wait <ms>] [--form-only]
//
// --wait lets each page run that long before it is grabbed, so that pages which
// poll the unit show their first readings (500 ms ticks: 600 is enough).
// --form-only grabs the centred form without the screen margins around it.
//
// Files are named <profile>-<index>-<page>.png, and <profile>-<page>.png for
// the pages without a number (the page catalogue's names). Message boxes are recorded
// and listed on stdout instead of being shown, so the run never blocks.
#include "app/FontSetup.h"
#include "app/MainWindowSetup.h"
#include "app/PageCatalogue.h"
#include "app/PageWindow.h"
#include "app/ZuSettings.h"
#include "dialogs/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <sys/stat.h>

namespace
{

const char* const pageNames[tabMenuDlg::tabCount] = { "menu", "version", "temperature", "display", "power",
    "heater", "about", "led", "buzzer", "can", "advanced", "io", "lightsensor", "touch", "onoff", "buttons" };

// Lists the message boxes recorded since the last call.
void listMessages(const Dialogs::Recorder& recorder, int& listed)
{
    for (; listed < recorder.shown.size(); ++listed)
        std::printf("  message box \"%s\": %s\n", qPrintable(recorder.shown[listed].title),
            qPrintable(recorder.shown[listed].text));
}

void settle(int waitMs)
{
    if (waitMs > 0) {
        QEventLoop loop;
        QTimer::singleShot(waitMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

bool save(const QPixmap& shot, const QString& file)
{
    if (!shot.save(file)) {
        std::fprintf(stderr, "gallery: cannot write %s\n", qPrintable(file));
        return false;
    }
    std::printf("%s\n", qPrintable(file));
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    QString profile = QStringLiteral("full");
    QString outDir = QStringLiteral(".");
    int waitMs = 0;
    bool formOnly = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        bool ok = i + 1 < argc;
        if (ok && (arg == "--profile" || arg == "--out"))
            (arg == "--profile" ? profile : outDir) = QString::fromLocal8Bit(argv[++i]);
        else if (arg == "--form-only")
            formOnly = ok = true;
        else if (ok && arg == "--wait")
            waitMs = QByteArray(argv[++i]).toInt(&ok);
        else
            ok = false;
        if (!ok || waitMs < 0) {
            std::fprintf(
                stderr, "usage: %s [--profile <name>] [--out <dir>] [--wait <ms>] [--form-only]\n", argv[0]);
            return 2;
        }
    }

    // The unit must be chosen before the first library call, and nothing the
    // pages write may outlive the run.
    QTemporaryDir stateDir;
    if (!stateDir.isValid()) {
        std::fprintf(stderr, "gallery: no temporary directory\n");
        return 1;
    }
    qputenv("ZUAUX_SIM_PROFILE", profile.toLocal8Bit());
    qputenv("ZUAUX_SIM_STATE", stateDir.filePath(QStringLiteral("state.ini")).toLocal8Bit());
    // The Buttons page waits for key events here instead of on the input device.
    const QByteArray buttons = QFile::encodeName(stateDir.filePath(QStringLiteral("buttons")));
    if (qEnvironmentVariableIsEmpty("ZUSETTINGS_INPUT_DEVICE") && mkfifo(buttons.constData(), 0600) == 0)
        qputenv("ZUSETTINGS_INPUT_DEVICE", buttons);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    // The fonts as the program has them.
    useOwnFontConfiguration();
    QApplication app(argc, argv);
    if (!QDir().mkpath(outDir)) {
        std::fprintf(stderr, "gallery: cannot create %s\n", qPrintable(outDir));
        return 1;
    }
    const QString prefix = QFileInfo(profile).completeBaseName();

    Dialogs::Recorder recorder;
    ZuSettings window(nullptr, Qt::WindowFlags());
    prepareMainWindow(window, QGuiApplication::primaryScreen()->geometry());
    window.show();
    settle(0);
    int listed = 0;
    listMessages(recorder, listed);

    int failures = 0;
    for (int index = 0; index < tabMenuDlg::tabCount; ++index) {
        if (!window.page(index))
            continue;
        window.showTab(index);
        settle(waitMs);
        const QString file = QDir(outDir).filePath(
            QStringLiteral("%1-%2-%3.png").arg(prefix).arg(index).arg(QLatin1String(pageNames[index])));
        const QPixmap shot = formOnly ? window.grab(window.centralWidget()->geometry()) : window.grab();
        failures += save(shot, file) ? 0 : 1;
        listMessages(recorder, listed);
    }
    window.hide();

    for (const PageClass& pageClass : pageClasses()) {
        if (pageClass.inMenu)
            continue;
        PageWindow alone(pageClass.create(nullptr));
        alone.show();
        settle(waitMs);
        const QString file
            = QDir(outDir).filePath(QStringLiteral("%1-%2.png").arg(prefix, QLatin1String(pageClass.name)));
        failures += save(alone.grab(), file) ? 0 : 1;
        listMessages(recorder, listed);
    }
    return failures == 0 ? 0 : 1;
}
