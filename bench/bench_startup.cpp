// Start-up cost of the settings program against a bare Qt window: time from
// process start to the main window's first frame, and peak resident memory.
// Both programs run offscreen and quit at their first frame; each is started
// several times and the median time and the largest peak are reported.
#include "benchsupport.h"

#include <QByteArray>

#include <sys/stat.h>

int main()
{
    QTemporaryDir stateDir;
    if (!stateDir.isValid())
        return 1;
    bench::useThrowAwayUnit(stateDir);
    setenv("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME", "1", 1);
    // The Buttons page reads key events from an input device: give it a
    // FIFO of its own, away from the machine's real devices.
    const QByteArray fifo = stateDir.filePath(QStringLiteral("buttons")).toLocal8Bit();
    if (!getenv("ZUSETTINGS_INPUT_DEVICE") && mkfifo(fifo.constData(), 0600) == 0)
        setenv("ZUSETTINGS_INPUT_DEVICE", fifo.constData(), 1);

    const std::string dir = ZUSETTINGS_BINARY_DIR;
    constexpr int runs = 7;
    const char* const frame = "first-frame\n";
    bench::Summary floor, app;
    if (!bench::measure("floor", { dir + "/bench/floor_window" }, runs, floor, frame)
        || !bench::measure("zusettings", { dir + "/src/zusettings" }, runs, app, frame))
        return 1;
    std::printf("ratio to floor: first frame %.2f, peak memory %.2f\n", app.medianMs / floor.medianMs,
        static_cast<double>(app.peakKiB) / static_cast<double>(floor.peakKiB));
    return 0;
}
