// The "Button backlight" page on the simulated unit: showing reads without
// writing back; every change writes the signal and switches the LED on.
#include "pagecheck.h"
#include "tabs/tabLEDDlg.h"

namespace
{
void scenarios()
{
    const Steps on { "buttonOff.checked=true", "buttonOff.text=On" };
    const Steps shown { "tabLED.show" };
    const QString signal = QStringLiteral("FrontLED_setSignal(2.5, 0) -> %1");
    // The temporary handle that asks for the dimming is given back each time.
    const Steps dimmingAsked { "GetBacklight()", "Backlight_release()" };

    row("show, 45 Hz as 30 at slider 300",
        { .steps = { "FrontLED/EnabledDuringStartup=1", "FrontLED/SignalFrequency=45", "tabLED.show" },
            .state = { "buttonOff.checked=false", "buttonOff.text=Off", "label_8.text=Intensity",
                "buttonColorpick.visible=false", "comboBoxColor.currentText=12", "sliderFreq.value=300",
                "labelFreq.text=Freq\n 30 Hz", "spinBoxPulses.value=3", "spinBoxIdleTime.value=500",
                "checkEnFrontLED.checked=true" } });
    row("0.15 Hz shows 0.2 at slider 4",
        { .steps = { "FrontLED/SignalFrequency=0.15", "FrontLED/SignalDutyCycle=50", "tabLED.show" },
            .state = on
                + Steps { "sliderFreq.value=4", "labelFreq.text=Freq\n 0.2 Hz",
                    "labelDutyC.text=Duty cycle\n 50% on" } });
    // Code 2 hides a control without a word; other failures are reported.
    row("failing reads",
        { .steps = { "FrontLED_getSignal=2", "FrontLED_getColor=7", "FrontLED_getNrOfPulses=6",
              "FrontLED_getIdleTime=2", "FrontLED_getEnabledDuringStartup=17", "tabLED.show" },
            .state = { "sliderFreq.visible=false", "sliderDutyC.visible=false",
                "comboBoxColor.currentIndex=15", "spinBoxPulses.visible=true",
                "spinBoxIdleTime.visible=false", "groupFrontLED.enabled=false", "labelFreq.visible=false",
                "labelDutyC.visible=false", "label_5.visible=true", "label_4.visible=false" },
            .boxes = { "Error(6) in getNrOfPulses: Timeout, the controller did not answer",
                "Error(17) in getEnabledDuringStartup: EEPROM could not be read" } });

    // Every change switches the dark LED on.
    row("intensity 9, signal, pulses, idle time 250 ms as 2",
        { .steps = shown
                + Steps { "comboBoxColor.currentIndex=9", "sliderFreq.value=7", "FrontLED_setNrOfPulses=4",
                    "spinBoxPulses.value=7", "FrontLED_setIdleTime=6", "spinBoxIdleTime.value=250" },
            .calls = Steps { "FrontLED_setColor(0, 0, 9) -> 0" } + dimmingAsked
                + Steps { signal.arg(0), "FrontLED_setSignal(0.7, 0) -> 0", "FrontLED_setSignal(0.7, 0) -> 0",
                    "FrontLED_setNrOfPulses(7) -> 4", "FrontLED_setSignal(0.7, 0) -> 0",
                    "FrontLED_setIdleTime(2) -> 6" },
            .state = on + Steps { "labelFreq.text=Freq\n 0.7 Hz" },
            .boxes = { "Error(4) in setNrOfPulses: Invalid parameter",
                "Error(6) in setIdleTime: Timeout, the controller did not answer" } });
    row("intensity refused while dimming",
        { .steps = shown
                + Steps { "Backlight/LedDimming=1", "FrontLED_setColor=4", "FrontLED_setSignal=5",
                    "comboBoxColor.currentIndex=3" },
            .calls = Steps { "FrontLED_setColor(0, 0, 3) -> 4" } + dimmingAsked + Steps { signal.arg(5) },
            .state = on,
            .boxes = { "Error(4) in FrontLED_setStandardColor: Invalid parameter",
                "Button backlight dimming is active. Changing intensity has no effect.\r\nYou can turn off "
                "dimming on the Display tab.",
                "Error(5) in FrontLED_setSignal: Buffer too small" } });
    // Switching on writes the signal without checking the result.
    row("on, off and start-up refused",
        { .steps = shown
                + Steps { "FrontLED_setSignal=4", "buttonOff.click", "FrontLED_setOff=7", "buttonOff.click",
                    "FrontLED_setEnabledDuringStartup=13", "checkEnFrontLED.click" },
            .calls = { signal.arg(4), "FrontLED_setOff() -> 7", "FrontLED_setEnabledDuringStartup(1) -> 13" },
            .state = { "buttonOff.checked=false", "buttonOff.text=Off", "groupFrontLED.enabled=false" },
            .boxes = { "Error(7) in setOff: Communication with the controller failed",
                "Error(13) in setEnabledDuringStartup: Busy, another operation is in progress" } });
    // The hidden colour picker, shown again. Picking selects intensity 6,
    // which writes its own colour before the custom colour is read back.
    row("colour picked",
        { .steps
            = { "tabLED.show", "buttonColorpick.show", "Dialogs.color=#ff8832", "buttonColorpick.click" },
            .calls = Steps { "FrontLED_setColor(15, 8, 2) -> 0", "FrontLED_setColor(0, 0, 6) -> 0" }
                + dimmingAsked + Steps { signal.arg(0) },
            .state = on
                + Steps { "label_customcolor.text=R:0 G:0 B:6",
                    "buttonColorpick.styleSheet=* { background-color: rgb(0,0,102) }" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabLEDDlg(nullptr); },
        QStringLiteral("FrontLED_set|GetBacklight|Backlight_release"),
        { "FrontLED/SignalFrequency=2.5", "FrontLED/SignalDutyCycle=0", "FrontLED/ColorBlue=12",
            "FrontLED/NrOfPulses=3", "FrontLED/IdleTime=5", "FrontLED/EnabledDuringStartup=0",
            "Backlight/LedDimming=0" },
        scenarios);
}
