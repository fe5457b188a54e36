// Start-up cost of the settings program against a bare Qt window: time from
// process start to the main window's first frame, and peak resident memory.
// Both programs run offscreen and quit at their first frame; each is started
// several times and the median time and the largest peak are reported.
#include <QByteArray>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int runs = 7;

struct Sample {
    double firstFrameMs = 0;
    long peakKiB = 0;
    bool ok = false;
};

// Starts `program`, times the "first-frame" line on its stdout, and collects
// its peak memory when it ends.
Sample runOnce(const std::string& program)
{
    Sample sample;
    int out[2];
    if (pipe(out) != 0)
        return sample;
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid < 0) {
        close(out[0]);
        close(out[1]);
        return sample;
    }
    if (pid == 0) {
        dup2(out[1], STDOUT_FILENO);
        const int devNull = open("/dev/null", O_WRONLY);
        if (devNull >= 0)
            dup2(devNull, STDERR_FILENO);
        close(out[0]);
        close(out[1]);
        execl(program.c_str(), program.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    std::string seen;
    char buffer[256];
    bool framed = false;
    ssize_t n;
    while ((n = read(out[0], buffer, sizeof buffer)) > 0) {
        seen.append(buffer, static_cast<size_t>(n));
        if (!framed && seen.find("first-frame\n") != std::string::npos) {
            framed = true;
            sample.firstFrameMs
                = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        }
    }
    close(out[0]);
    int status = 0;
    struct rusage usage;
    std::memset(&usage, 0, sizeof usage);
    if (wait4(pid, &status, 0, &usage) != pid)
        return sample;
    sample.peakKiB = usage.ru_maxrss;
    sample.ok = framed && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return sample;
}

struct Summary {
    double medianMs = 0;
    long peakKiB = 0;
};

bool measure(const char* label, const std::string& program, Summary& summary)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const Sample s = runOnce(program);
        if (!s.ok) {
            std::printf("%s: run %d failed (%s)\n", label, i + 1, program.c_str());
            return false;
        }
        times.push_back(s.firstFrameMs);
        summary.peakKiB = std::max(summary.peakKiB, s.peakKiB);
    }
    std::sort(times.begin(), times.end());
    summary.medianMs = times[times.size() / 2];
    std::printf("%-10s first frame %8.1f ms (median of %d)   peak memory %8ld KiB\n", label, summary.medianMs,
        runs, summary.peakKiB);
    return true;
}

} // namespace

int main()
{
    QTemporaryDir stateDir;
    if (!stateDir.isValid())
        return 1;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME", "1", 1);
    if (!getenv("ZUAUX_SIM_PROFILE"))
        setenv("ZUAUX_SIM_PROFILE", "full", 1);
    setenv("ZUAUX_SIM_STATE", stateDir.filePath(QStringLiteral("state.ini")).toLocal8Bit().constData(), 1);
    // The Buttons page reads key events from an input device: give it a
    // FIFO of its own, away from the machine's real devices.
    const QByteArray fifo = stateDir.filePath(QStringLiteral("buttons")).toLocal8Bit();
    if (!getenv("ZUSETTINGS_INPUT_DEVICE") && mkfifo(fifo.constData(), 0600) == 0)
        setenv("ZUSETTINGS_INPUT_DEVICE", fifo.constData(), 1);

    const std::string dir = ZUSETTINGS_BINARY_DIR;
    Summary floor, app;
    if (!measure("floor", dir + "/bench/floor_window", floor)
        || !measure("zusettings", dir + "/src/zusettings", app))
        return 1;
    std::printf("ratio to floor: first frame %.2f, peak memory %.2f\n", app.medianMs / floor.medianMs,
        static_cast<double>(app.peakKiB) / static_cast<double>(floor.peakKiB));
    return 0;
}
