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
    QTest::newRow("show, readings, the user's")
        << Steps { "Backlight/SoftTransitions=1", "Backlight/RejectWindowSize=9", "Backlight/LedDimming=1",
               "tabBacklight.show", "tabBacklight.refresh", "Backlight/Intensity=120", "Backlight/HWStatus=0",
               "tabBacklight.refresh", "tabBacklight.refresh", "sliderBacklightLevel.value=200" }
        << Steps { "Backlight_setIntensity(120) -> 0", "Backlight_setIntensity(200) -> 0" }
        << Steps { "checkBoxABLSoftTransitions.checked=true", "sliderSensitivity.value=9",
               "checkBoxABLEnable.checked=false", "checkBoxLedDim.checked=true", "labelBLLevel.text=200",
               "label_hwstatus1.text=status: ERROR", "timer.interval=500" }
        << Steps();
    QTest::newRow("show running, then hide")
        << Steps { "Backlight/AutomaticBLStatus=1", "tabBacklight.show", "tabBacklight.hide" } << Steps()
        << greyed + Steps { "timer.active=false" } << Steps();
    // Code 2 for the intensity hides its slider without a word; the other
    // failed reads leave the controls as they were.
    const Steps refused { "Backlight_getIntensity=2", "Backlight_getAutomaticBLParams=13",
        "Backlight_getAutomaticBLFilter=4", "Backlight_getAutomaticBLStatus=5", "Backlight_getLedDimming=6" };
    QTest::newRow("reads refused") << refused
            + Steps { "Backlight/AutomaticBLStatus=1", "tabBacklight.show",
                  "label_hwstatus1.text=", "tabBacklight.refresh" }
                                   << Steps()
                                   << Steps { "sliderBacklightLevel.visible=false",
                                          "sliderSensitivity.enabled=true", "label_hwstatus1.text=status: OK",
                                          "timer.active=true" }
                                   << Steps { errorBox(13, "getAutomaticBLParams"),
                                          errorBox(4, "getAutomaticBLFilter"),
                                          errorBox(5, "getAutomaticBLStatus"), errorBox(6, "getLedDimming") };
    QTest::newRow("failing reading stops polling")
        << Steps { "Backlight_getIntensity=7", "Backlight_getHWStatus=19", "tabBacklight.show",
               "labelBLLevel.text=55", "tabBacklight.refresh" }
        << Steps() << Steps { "labelBLLevel.text=0", "label_hwstatus1.text=Error: 19", "timer.active=false" }
        << Steps { errorBox(7, "getIntensity") };
    // The parameters go out when automatic backlight starts, and stay greyed
    // while it is on.
    QTest::newRow("sensitivity 17, soft, on and off")
        << shown
            + Steps { "sliderSensitivity.value=17", "checkBoxABLSoftTransitions.click",
                  "checkBoxABLEnable.click", "Backlight_stopAutomaticBL=1", "checkBoxABLEnable.click" }
        << Steps { "Backlight_setAutomaticBLParams(1) -> 0",
               "Backlight_setAutomaticBLFilter(4, 17, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 0",
               "Backlight_stopAutomaticBL() -> 1" }
        << Steps { "labelKLevel.text=17", "checkBoxABLSoftTransitions.enabled=true",
               "sliderSensitivity.enabled=true" }
        << Steps { errorBox(1, "stopAutomaticBL") };
    QTest::newRow("failing start still greys")
        << shown
            + Steps { "Backlight_setAutomaticBLParams=4", "Backlight_startAutomaticBL=19",
                  "checkBoxABLEnable.click" }
        << Steps { "Backlight_setAutomaticBLParams(0) -> 4",
               "Backlight_setAutomaticBLFilter(4, 10, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 19" }
        << greyed << Steps { errorBox(4, "setAutomaticBLParams"), errorBox(19, "startAutomaticBL") };
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
