// Cost of the report mode (--systemreport) against a bare core application
// that writes a file of the same size: median wall time and peak resident
// memory over several runs of each, taken in turns, on a throw-away simulated
// unit.
#include "benchsupport.h"

#include <sys/stat.h>

int main()
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    bench::useThrowAwayUnit(dir);

    const std::string binaries = ZUSETTINGS_BINARY_DIR;
    const std::string output = dir.filePath(QStringLiteral("report.txt")).toStdString();
    // Each run must leave a non-empty file, which goes before the next run.
    const auto written = [&output] {
        struct stat file;
        const bool ok = stat(output.c_str(), &file) == 0 && file.st_size > 0;
        std::remove(output.c_str());
        return ok;
    };
    constexpr int runs = 15;
    std::vector<bench::Summary> summaries;
    if (!bench::measure(
            { { "floor", { binaries + "/bench/floor_corefile", output } },
                { "--systemreport", { binaries + "/src/zusettings", "--systemreport", output } } },
            runs, summaries, nullptr, written))
        return 1;
    bench::printRatio("time", bench::medianRatio(summaries[1], summaries[0]), "<= 1.5");
    bench::printRatio(
        "peak memory", static_cast<double>(summaries[1].peakKiB) / static_cast<double>(summaries[0].peakKiB));
    return 0;
}
