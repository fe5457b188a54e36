// The "I/O" page on the simulated unit: input modes and thresholds as built
// and changed, each mode's reading, and the PWM outputs with the echo of
// their sliders.
#include "pagecheck.h"
#include "tabs/tabIODlg.h"

namespace
{
const QString duty1 = QStringLiteral("PWMOut/PWMOutputChannelDutyCycle_1=");
const QString hertz1 = QStringLiteral("PWMOut/PWMOutputChannelFrequency_1=");

void inputs()
{
    row("built as the unit has it, mode 9 as Not in use, nothing written",
        { .steps
            = { "CfgIn/CfgInMode_1=4", "CfgIn/CfgInMode_2=9", "CfgIn/MinFrequencyThreshold_2=2.5", "build" },
            .state = { "comboBoxCI_1.currentText=Voltage 5V", "comboBoxCI_2.currentIndex=0",
                "comboBoxCI_2.count=9", "doubleSpinBox1.value=1", "doubleSpinBox2.value=2.5" } });
    row("unreadable modes and thresholds when built",
        { .steps = { "CfgIn_getCfgInMode=7", "CfgIn_getMinFrequencyThreshold=6", "build" },
            .state = { "comboBoxCI_1.currentIndex=0" },
            .boxes = { "Error(7) in CfgIn_getCfgInMode: Communication with the controller failed",
                "Error(7) in CfgIn_getCfgInMode: Communication with the controller failed",
                "Error(6) in getMinFrequencyThreshold: Timeout, the controller did not answer",
                "Error(6) in getMinFrequencyThreshold: Timeout, the controller did not answer" } });
    row("changes write at once",
        { .steps = { "comboBoxCI_1.currentIndex=6", "doubleSpinBox2.value=12.5" },
            .calls = { "CfgIn_setCfgInMode(1, 6) -> 0", "CfgIn_setMinFrequencyThreshold(2, 12.5) -> 0" } });
    row("refusals",
        { .steps = { "CfgIn_setCfgInMode=19", "CfgIn_setMinFrequencyThreshold=4",
              "comboBoxCI_2.currentIndex=1", "doubleSpinBox1.value=3" },
            .calls = { "CfgIn_setCfgInMode(2, 1) -> 19", "CfgIn_setMinFrequencyThreshold(1, 3) -> 4" },
            .boxes = { "Error(19) in setCfgInMode: Hardware fault",
                "Error(4) in setMinFrequencyThreshold: Invalid parameter" } });

    // One refresh tick with both inputs in a mode; the readings as the fields show them.
    const Steps tick { "tabIO.updatePWMOutStatus" };
    const struct {
        const char* name;
        Steps unit;
        Steps shown;
        Steps errors;
    } readings[] = {
        { "voltages",
            { "CfgIn/CfgInMode_1=4", "CfgIn/Value_1=25000", "CfgIn/CfgInMode_2=3", "CfgIn/Value_2=12345" },
            { "lineEditCI_1.text=25000 (2.50 V)", "lineEditCI_2.text=12345 (1.23 V)" }, {} },
        { "switches", { "CfgIn/CfgInMode_1=1", "CfgIn/Value_1=1", "CfgIn/CfgInMode_2=2", "CfgIn/Value_2=0" },
            { "lineEditCI_1.text=1", "lineEditCI_2.text=0" }, {} },
        { "resistance, mode 9 shows nothing",
            { "CfgIn/CfgInMode_1=5", "CfgIn/Value_1=4700", "CfgIn/CfgInMode_2=9" },
            { "lineEditCI_1.text=4700 Ohm", "lineEditCI_2.text=" }, {} },
        { "12.34 Hz at 40 %",
            { "CfgIn/CfgInMode_1=7", "CfgIn/PwmFrequency_1=12.34", "CfgIn/PwmDutyCycle_1=40" },
            { "lineEditCI_1.text=12.3 Hz 40 %" }, {} },
        { "value unreadable", { "CfgIn/CfgInMode_1=4", "CfgIn_getValue=7" }, { "lineEditCI_1.text=error!" },
            { "Error(7) in CfgIn_getValue: Communication with the controller failed" } },
        { "frequency unreadable", { "CfgIn/CfgInMode_1=8", "CfgIn_getPwmValue=6" },
            { "lineEditCI_1.text=error!" },
            { "Error(6) in CfgIn_getPwmValue: Timeout, the controller did not answer" } },
    };
    for (const auto& reading : readings)
        row(QLatin1String("reading: ") + reading.name,
            { .steps = reading.unit + tick, .state = reading.shown, .boxes = reading.errors });
    row("reading: Not in use clears the field",
        { .steps = Steps { "CfgIn/CfgInMode_2=5", "CfgIn/Value_2=330", "build" } + tick
                + Steps { "comboBoxCI_2.currentIndex=0" } + tick,
            .calls = { "CfgIn_setCfgInMode(2, 0) -> 0" },
            .state = { "lineEditCI_2.text=" } });
    row("reading: mode unreadable leaves the fields",
        { .steps = Steps { "CfgIn/CfgInMode_1=5", "CfgIn/Value_1=330" } + tick
                + Steps { "CfgIn_getCfgInMode=7" } + tick,
            .state = { "lineEditCI_1.text=330 Ohm" },
            .boxes = { "Error(7) in getCfgInMode: Communication with the controller failed",
                "Error(7) in getCfgInMode: Communication with the controller failed" } });
}

void outputs()
{
    // A slider set from a reading writes the whole hertz back.
    row("shown: channel 1 with the echo of its sliders",
        { .steps = { duty1 + "40", hertz1 + "250.5", "tabIO.show" },
            .calls = { "PWMOut_setPWMOutputChannelDutyCycle(1, 40) -> 0",
                "PWMOut_setPWMOutputChannelFrequency(1, 250) -> 0" },
            .state = { "sliderDC.value=40", "labelDC_Value.text=40 %", "labelDC_Value.visible=true",
                "sliderHZ.value=250", "labelHZ_Value.text=250 Hz", "labelHZ_Value.visible=true",
                "timer.active=true", "timer.interval=500" } });
    row("duty 0 and 0.0 Hz hide both values",
        { .steps = { duty1 + "30", hertz1 + "100", "tabIO.show", duty1 + "0", hertz1 + "0",
              "tabIO.updatePWMOutStatus" },
            .calls = { "PWMOut_setPWMOutputChannelDutyCycle(1, 30) -> 0",
                "PWMOut_setPWMOutputChannelFrequency(1, 100) -> 0",
                "PWMOut_setPWMOutputChannelDutyCycle(1, 0) -> 0",
                "PWMOut_setPWMOutputChannelFrequency(1, 0) -> 0" },
            .state = { "sliderDC.value=0", "labelDC_Value.visible=false", "sliderHZ.value=0",
                "labelHZ_Value.visible=false" } });
    row("PWM 2 leaves channel 1 alone",
        { .steps = { duty1 + "10", "PWMOut/PWMOutputChannelDutyCycle_2=75",
              "PWMOut/PWMOutputChannelFrequency_2=1000", "tabIO.show", "checkBox_PWM2.click",
              "sliderDC.value=60", "sliderHZ.value=4000" },
            .calls = { "PWMOut_setPWMOutputChannelDutyCycle(1, 10) -> 0",
                "PWMOut_setPWMOutputChannelDutyCycle(2, 75) -> 0",
                "PWMOut_setPWMOutputChannelFrequency(2, 1000) -> 0",
                "PWMOut_setPWMOutputChannelDutyCycle(2, 60) -> 0",
                "PWMOut_setPWMOutputChannelFrequency(2, 4000) -> 0" },
            .state
            = { "checkBox_PWM1.checked=false", "labelDC_Value.text=60 %", "labelHZ_Value.text=4000 Hz" } });
    row("Off shows what the output does then",
        { .steps = { duty1 + "40", "tabIO.show", "pwmOffButton.click" },
            .calls = { "PWMOut_setPWMOutputChannelDutyCycle(1, 40) -> 0", "PWMOut_setPWMOutOff(1) -> 0",
                "PWMOut_setPWMOutputChannelDutyCycle(1, 0) -> 0" },
            .state = { "sliderDC.value=0", "labelDC_Value.visible=false" } });
    row("refusals under their names",
        { .steps = { "PWMOut_setPWMOutOff=19", "PWMOut_setPWMOutputChannelDutyCycle=7",
              "PWMOut_setPWMOutputChannelFrequency=4", "tabIO.show", "pwmOffButton.click",
              "sliderDC.value=20", "sliderHZ.value=900" },
            .calls = { "PWMOut_setPWMOutOff(1) -> 19", "PWMOut_setPWMOutputChannelDutyCycle(1, 20) -> 7",
                "PWMOut_setPWMOutputChannelFrequency(1, 900) -> 4" },
            .state = { "labelDC_Value.visible=false" },
            .boxes = { "Error(19) in setPWMOff: Hardware fault",
                "Error(7) in setPWMOutputChannelDutyCycle: Communication with the controller failed",
                "Error(4) in setPWMOutputChannelFrequency: Invalid parameter" } });
    row("unreadable frequency told as the duty cycle",
        { .steps = { "PWMOut_getPWMOutputChannelFrequency=7", "tabIO.show" },
            .boxes
            = { "Error(7) in getPWMOutputChannelDutyCycle: Communication with the controller failed" } });
    row("fault pictures",
        { .steps = { "PWMOut/PWMOutputStatus=2", "tabIO.show", "tabIO.updatePWMOutStatus" },
            .state = { "fail_1.toolTip=No fault", "fail_2.toolTip=Output fault" } });
    row("unreadable status stops polling until shown again",
        { .steps = { "tabIO.show", "PWMOut_getPWMOutputStatus=7", "tabIO.updatePWMOutStatus" },
            .state = { "timer.active=false", "fail_1.toolTip=" },
            .boxes = { "Error(7) in getPWMOutputStatus: Communication with the controller failed" } });
    row("polling again on the next showing",
        { .steps = { "tabIO.show", "PWMOut_getPWMOutputStatus=7", "tabIO.updatePWMOutStatus", "tabIO.hide",
              "tabIO.show" },
            .state = { "timer.active=true" },
            .boxes = { "Error(7) in getPWMOutputStatus: Communication with the controller failed" } });
}

void scenarios()
{
    inputs();
    outputs();
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabIODlg(nullptr); }, QStringLiteral("CfgIn_set|PWMOut_set"), {},
        scenarios);
}
