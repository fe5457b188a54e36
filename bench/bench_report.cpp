// Cost of the report mode (--systemreport) against a bare core application
// that writes a file of the same size: median wall time and peak resident
// memory over several runs of each, on a throw-away simulated unit.
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int runs = 9;

struct Sample {
    double ms = 0;
    long peakKiB = 0;
    bool ok = false;
};

Sample runOnce(const std::vector<std::string>& command)
{
    Sample sample;
    std::vector<char*> argv;
    for (const std::string& argument : command)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid < 0)
        return sample;
    if (pid == 0) {
        execv(argv[0], argv.data());
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

struct Summary {
    double medianMs = 0;
    long peakKiB = 0;
};

bool measure(
    const char* label, const std::vector<std::string>& command, const std::string& output, Summary& summary)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        std::remove(output.c_str());
        const Sample s = runOnce(command);
        struct stat written;
        if (!s.ok || stat(output.c_str(), &written) != 0 || written.st_size == 0) {
            std::printf("%s: run %d failed (%s)\n", label, i + 1, command[0].c_str());
            return false;
        }
        times.push_back(s.ms);
        summary.peakKiB = std::max(summary.peakKiB, s.peakKiB);
    }
    std::sort(times.begin(), times.end());
    summary.medianMs = times[times.size() / 2];
    std::printf("%-14s %8.1f ms (median of %d)   peak memory %8ld KiB\n", label, summary.medianMs, runs,
        summary.peakKiB);
    return true;
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

    const std::string binaries = ZUSETTINGS_BINARY_DIR;
    const std::string output = dir.filePath(QStringLiteral("report.txt")).toStdString();
    Summary floor, report;
    if (!measure("floor", { binaries + "/bench/floor_corefile", output }, output, floor)
        || !measure(
            "--systemreport", { binaries + "/src/zusettings", "--systemreport", output }, output, report))
        return 1;
    std::printf("ratio to floor: time %.2f, peak memory %.2f\n", report.medianMs / floor.medianMs,
        static_cast<double>(report.peakKiB) / static_cast<double>(floor.peakKiB));
    return 0;
}
