// The "Light sensor" page on the simulated unit: the trial start on showing,
// the busy sensor, the reading and when it stops.
#include "pagecheck.h"
#include "tabs/tabLightSensorDlg.h"

namespace
{
void scenarios()
{
    const QString start = QStringLiteral("Lightsensor_startAverageCalc(1, 0, 100, 0) -> %1");
    const QString stop = QStringLiteral("Lightsensor_stopAverageCalc() -> 0");
    const Steps started { start.arg(0), stop, start.arg(0) };
    const Steps running { "pushButtonOn.checked=true", "pushButtonOn.text=On", "timer.active=true" };
    const Steps stopped { "pushButtonOn.checked=false", "pushButtonOn.text=Off", "timer.active=false",
        "editIlumination.text=Light Sensor is not running" };
    const Steps tick { "tabLightSensor.show", "tabLightSensor.updateIlluminance" };
    const QString busy = QStringLiteral(
        "Error(20) in startAverageCalc.\r\nThe light sensor cannot be started when automatic backlight "
        "is running.\r\nError: Light sensor busy, used by the automatic backlight");

    row("busy sensor",
        { .steps = { "Backlight/AutomaticBLStatus=1", "tabLightSensor.show" },
            .calls = { start.arg(20) },
            .state = stopped
                + Steps { "pushButtonOn.enabled=false",
                    "pushButtonOn.toolTip=Cannot be started when automatic backlight is running" },
            .boxes = { busy } });
    row("free again on the next showing",
        { .steps = { "Backlight/AutomaticBLStatus=1", "tabLightSensor.show", "tabLightSensor.hide",
              "Backlight/AutomaticBLStatus=0", "tabLightSensor.show" },
            .calls = Steps { start.arg(20), stop } + started,
            .state
            = running + Steps { "pushButtonOn.enabled=true", "pushButtonOn.toolTip=", "timer.interval=500" },
            .boxes = { busy } });
    row("hide stops once",
        { .steps = tick + Steps { "tabLightSensor.hide" },
            .calls = started + Steps { stop },
            .state = stopped });

    // The same reading again rewrites nothing: the cursor stays.
    row("range 5, read twice",
        { .steps = Steps { "Lightsensor/OperatingRange=5" } + tick
                + Steps { "editIlumination.cursorPosition=2", "tabLightSensor.updateIlluminance" },
            .calls = started,
            .state = { "editIlumination.text=350 Lux, Unknown range", "editIlumination.cursorPosition=2" } });
    row("illuminance failure stops",
        { .steps = Steps { "Lightsensor_getAverageIlluminance=6" } + tick,
            .calls = started + Steps { stop },
            .state = { "timer.active=false", "pushButtonOn.text=Off", "editIlumination.text=Range standard" },
            .boxes = { "Error(6) in getIlluminance: Timeout, the controller did not answer" } });

    // The settings are read when a measurement starts.
    row("restarted by the button",
        { .steps = { "tabLightSensor.show", "comboBoxSamplingsMode.currentIndex=2",
              "spinBoxAverageWndSize.value=99", "spinBoxRejectWndSize.value=3",
              "spinBoxRejectDelta.value=65000", "pushButtonOn.click", "Lightsensor_startAverageCalc=6",
              "pushButtonOn.click" },
            .calls = started + Steps { stop, "Lightsensor_startAverageCalc(99, 3, 65000, 2) -> 6" },
            .state = stopped,
            .boxes = { "Error(6) in startAverageCalc: Timeout, the controller did not answer" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabLightSensorDlg(nullptr); }, QStringLiteral("Lightsensor_s"),
        { "Backlight/AutomaticBLStatus=0", "Lightsensor/OperatingRange=0",
            "Lightsensor/AverageIlluminance=350" },
        scenarios);
}
