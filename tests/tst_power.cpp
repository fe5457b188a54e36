// The "Power" page on the simulated unit: power switches now and at start-up,
// and the battery tab as the page fills it when shown.
#include "pagecheck.h"
#include "tabs/tabPowerDlg.h"

namespace
{
void scenarios()
{
    const Steps show { "tabPower.show" };
    const Steps startup { "tabPower.show", "comboBoxMode.currentIndex=0" };
    row("now mode and battery shown",
        { .steps = Steps { "Power/CanPowerStatus=1", "Power/VideoPowerStatus=2",
                       "Battery/BatteryVoltageStatus=64" }
                + show,
            .state = { "comboBoxMode.currentIndex=1", "comboBoxMode.currentText=Current power settings",
                "checkBoxCAN.checked=true", "checkBoxExtFan.checked=false", "checkBoxVideo_1.checked=false",
                "checkBoxVideo_2.checked=true", "tabWidget_2.count=2", "progressBar.value=64",
                "label_2.text=", "label_3.text=Battery is fully charged\n",
                "label_4.text=Power source: External power", "label.text=Battery voltage" } });
    row("start-up mode shows the start-up configuration",
        { .steps
            = Steps { "Config/ExtFanStartupPowerConfig=1", "Config/VideoStartupPowerConfig=1" } + startup,
            .state = { "checkBoxExtFan.checked=true", "checkBoxVideo_1.checked=true",
                "checkBoxVideo_2.checked=false" } });
    row("start-up mode writes the start-up configuration",
        { .steps = startup
                + Steps { "Config_setCanStartupPowerConfig=7", "checkBoxCAN.click", "checkBoxExtFan.click",
                    "checkBoxVideo_2.click" },
            .calls = { "Config_setCanStartupPowerConfig(1) -> 7",
                "Config_setExtFanStartupPowerConfig(1) -> 0", "Config_setVideoStartupPowerConfig(2) -> 0" },
            .boxes = { "Error(7) in setCanPowerStatus: Communication with the controller failed" } });
    // The unit has two video channels: a third is refused.
    row("now mode writes the live status",
        { .steps = show + Steps { "checkBoxExtFan.click", "checkBoxVideo_1.click", "checkBoxVideo_3.click" },
            .calls = { "Power_setExtFanPowerStatus(1) -> 0", "Power_setVideoPowerStatus(1) -> 0",
                "Power_setVideoPowerStatus(5) -> 4" },
            .boxes = { "Error(4) in setVideoPowerStatus: Invalid parameter" } });
    row("unreadable switches are disabled, start-up video under the live name",
        { .steps = Steps { "Power_getExtFanPowerStatus=6", "Config_getVideoStartupPowerConfig=7" } + startup,
            .state = { "checkBoxExtFan.enabled=true", "checkBoxVideo_4.enabled=false",
                "checkBoxVideo_4.visible=true" },
            .boxes = { "Error(6) in getExtFanPowerStatus: Timeout, the controller did not answer",
                "Error(6) in getExtFanPowerStatus: Timeout, the controller did not answer",
                "Error(7) in getVideoPowerStatus: Communication with the controller failed" } });
    row("CAN power missing in both modes",
        { .steps = Steps { "Power_getCanPowerStatus=2", "Config_getCanStartupPowerConfig=2" } + startup,
            .state = { "checkBoxCAN.visible=false", "checkBoxExtFan.visible=true" } });
    row("battery error status 7",
        { .steps = Steps { "Battery/HwErrorStatus=7" } + show,
            .state = { "label_2.text=Could not get battery error status code. Error(0) Success\n" } });
    row("battery texts",
        { .steps
            = Steps { "Battery/HwErrorStatus=3", "Battery/BatteryChargingStatus=4", "Battery/PowerSource=0" }
                + show,
            .state = { "label_2.text=Battery error! Charging failed\n",
                "label_3.text=Temperature is too high to charge the battery\n",
                "label_4.text=Power source: Battery" } });
    row("battery reads failing",
        { .steps = Steps { "Battery_getHwErrorStatus=7", "Battery_getBatteryChargingStatus=6",
                       "Battery_getPowerSource=19", "Battery_getBatteryVoltageStatus=18" }
                + show,
            .state
            = { "label_2.text=Could not get battery error status code. Error(7) Communication with the "
                "controller failed\n",
                "label_3.text=Could not get battery charging status. Error(6) Timeout, the controller did "
                "not "
                "answer\n",
                "label_4.text=Power source: Unknown", "progressBar.value=0",
                "label.text=Could not get battery power status. Error(18) Value not available\n" } });
    row("no battery removes the tab, once",
        { .steps = { "Unit/HasBattery=0", "tabPower.show", "tabPower.hide", "tabPower.show" },
            .state
            = { "tabWidget_2.count=1", "tabWidget_2Page2.enabled=false", "tabWidget_2.currentIndex=0" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabPowerDlg(nullptr); }, QStringLiteral("(Power|Config)_set"), {},
        scenarios);
}
