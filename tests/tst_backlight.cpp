// The "Display" page on the simulated unit: what showing reads, what each
// polling tick does, and what the user's changes write.
#include "pagecheck.h"
#include "tabs/tabBacklightDlg.h"

namespace
{
void scenarios()
{
    const Steps greyed { "checkBoxABLEnable.checked=true", "checkBoxABLSoftTransitions.enabled=false",
        "sliderSensitivity.enabled=false" };
    const Steps shown { "tabBacklight.show" };

    // Showing and an unchanged reading (0, as the form starts) write nothing;
    // a new reading moves the slider, which writes it back once.
    row("show, readings, the user's",
        { .steps = { "Backlight/SoftTransitions=1", "Backlight/RejectWindowSize=9", "Backlight/LedDimming=1",
              "tabBacklight.show", "tabBacklight.refresh", "Backlight/Intensity=120", "Backlight/HWStatus=0",
              "tabBacklight.refresh", "tabBacklight.refresh", "sliderBacklightLevel.value=200" },
            .calls = { "Backlight_setIntensity(120) -> 0", "Backlight_setIntensity(200) -> 0" },
            .state = { "checkBoxABLSoftTransitions.checked=true", "sliderSensitivity.value=9",
                "checkBoxABLEnable.checked=false", "checkBoxLedDim.checked=true", "labelBLLevel.text=200",
                "label_hwstatus1.text=status: ERROR", "timer.interval=500" } });
    row("show running, then hide",
        { .steps = { "Backlight/AutomaticBLStatus=1", "tabBacklight.show", "tabBacklight.hide" },
            .state = greyed + Steps { "timer.active=false" } });
    // Code 2 for the intensity hides its slider without a word; the other
    // failed reads leave the controls as they were.
    const Steps refused { "Backlight_getIntensity=2", "Backlight_getAutomaticBLParams=13",
        "Backlight_getAutomaticBLFilter=4", "Backlight_getAutomaticBLStatus=5", "Backlight_getLedDimming=6" };
    row("reads refused",
        { .steps = refused
                + Steps { "Backlight/AutomaticBLStatus=1", "tabBacklight.show",
                    "label_hwstatus1.text=", "tabBacklight.refresh" },
            .state = { "sliderBacklightLevel.visible=false", "groupBox.visible=false",
                "sliderSensitivity.enabled=true", "label_hwstatus1.text=status: OK", "timer.active=true" },
            .boxes = { "Error(13) in getAutomaticBLParams: Busy, another operation is in progress",
                "Error(4) in getAutomaticBLFilter: Invalid parameter",
                "Error(5) in getAutomaticBLStatus: Buffer too small",
                "Error(6) in getLedDimming: Timeout, the controller did not answer" } });
    row("failing reading stops polling",
        { .steps = { "Backlight_getIntensity=7", "Backlight_getHWStatus=19", "tabBacklight.show",
              "labelBLLevel.text=55", "tabBacklight.refresh" },
            .state = { "labelBLLevel.text=0", "label_hwstatus1.text=Error: 19", "timer.active=false" },
            .boxes = { "Error(7) in getIntensity: Communication with the controller failed" } });
    // The parameters go out when automatic backlight starts, and stay greyed
    // while it is on.
    row("sensitivity 17, soft, on and off",
        { .steps = shown
                + Steps { "sliderSensitivity.value=17", "checkBoxABLSoftTransitions.click",
                    "checkBoxABLEnable.click", "Backlight_stopAutomaticBL=1", "checkBoxABLEnable.click" },
            .calls
            = { "Backlight_setAutomaticBLParams(1) -> 0", "Backlight_setAutomaticBLFilter(4, 17, 80, 2) -> 0",
                "Backlight_startAutomaticBL() -> 0", "Backlight_stopAutomaticBL() -> 1" },
            .state = { "labelKLevel.text=17", "checkBoxABLSoftTransitions.enabled=true",
                "sliderSensitivity.enabled=true" },
            .boxes = { "Error(1) in stopAutomaticBL: Operation failed" } });
    row("failing start still greys",
        { .steps = shown
                + Steps { "Backlight_setAutomaticBLParams=4", "Backlight_startAutomaticBL=19",
                    "checkBoxABLEnable.click" },
            .calls = { "Backlight_setAutomaticBLParams(0) -> 4",
                "Backlight_setAutomaticBLFilter(4, 10, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 19" },
            .state = greyed,
            .boxes = { "Error(4) in setAutomaticBLParams: Invalid parameter",
                "Error(19) in startAutomaticBL: Hardware fault" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabBacklightDlg(nullptr); }, QStringLiteral("Backlight_s"),
        { "Backlight/AutomaticBLStatus=0", "Backlight/SoftTransitions=0", "Backlight/RejectWindowSize=10",
            "Backlight/LedDimming=0", "Backlight/HWStatus=1", "Backlight/Intensity=0" },
        scenarios);
}
