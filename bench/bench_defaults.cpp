// Cost of the factory defaults mode (--factorydefault) against the 1.6 s of
// pauses that the touch controller requires: median wall time and peak
// resident memory over a few runs on a throw-away simulated unit.
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int runs = 5;
// The pauses of the touch-screen step: 500 + 500 + 100 + 500 ms.
constexpr double requiredSleepMs = 1600.0;

struct Sample {
    double ms = 0;
    long peakKiB = 0;
    bool ok = false;
};

Sample runOnce(const std::string& program)
{
    Sample sample;
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid < 0)
        return sample;
    if (pid == 0) {
        execl(program.c_str(), program.c_str(), "--factorydefault", static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    struct rusage usage = {};
    if (wait4(pid, &status, 0, &usage) != pid)
        return sample;
    sample.ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    sample.peakKiB = usage.ru_maxrss;
    sample.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return sample;
}

} // namespace

int main()
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    if (!getenv("ZUAUX_SIM_PROFILE"))
        setenv("ZUAUX_SIM_PROFILE", "full", 1);
    setenv("ZUAUX_SIM_STATE", dir.filePath(QStringLiteral("state.ini")).toLocal8Bit().constData(), 1);
    unsetenv("ZUAUX_SIM_TRACE");

    const std::string program = std::string(ZUSETTINGS_BINARY_DIR) + "/src/zusettings";
    std::vector<double> times;
    long peakKiB = 0;
    for (int i = 0; i < runs; ++i) {
        const Sample s = runOnce(program);
        if (!s.ok) {
            std::printf("--factorydefault: run %d failed (%s)\n", i + 1, program.c_str());
            return 1;
        }
        times.push_back(s.ms);
        peakKiB = std::max(peakKiB, s.peakKiB);
    }
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    std::printf(
        "%-17s %8.1f ms (median of %d)   peak memory %8ld KiB\n", "--factorydefault", median, runs, peakKiB);
    std::printf("floor (pauses)    %8.1f ms\n", requiredSleepMs);
    std::printf("ratio to floor: time %.2f, beyond the pauses %.1f ms\n", median / requiredSleepMs,
        median - requiredSleepMs);
    return 0;
}
