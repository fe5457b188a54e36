// Running and measuring shared by the benchmarks: a program is started several
// times on a throw-away simulated unit, and the median wall time and the
// largest peak resident memory of its runs are reported. Against a floor, the
// ratio is the median of the ratios of runs made one after the other, which
// holds when the machine's speed drifts during the measurement.
#ifndef BENCHSUPPORT_H
#define BENCHSUPPORT_H

#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench
{

struct Sample {
    double ms = 0;
    long peakKiB = 0;
    bool ok = false;
};

struct Summary {
    double medianMs = 0;
    long peakKiB = 0;
    std::vector<double> runMs; // in the order the runs were made
};

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// The median, over the runs, of a run of `program` against the floor's run
// made just before it.
inline double medianRatio(const Summary& program, const Summary& floor)
{
    std::vector<double> ratios;
    for (size_t i = 0; i < program.runMs.size() && i < floor.runMs.size(); ++i)
        ratios.push_back(program.runMs[i] / floor.runMs[i]);
    return median(ratios);
}

// Offscreen, no trace, and a unit state that lives in `dir`; the profile is
// "full" unless ZUAUX_SIM_PROFILE names another.
inline void useThrowAwayUnit(const QTemporaryDir& dir)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    if (!getenv("ZUAUX_SIM_PROFILE"))
        setenv("ZUAUX_SIM_PROFILE", "full", 1);
    setenv("ZUAUX_SIM_STATE", dir.filePath(QStringLiteral("state.ini")).toLocal8Bit().constData(), 1);
    unsetenv("ZUAUX_SIM_TRACE");
}

// The unit of useThrowAwayUnit with every live reading held still, so that
// nothing changes while a page polls it.
inline bool useFrozenUnit(const QTemporaryDir& dir)
{
    const std::string path = dir.filePath(QStringLiteral("frozen.ini")).toStdString();
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (!file)
        return false;
    std::fprintf(file, "[profile]\nbase=%s\n[live]\nfrozen=1\n", getenv("ZUAUX_SIM_PROFILE"));
    std::fclose(file);
    setenv("ZUAUX_SIM_PROFILE", path.c_str(), 1);
    return true;
}

// The Buttons page reads key events from an input device: give it a FIFO of
// its own, away from the machine's real devices.
inline void useOwnInputDevice(const QTemporaryDir& dir)
{
    const std::string fifo = dir.filePath(QStringLiteral("buttons")).toStdString();
    if (!getenv("ZUSETTINGS_INPUT_DEVICE") && mkfifo(fifo.c_str(), 0600) == 0)
        setenv("ZUSETTINGS_INPUT_DEVICE", fifo.c_str(), 1);
}

inline double msSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Runs `command` once. Its time is taken when it ends or, given a `marker`,
// when that text appears on its stdout; stderr is discarded then, or when
// `quiet`. A run is ok when it exits with 0 (and printed the marker).
inline Sample runOnce(
    const std::vector<std::string>& command, const char* marker = nullptr, bool quiet = false)
{
    Sample sample;
    std::vector<char*> argv;
    for (const std::string& argument : command)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    int out[2] = { -1, -1 };
    if (marker && pipe(out) != 0)
        return sample;
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        if (marker) {
            dup2(out[1], STDOUT_FILENO);
            close(out[0]);
            close(out[1]);
        }
        if (marker || quiet) {
            const int devNull = open("/dev/null", O_WRONLY);
            if (devNull >= 0)
                dup2(devNull, STDERR_FILENO);
        }
        execv(argv[0], argv.data());
        _exit(127);
    }
    bool marked = !marker;
    if (marker) {
        close(out[1]);
        std::string seen;
        char buffer[256];
        ssize_t n;
        while (pid > 0 && (n = read(out[0], buffer, sizeof buffer)) > 0) {
            seen.append(buffer, static_cast<size_t>(n));
            if (!marked && seen.find(marker) != std::string::npos) {
                marked = true;
                sample.ms = msSince(start);
            }
        }
        close(out[0]);
    }
    int status = 0;
    struct rusage usage = {};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid)
        return sample;
    if (!marker)
        sample.ms = msSince(start);
    sample.peakKiB = usage.ru_maxrss;
    sample.ok = marked && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return sample;
}

struct Program {
    const char* label;
    std::vector<std::string> command;
};

// Runs each program `runs` times, taking turns so that a change in the
// machine's load falls on all of them alike, and prints one summary line per
// program. `ranWell`, when given, judges each run further (a file it had to
// write).
inline bool measure(const std::vector<Program>& programs, int runs, std::vector<Summary>& summaries,
    const char* marker = nullptr, const std::function<bool()>& ranWell = {})
{
    summaries.assign(programs.size(), Summary());
    for (int i = 0; i < runs; ++i) {
        for (size_t p = 0; p < programs.size(); ++p) {
            const Sample s = runOnce(programs[p].command, marker);
            if (!s.ok || (ranWell && !ranWell())) {
                std::printf(
                    "%s: run %d failed (%s)\n", programs[p].label, i + 1, programs[p].command[0].c_str());
                return false;
            }
            summaries[p].runMs.push_back(s.ms);
            summaries[p].peakKiB = std::max(summaries[p].peakKiB, s.peakKiB);
        }
    }
    for (size_t p = 0; p < programs.size(); ++p) {
        summaries[p].medianMs = median(summaries[p].runMs);
        std::printf("%-16s %8.1f ms (median of %d)   peak memory %8ld KiB\n", programs[p].label,
            summaries[p].medianMs, runs, summaries[p].peakKiB);
    }
    return true;
}

// One line: what is measured, its ratio to the floor and the target, if any.
inline void printRatio(const char* what, double ratio, const char* target = nullptr)
{
    std::printf("ratio to floor: %-12s %6.2f", what, ratio);
    if (target)
        std::printf("   target %s", target);
    std::printf("\n");
}

} // namespace bench

#endif // BENCHSUPPORT_H
