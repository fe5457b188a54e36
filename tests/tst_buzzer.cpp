// The "Buzzer" page on the simulated unit: clamped readings that write back,
// and the writes of the user's changes.
#include "pagecheck.h"
#include "tabs/tabBuzzerDlg.h"

namespace
{
void scenarios()
{
    QTest::newRow("volume 60 shows and writes 51")
        << Steps { "Buzzer/Volume=60", "Buzzer/Trigger=1", "tabBuzzer.show" }
        << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(51) -> 0",
               "Buzzer_setTrigger(1) -> 0" }
        << Steps { "sliderVol.value=51", "labelVolume.text=Volume\n 51", "labelFreq.text=Freq\n 2000 Hz",
               "buttonOn.checked=true", "buttonOn.text=On" }
        << Steps();
    // The second showing finds the controls matching the unit.
    QTest::newRow("frequency 500 shows 700, writes nothing")
        << Steps { "Buzzer/Frequency=500", "Buzzer/Volume=0", "tabBuzzer.show", "tabBuzzer.hide",
               "tabBuzzer.show" }
        << Steps() << Steps { "sliderFreq.value=700", "labelFreq.text=Freq\n 700 Hz", "buttonOn.text=Off" }
        << Steps();
    QTest::newRow("no trigger, volume unreadable")
        << Steps { "Buzzer_getFrequency=2", "Buzzer_getVolume=7", "Buzzer_getTrigger=2", "tabBuzzer.show" }
        << Steps() << Steps { "sliderFreq.visible=false", "sliderVol.visible=true", "buttonOn.visible=false" }
        << Steps { errorBox(7, "getVolume") };
    // A refused switch leaves the button as the user put it, with its old caption.
    QTest::newRow("on, then off refused")
        << Steps { "Buzzer/Volume=0", "tabBuzzer.show", "buttonOn.click", "Buzzer_setTrigger=15",
               "buttonOn.click" }
        << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setTrigger(1) -> 0",
               "Buzzer_setTrigger(0) -> 15" }
        << Steps { "buttonOn.checked=false", "buttonOn.text=On" } << Steps { errorBox(15, "setTrigger") };
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabBuzzerDlg(nullptr); }, QStringLiteral("Buzzer_set"),
        { "Buzzer/Frequency=2000", "Buzzer/Volume=30", "Buzzer/Trigger=0" }, scenarios);
}
