// The "Heater" page on the simulated unit: the two fields converting into
// each other, and what Apply writes.
#include "pagecheck.h"
#include "tabs/tabSysConfDlg.h"

namespace
{
void scenarios()
{
    const Steps apply { "tabSysConf.show", "pushButton.click" };
    QTest::newRow("shows -25 °C as -13 °F")
        << Steps { "tabSysConf.show" } << Steps()
        << Steps { "editHeatingTemp.text=-25", "editHeatingTemp_2.text=-13" } << Steps();
    // The field typed into keeps its text: no conversion back.
    QTest::newRow("40 °F shows 4 °C, Apply writes 4")
        << Steps { "tabSysConf.show", "editHeatingTemp_2.text=40", "pushButton.click" }
        << Steps { "Config_setHeatingTempLimit(4) -> 0" }
        << Steps { "editHeatingTemp.text=4", "editHeatingTemp_2.text=40" } << Steps();
    QTest::newRow("-1 °C is 30 °F") << Steps { "editHeatingTemp.text=-1" } << Steps()
                                    << Steps { "editHeatingTemp_2.text=30" } << Steps();
    QTest::newRow("0 °F is -17 °C, 41 °F is 5 °C")
        << Steps { "editHeatingTemp_2.text=0", "editHeatingTemp_2.text=41" } << Steps()
        << Steps { "editHeatingTemp.text=5" } << Steps();
    QTest::newRow("clearing one clears the other")
        << Steps { "tabSysConf.show", "editHeatingTemp.text=" } << Steps()
        << Steps { "editHeatingTemp_2.text=" } << Steps();
    QTest::newRow("65511 is written as -25")
        << Steps { "tabSysConf.show", "editHeatingTemp.text=65511", "pushButton.click" }
        << Steps { "Config_setHeatingTempLimit(-25) -> 0" } << Steps() << Steps();
    QTest::newRow("6 is out of range")
        << Steps { "editHeatingTemp.text=6", "pushButton.click" } << Steps() << Steps()
        << Steps { "Heating temperature out of allowed range (-25°C to +5°C)." };
    QTest::newRow("a sign alone is no number")
        << Steps { "editHeatingTemp.text=-", "pushButton.click" } << Steps()
        << Steps { "editHeatingTemp_2.text=" } << Steps { "Heating temperature - invalid format." };
    QTest::newRow("write refused") << Steps { "Config_setHeatingTempLimit=15" } + apply
                                   << Steps { "Config_setHeatingTempLimit(-25) -> 15" } << Steps()
                                   << Steps { "Error(15) in setHeatingTempLimit: Access denied" };
    QTest::newRow("unsupported limit hides group and Apply")
        << Steps { "Config_getHeatingTempLimit=2", "tabSysConf.show" } << Steps()
        << Steps { "groupHeating.visible=false", "pushButton.visible=false" } << Steps();
    // The error stands in the field; Apply then writes nothing.
    QTest::newRow("unreadable limit disables the group")
        << Steps { "Config_getHeatingTempLimit=7" } + apply << Steps()
        << Steps { "groupHeating.enabled=false", "groupHeating.toolTip=Requires newer SS version",
               "editHeatingTemp.text=getHeatingTempLimit: Error:  Communication with the controller failed",
               "pushButton.visible=true" }
        << Steps();
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabSysConfDlg(nullptr); }, QStringLiteral("Config_setHeatingTempLimit"),
        {}, scenarios);
}
