// Cost of the factory defaults mode (--factorydefault) against the 1.6 s of
// pauses that the touch controller requires: median wall time and peak
// resident memory over a few runs on a throw-away simulated unit.
#include "benchsupport.h"

namespace
{
// The pauses of the touch-screen step: 500 + 500 + 100 + 500 ms.
constexpr double requiredSleepMs = 1600.0;
} // namespace

int main()
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    bench::useThrowAwayUnit(dir);

    const std::string program = std::string(ZUSETTINGS_BINARY_DIR) + "/src/zusettings";
    std::vector<bench::Summary> summary;
    if (!bench::measure({ { "--factorydefault", { program, "--factorydefault" } } }, 3, summary))
        return 1;
    std::printf("floor (pauses)   %8.1f ms\n", requiredSleepMs);
    bench::printRatio("time", summary[0].medianMs / requiredSleepMs);
    std::printf("beyond the pauses: %.1f ms   target <= 50 ms\n", summary[0].medianMs - requiredSleepMs);
    return 0;
}
