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
    const QString busy = errorBox(20,
        "startAverageCalc.\r\nThe light sensor cannot be started when automatic backlight is "
        "running.\r\nError");

    QTest::newRow("busy sensor") << Steps { "Backlight/AutomaticBLStatus=1", "tabLightSensor.show" }
                                 << Steps { start.arg(20) }
                                 << stopped
            + Steps { "pushButtonOn.enabled=false",
                  "pushButtonOn.toolTip=Cannot be started when automatic backlight is running" }
                                 << Steps { busy };
    QTest::newRow("free again on the next showing")
        << Steps { "Backlight/AutomaticBLStatus=1", "tabLightSensor.show", "tabLightSensor.hide",
               "Backlight/AutomaticBLStatus=0", "tabLightSensor.show" }
        << Steps { start.arg(20), stop } + started
        << running + Steps { "pushButtonOn.enabled=true", "pushButtonOn.toolTip=", "timer.interval=500" }
        << Steps { busy };
    QTest::newRow("hide stops once") << tick + Steps { "tabLightSensor.hide" } << started + Steps { stop }
                                     << stopped << Steps();

    // The same reading again rewrites nothing: the cursor stays.
    QTest::newRow("range 5, read twice")
        << Steps { "Lightsensor/OperatingRange=5" } + tick
            + Steps { "editIlumination.cursorPosition=2", "tabLightSensor.updateIlluminance" }
        << started
        << Steps { "editIlumination.text=350 Lux, Unknown range", "editIlumination.cursorPosition=2" }
        << Steps();
    QTest::newRow("illuminance failure stops")
        << Steps { "Lightsensor_getAverageIlluminance=6" } + tick << started + Steps { stop }
        << Steps { "timer.active=false", "pushButtonOn.text=Off", "editIlumination.text=Range standard" }
        << Steps { errorBox(6, "getIlluminance") };

    // The settings are read when a measurement starts.
    QTest::newRow("restarted by the button")
        << Steps { "tabLightSensor.show", "comboBoxSamplingsMode.currentIndex=2",
               "spinBoxAverageWndSize.value=99", "spinBoxRejectWndSize.value=3",
               "spinBoxRejectDelta.value=65000", "pushButtonOn.click", "Lightsensor_startAverageCalc=6",
               "pushButtonOn.click" }
        << started + Steps { stop, "Lightsensor_startAverageCalc(99, 3, 65000, 2) -> 6" } << stopped
        << Steps { errorBox(6, "startAverageCalc") };
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
