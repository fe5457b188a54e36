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
    bench::Summary defaults;
    if (!bench::measure("--factorydefault", { program, "--factorydefault" }, 5, defaults))
        return 1;
    std::printf("floor (pauses)   %8.1f ms\n", requiredSleepMs);
    std::printf("ratio to floor: time %.2f, beyond the pauses %.1f ms\n", defaults.medianMs / requiredSleepMs,
        defaults.medianMs - requiredSleepMs);
    return 0;
}
