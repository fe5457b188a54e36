// The "On/Off" page on the simulated unit: the settings it shows, and the
// eight writes of Apply with their messages.
#include "pagecheck.h"
#include "tabs/tabOnOffDlg.h"

#include "zuauxsim.h"

namespace
{
// Rows named "without suspend" run on a unit whose suspend query answers 2.
const QString withoutSuspend = QStringLiteral("without suspend");

Steps applied(const QString& trigger, const QString& suspend, const QString& press, const QString& signal)
{
    return { "Config_setLongButtonPressAction(2) -> 0", "Config_setShortButtonPressAction(1) -> 0",
        "Config_setOnOffSigAction(2) -> 0", "Config_setStartupTriggerConfig(" + trigger,
        "Config_setSuspendMaxTime(" + suspend, "Config_setFrontBtnTrigTime(" + press,
        "Config_setExtOnOffSigTrigTime(" + signal, "Config_setPowerOnStartup(1) -> 0" };
}

void scenarios()
{
    const Steps apply { "tabOnOff.show", "pushButton.click" };
    row("shows the unit's settings",
        { .steps = { "tabOnOff.show" },
            .state = { "comboBox_4.currentIndex=1", "comboBox_3.currentIndex=2", "comboBox_2.currentIndex=2",
                "comboBox_3.count=3", "comboBox.currentIndex=2", "comboBox.currentText=Button & signal",
                "editButtonPressTime.text=4000", "editTimeSignal.text=4", "editTimeSuspend.text=60",
                "checkBoxPowerOnStartup.checked=true", "groupSuspend.visible=true",
                "groupButton_2.title=Short press - action trigger button" } });
    row("Apply writes all eight in order",
        { .steps = apply, .calls = applied("3) -> 0", "60) -> 0", "4000) -> 0", "4) -> 0") });
    row("70000 ms is written as 4464, all events as 15",
        { .steps = { "tabOnOff.show", "editButtonPressTime.text=70000", "comboBox.currentIndex=11",
              "pushButton.click" },
            .calls = applied("15) -> 0", "60) -> 0", "4464) -> 0", "4) -> 0") });
    // A format error is told and the value taken as 0; every write still happens.
    row("format errors",
        { .steps = { "tabOnOff.show", "editTimeSuspend.text=", "editButtonPressTime.text=-1",
              "editTimeSignal.text=4294967296", "pushButton.click" },
            .calls = applied("3) -> 0", "0) -> 0", "0) -> 0", "0) -> 0"),
            .boxes = { "Supend time invalid format.", "ON/OFF button time - invalid format.",
                "ON/OFF signal time - invalid format." } });
    row("trigger refused with 34",
        { .steps = Steps { "Config_setStartupTriggerConfig=34" } + apply,
            .calls = applied("3) -> 34", "60) -> 0", "4000) -> 0", "4) -> 0"),
            .boxes = { "Start-up trigger not allowed in combination with the button settings. Check Buttons "
                       "tab.\r\nIf the signal is not set as start-up trigger, at least one of the buttons "
                       "must be." } });
    row("other refusals under their labels",
        { .steps = Steps { "Config_setStartupTriggerConfig=7", "Config_setFrontBtnTrigTime=19" } + apply,
            .calls = applied("3) -> 7", "60) -> 0", "4000) -> 19", "4) -> 0"),
            .boxes = { "Error(7) in setStartupTriggerConfig: Communication with the controller failed",
                "Error(19) in setFrontBtnShutDownTrigTime: Hardware fault" } });
    row("failed reads disable their groups",
        { .steps = { "Config_getShortButtonPressAction=7", "Config_getFrontBtnTrigTime=6",
              "Config_getStartupTriggerConfig=2", "tabOnOff.show" },
            .state = { "groupButton_2.enabled=false", "groupButton_3.enabled=false",
                "editButtonPressTime.text=getFrontBtnTrigTime: Error:  Timeout, the controller did not "
                "answer",
                "groupSignal.enabled=true", "groupButton.enabled=false", "comboBox.visible=false" },
            .boxes = { "Error(7) in getShortButtonPressAction: Communication with the controller failed" } });
    row("an unreadable power-on start disables the start-up group",
        { .steps = { "Config_getPowerOnStartup=18", "tabOnOff.show" },
            .state = { "groupButton.enabled=false", "comboBox.currentIndex=2",
                "checkBoxPowerOnStartup.visible=true" },
            .boxes = { "Error(18) in getPowerOnStartup: Value not available" } });
    row("a power-on start the unit lacks hides only its check box",
        { .steps = { "Config_getPowerOnStartup=2", "tabOnOff.show" },
            .state = { "groupButton.enabled=true", "checkBoxPowerOnStartup.visible=false" } });
    row("without suspend: two actions, a stored 2 shows as index 1",
        { .steps = { "tabOnOff.show" },
            .state = { "comboBox_3.count=2", "comboBox_3.currentIndex=1", "comboBox_3.currentText=Shut down",
                "comboBox_4.currentIndex=0", "groupSuspend.visible=false" } });
    row("without suspend: index 1 writes 2, no suspend time",
        { .steps = { "tabOnOff.show", "comboBox_4.currentIndex=1", "pushButton.click" },
            .calls = { "Config_setLongButtonPressAction(2) -> 0", "Config_setShortButtonPressAction(2) -> 0",
                "Config_setOnOffSigAction(2) -> 0", "Config_setStartupTriggerConfig(3) -> 0",
                "Config_setFrontBtnTrigTime(4000) -> 0", "Config_setExtOnOffSigTrigTime(4) -> 0",
                "Config_setPowerOnStartup(1) -> 0" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv,
        [] {
            if (QString::fromLatin1(QTest::currentDataTag()).startsWith(withoutSuspend))
                ZuAuxSim::setValue(QStringLiteral("Unit/SuspendSupported"), 0);
            return new tabOnOffDlg(nullptr);
        },
        QStringLiteral("Config_set"), {}, scenarios);
}
