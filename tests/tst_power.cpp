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
    QTest::newRow("now mode and battery shown")
        << Steps { "Power/CanPowerStatus=1", "Power/VideoPowerStatus=2", "Battery/BatteryVoltageStatus=64" }
            + show
        << Steps()
        << Steps { "comboBoxMode.currentIndex=1", "comboBoxMode.currentText=Current power settings",
               "checkBoxCAN.checked=true", "checkBoxExtFan.checked=false", "checkBoxVideo_1.checked=false",
               "checkBoxVideo_2.checked=true", "tabWidget_2.count=2", "progressBar.value=64",
               "label_2.text=", "label_3.text=Battery is fully charged\n",
               "label_4.text=Power source: External power", "label.text=Battery voltage" }
        << Steps();
    QTest::newRow("start-up mode shows the start-up configuration")
        << Steps { "Config/ExtFanStartupPowerConfig=1", "Config/VideoStartupPowerConfig=1" } + startup
        << Steps()
        << Steps { "checkBoxExtFan.checked=true", "checkBoxVideo_1.checked=true",
               "checkBoxVideo_2.checked=false" }
        << Steps();
    QTest::newRow("start-up mode writes the start-up configuration")
        << startup
            + Steps { "Config_setCanStartupPowerConfig=7", "checkBoxCAN.click", "checkBoxExtFan.click",
                  "checkBoxVideo_2.click" }
        << Steps { "Config_setCanStartupPowerConfig(1) -> 7", "Config_setExtFanStartupPowerConfig(1) -> 0",
               "Config_setVideoStartupPowerConfig(2) -> 0" }
        << Steps() << Steps { "Error(7) in setCanPowerStatus: Communication with the controller failed" };
    // The unit has two video channels: a third is refused.
    QTest::newRow("now mode writes the live status")
        << show + Steps { "checkBoxExtFan.click", "checkBoxVideo_1.click", "checkBoxVideo_3.click" }
        << Steps { "Power_setExtFanPowerStatus(1) -> 0", "Power_setVideoPowerStatus(1) -> 0",
               "Power_setVideoPowerStatus(5) -> 4" }
        << Steps() << Steps { "Error(4) in setVideoPowerStatus: Invalid parameter" };
    QTest::newRow("unreadable switches are disabled, start-up video under the live name")
        << Steps { "Power_getExtFanPowerStatus=6", "Config_getVideoStartupPowerConfig=7" } + startup
        << Steps()
        << Steps { "checkBoxExtFan.enabled=true", "checkBoxVideo_4.enabled=false",
               "checkBoxVideo_4.visible=true" }
        << Steps { "Error(6) in getExtFanPowerStatus: Timeout, the controller did not answer",
               "Error(6) in getExtFanPowerStatus: Timeout, the controller did not answer",
               "Error(7) in getVideoPowerStatus: Communication with the controller failed" };
    QTest::newRow("CAN power missing in both modes")
        << Steps { "Power_getCanPowerStatus=2", "Config_getCanStartupPowerConfig=2" } + startup << Steps()
        << Steps { "checkBoxCAN.visible=false", "checkBoxExtFan.visible=true" } << Steps();
    QTest::newRow("battery error status 7")
        << Steps { "Battery/HwErrorStatus=7" } + show << Steps()
        << Steps { "label_2.text=Could not get battery error status code. Error(0) Success\n" } << Steps();
    QTest::newRow("battery texts") << Steps { "Battery/HwErrorStatus=3", "Battery/BatteryChargingStatus=4",
        "Battery/PowerSource=0" }
            + show << Steps()
                                   << Steps { "label_2.text=Battery error! Charging failed\n",
                                          "label_3.text=Temperature is too high to charge the battery\n",
                                          "label_4.text=Power source: Battery" }
                                   << Steps();
    QTest::newRow("battery reads failing")
        << Steps { "Battery_getHwErrorStatus=7", "Battery_getBatteryChargingStatus=6",
               "Battery_getPowerSource=19", "Battery_getBatteryVoltageStatus=18" }
            + show
        << Steps()
        << Steps { "label_2.text=Could not get battery error status code. Error(7) Communication with the "
                   "controller failed\n",
               "label_3.text=Could not get battery charging status. Error(6) Timeout, the controller did not "
               "answer\n",
               "label_4.text=Power source: Unknown", "progressBar.value=0",
               "label.text=Could not get battery power status. Error(18) Value not available\n" }
        << Steps();
    QTest::newRow("no battery removes the tab, once")
        << Steps { "Unit/HasBattery=0", "tabPower.show", "tabPower.hide", "tabPower.show" } << Steps()
        << Steps { "tabWidget_2.count=1", "tabWidget_2Page2.enabled=false", "tabWidget_2.currentIndex=0" }
        << Steps();
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabPowerDlg(nullptr); }, QStringLiteral("(Power|Config)_set"), {},
        scenarios);
}
