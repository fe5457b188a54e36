// Cost of an idle polling tick: each page that polls the unit while it is
// shown is built, shown and ticked while no value changes. A tick is its
// timer's event delivered as the event loop delivers it. Reported per page:
// instructions per tick (callgrind, when valgrind is installed; time per
// tick otherwise) and how often the unit's state file was written. The
// battery monitor of the Power page polls from its own thread: one whole
// cycle of the thread is counted in that thread and reported per reading,
// three a cycle.
#include "benchsupport.h"

#include "app/PageCatalogue.h"
#include "tabs/tabDlg.h"
#include "zuaux2.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTimer>
#include <QTimerEvent>

#include <cstring>
#include <future>
#include <map>
#include <memory>
#include <sys/stat.h>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#define BENCH_CALLGRIND 1
#endif

namespace
{

constexpr int warmTicks = 3;
constexpr int countedTicks = 50;
const char* const underCallgrind = "--under-callgrind";
const char* const batteryUnderCallgrind = "--battery-under-callgrind";

// The unit before each page's ticks: the automatic backlight runs for the
// Display page (its intensity is then the unit's, echoed back on the first
// tick), and is off for the Light sensor page, which cannot measure otherwise.
void prepareUnit(const char* page)
{
    const Korvane::BacklightHandle backlight = Korvane::GetBacklight();
    if (std::strcmp(page, "display") == 0)
        Korvane::Backlight_startAutomaticBL(backlight);
    else
        Korvane::Backlight_stopAutomaticBL(backlight);
    Korvane::Backlight_release(backlight);
}

const char* const pollingPages[] = { "display", "lightsensor", "io", "digio" };
const char* const batteryPage = "power";

struct Shown {
    std::unique_ptr<tabDlg> page;
    QList<QTimer*> timers;
};

// The page on show, its first ticks over, with the timers that poll.
Shown showPage(const PageClass& pageClass)
{
    Shown shown;
    shown.page.reset(pageClass.create(nullptr));
    shown.page->resize(600, 435);
    shown.page->show();
    QCoreApplication::processEvents();
    for (QTimer* timer : shown.page->findChildren<QTimer*>()) {
        if (timer->isActive())
            shown.timers.append(timer);
    }
    return shown;
}

// Kept out of line so that a profile shows the ticks under their own name.
Q_NEVER_INLINE void tick(const Shown& shown)
{
    for (QTimer* timer : shown.timers) {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

QString stampOf(const QByteArray& path)
{
    struct stat info;
    if (stat(path.constData(), &info) != 0)
        return QString();
    return QStringLiteral("%1 %2 %3.%4")
        .arg(info.st_ino)
        .arg(info.st_size)
        .arg(info.st_mtim.tv_sec)
        .arg(info.st_mtim.tv_nsec);
}

// Runs the battery monitor of a Power page for one cycle: the page is shown
// and destroyed when the thread has delivered its last reading of the cycle,
// the level, into a level bar that was reset so that any level changes it.
void runBatteryCycle(const PageClass& pageClass)
{
    Shown shown = showPage(pageClass);
    auto* level = shown.page->findChild<QProgressBar*>();
    if (!level)
        return;
    level->reset();
    QEventLoop loop;
    QObject::connect(level, &QProgressBar::valueChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    loop.exec();
}

struct PageFigures {
    double microseconds = 0;
    int writes = 0;
    bool polls = false;
};

PageFigures measureInProcess(const PageClass& pageClass, const QByteArray& statePath)
{
    PageFigures figures;
    prepareUnit(pageClass.name);
    const Shown shown = showPage(pageClass);
    figures.polls = !shown.timers.isEmpty();
    if (!figures.polls)
        return figures;
    for (int i = 0; i < warmTicks; ++i)
        tick(shown);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < countedTicks * 20; ++i)
        tick(shown);
    figures.microseconds = double(clock.nsecsElapsed()) / 1000.0 / (countedTicks * 20);
    for (int i = 0; i < countedTicks; ++i) {
        const QString before = stampOf(statePath);
        tick(shown);
        if (stampOf(statePath) != before)
            ++figures.writes;
    }
    return figures;
}

#ifdef BENCH_CALLGRIND
// The child run under callgrind: one dump per page, of its counted ticks only.
int countUnderCallgrind()
{
    CALLGRIND_START_INSTRUMENTATION;
    for (const char* name : pollingPages) {
        const PageClass* pageClass = findPageClass(QString::fromLatin1(name));
        if (!pageClass)
            continue;
        prepareUnit(name);
        const Shown shown = showPage(*pageClass);
        for (int i = 0; i < warmTicks; ++i)
            tick(shown);
        CALLGRIND_ZERO_STATS;
        CALLGRIND_TOGGLE_COLLECT;
        for (int i = 0; i < countedTicks; ++i)
            tick(shown);
        CALLGRIND_TOGGLE_COLLECT;
        CALLGRIND_DUMP_STATS_AT(name);
    }
    return 0;
}
#endif

// Instructions per dump of a callgrind run, by the name given at the dump.
std::map<std::string, double> readDumps(const QString& dir)
{
    std::map<std::string, double> totals;
    static const QRegularExpression trigger(
        QStringLiteral("^desc: Trigger: Client Request: (\\S+)$"), QRegularExpression::MultilineOption);
    static const QRegularExpression summary(
        QStringLiteral("^(?:summary|totals): (\\d+)"), QRegularExpression::MultilineOption);
    for (const QString& file : QDir(dir).entryList({ QStringLiteral("callgrind.*") }, QDir::Files)) {
        QFile in(QDir(dir).filePath(file));
        if (!in.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromLatin1(in.readAll());
        const auto name = trigger.match(text);
        const auto count = summary.match(text);
        if (name.hasMatch() && count.hasMatch())
            totals[name.captured(1).toStdString()] = count.captured(1).toDouble();
    }
    return totals;
}

bool haveValgrind()
{
    return std::system("valgrind --version >/dev/null 2>&1") == 0;
}

// Instructions per tick of each polling page, and of one battery cycle.
std::map<std::string, double> countInstructions(const char* self, const QTemporaryDir& dir)
{
    std::map<std::string, double> perTick;
    const std::string out = dir.filePath(QStringLiteral("callgrind.%p")).toStdString();
    // The battery thread's cycle, everything its run() executes, is counted
    // in a second run at the same time.
    const std::string batteryOut = dir.filePath(QStringLiteral("battery.out")).toStdString();
    auto batteryRun = std::async(std::launch::async, [&] {
        return bench::runOnce({ "/usr/bin/env", "valgrind", "--tool=callgrind", "-q", "--instr-atstart=no",
                                  "--collect-atstart=no", "--toggle-collect=MyThread::run()",
                                  "--callgrind-out-file=" + batteryOut, self, batteryUnderCallgrind },
            nullptr, true);
    });
    const bench::Sample ticks
        = bench::runOnce({ "/usr/bin/env", "valgrind", "--tool=callgrind", "-q", "--instr-atstart=no",
                             "--collect-atstart=no", "--callgrind-out-file=" + out, self, underCallgrind },
            nullptr, true);
    const bench::Sample battery = batteryRun.get();
    if (ticks.ok) {
        for (const auto& [name, total] : readDumps(dir.path()))
            perTick[name] = total / countedTicks;
    }
    if (battery.ok) {
        QFile in(QString::fromStdString(batteryOut));
        if (in.open(QIODevice::ReadOnly)) {
            static const QRegularExpression summary(
                QStringLiteral("^(?:summary|totals): (\\d+)"), QRegularExpression::MultilineOption);
            const auto count = summary.match(QString::fromLatin1(in.readAll()));
            if (count.hasMatch())
                perTick[batteryPage] = count.captured(1).toDouble();
        }
    }
    return perTick;
}

} // namespace

int main(int argc, char* argv[])
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    if (argc == 1) {
        bench::useThrowAwayUnit(dir);
        bench::useFrozenUnit(dir);
    }
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication app(argc, argv);
#ifdef BENCH_CALLGRIND
    if (argc == 2 && std::strcmp(argv[1], underCallgrind) == 0)
        return countUnderCallgrind();
    if (argc == 2 && std::strcmp(argv[1], batteryUnderCallgrind) == 0) {
        CALLGRIND_START_INSTRUMENTATION;
        if (const PageClass* power = findPageClass(QString::fromLatin1(batteryPage)))
            runBatteryCycle(*power);
        return 0;
    }
#endif

    const QByteArray statePath = qgetenv("ZUAUX_SIM_STATE");
    std::map<std::string, double> instructions;
#ifdef BENCH_CALLGRIND
    const bool counted = haveValgrind();
    if (counted)
        instructions = countInstructions(argv[0], dir);
    else
        std::printf("valgrind is not installed: times per tick instead of instructions\n");
#else
    const bool counted = false;
    std::printf("built without valgrind's headers: times per tick instead of instructions\n");
#endif

    std::printf("%-12s %15s %12s   %s\n", "page", "per tick", "target", "state-file writes (target 0)");
    for (const char* name : pollingPages) {
        const PageClass* pageClass = findPageClass(QString::fromLatin1(name));
        if (!pageClass) {
            std::printf("%-12s (no such page in this build)\n", name);
            continue;
        }
        const PageFigures figures = measureInProcess(*pageClass, statePath);
        if (!figures.polls) {
            std::printf("%-12s (does not poll on this unit)\n", name);
            continue;
        }
        const auto count = instructions.find(name);
        if (counted && count != instructions.end())
            std::printf("%-12s %9.0f instr %12s   %d in %d ticks\n", name, count->second, "<= 10000",
                figures.writes, countedTicks);
        else
            std::printf("%-12s %12.1f us %12s   %d in %d ticks\n", name, figures.microseconds, "",
                figures.writes, countedTicks);
    }
    // The battery thread's tick is a reading: a cycle of its thread reads
    // three values, one after each pause; the thread's start and end are
    // shared out over them.
    const auto battery = instructions.find(batteryPage);
    if (battery != instructions.end())
        std::printf(
            "%-12s %9.0f instr %12s   per reading: one cycle of its thread, %.0f, over its 3 readings\n",
            "battery", battery->second / 3, "<= 10000", battery->second);
    return 0;
}
