// The "Heater" page on the simulated unit: the two fields converting into
// each other, and what Apply writes.
#include "pagecheck.h"
#include "tabs/tabSysConfDlg.h"

namespace
{
void scenarios()
{
    const Steps apply { "tabSysConf.show", "pushButton.click" };
    row("shows -25 °C as -13 °F",
        { .steps = { "tabSysConf.show" },
            .state = { "editHeatingTemp.text=-25", "editHeatingTemp_2.text=-13" } });
    // The field typed into keeps its text: no conversion back.
    row("40 °F shows 4 °C, Apply writes 4",
        { .steps = { "tabSysConf.show", "editHeatingTemp_2.text=40", "pushButton.click" },
            .calls = { "Config_setHeatingTempLimit(4) -> 0" },
            .state = { "editHeatingTemp.text=4", "editHeatingTemp_2.text=40" } });
    row("-1 °C is 30 °F",
        { .steps = { "editHeatingTemp.text=-1" }, .state = { "editHeatingTemp_2.text=30" } });
    row("0 °F is -17 °C, 41 °F is 5 °C",
        { .steps = { "editHeatingTemp_2.text=0", "editHeatingTemp_2.text=41" },
            .state = { "editHeatingTemp.text=5" } });
    row("clearing one clears the other",
        { .steps = { "tabSysConf.show", "editHeatingTemp.text=" }, .state = { "editHeatingTemp_2.text=" } });
    row("65511 is written as -25",
        { .steps = { "tabSysConf.show", "editHeatingTemp.text=65511", "pushButton.click" },
            .calls = { "Config_setHeatingTempLimit(-25) -> 0" } });
    row("6 is out of range",
        { .steps = { "editHeatingTemp.text=6", "pushButton.click" },
            .boxes = { "Heating temperature out of allowed range (-25°C to +5°C)." } });
    row("a sign alone is no number",
        { .steps = { "editHeatingTemp.text=-", "pushButton.click" },
            .state = { "editHeatingTemp_2.text=" },
            .boxes = { "Heating temperature - invalid format." } });
    row("write refused",
        { .steps = Steps { "Config_setHeatingTempLimit=15" } + apply,
            .calls = { "Config_setHeatingTempLimit(-25) -> 15" },
            .boxes = { "Error(15) in setHeatingTempLimit: Access denied" } });
    row("unsupported limit hides group and Apply",
        { .steps = { "Config_getHeatingTempLimit=2", "tabSysConf.show" },
            .state = { "groupHeating.visible=false", "pushButton.visible=false" } });
    // The error stands in the field; Apply then writes nothing.
    row("unreadable limit disables the group",
        { .steps = Steps { "Config_getHeatingTempLimit=7" } + apply,
            .state = { "groupHeating.enabled=false", "groupHeating.toolTip=Requires newer SS version",
                "editHeatingTemp.text=getHeatingTempLimit: Error:  Communication with the controller failed",
                "pushButton.visible=true" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabSysConfDlg(nullptr); }, QStringLiteral("Config_setHeatingTempLimit"),
        {}, scenarios);
}
