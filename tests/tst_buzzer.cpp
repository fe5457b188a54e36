// The "Buzzer" page on the simulated unit: clamped readings that write back,
// and the writes of the user's changes.
#include "pagecheck.h"
#include "tabs/tabBuzzerDlg.h"

namespace
{
void scenarios()
{
    row("volume 60 shows and writes 51",
        { .steps = { "Buzzer/Volume=60", "Buzzer/Trigger=1", "tabBuzzer.show" },
            .calls
            = { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(51) -> 0", "Buzzer_setTrigger(1) -> 0" },
            .state = { "sliderVol.value=51", "labelVolume.text=Volume\n 51", "labelFreq.text=Freq\n 2000 Hz",
                "buttonOn.checked=true", "buttonOn.text=On" } });
    // The second showing finds the controls matching the unit.
    row("frequency 500 shows 700, writes nothing",
        { .steps = { "Buzzer/Frequency=500", "Buzzer/Volume=0", "tabBuzzer.show", "tabBuzzer.hide",
              "tabBuzzer.show" },
            .state = { "sliderFreq.value=700", "labelFreq.text=Freq\n 700 Hz", "buttonOn.text=Off" } });
    row("no trigger, volume unreadable",
        { .steps = { "Buzzer_getFrequency=2", "Buzzer_getVolume=7", "Buzzer_getTrigger=2", "tabBuzzer.show" },
            .state = { "sliderFreq.visible=false", "labelFreq.visible=false", "sliderVol.visible=true",
                "labelVolume.visible=true", "buttonOn.visible=false", "groupBox.visible=true" },
            .boxes = { "Error(7) in getVolume: Communication with the controller failed" } });
    // Nothing left to set: no empty group with its title.
    row("no buzzer controls",
        { .steps = { "Buzzer_getFrequency=2", "Buzzer_getVolume=2", "Buzzer_getTrigger=2", "tabBuzzer.show" },
            .state = { "labelVolume.visible=false", "groupBox.visible=false" } });
    // A refused switch leaves the button as the user put it, with its old caption.
    row("on, then off refused",
        { .steps = { "Buzzer/Volume=0", "tabBuzzer.show", "buttonOn.click", "Buzzer_setTrigger=15",
              "buttonOn.click" },
            .calls
            = { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setTrigger(1) -> 0", "Buzzer_setTrigger(0) -> 15" },
            .state = { "buttonOn.checked=false", "buttonOn.text=On" },
            .boxes = { "Error(15) in setTrigger: Access denied" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabBuzzerDlg(nullptr); }, QStringLiteral("Buzzer_set"),
        { "Buzzer/Frequency=2000", "Buzzer/Volume=30", "Buzzer/Trigger=0" }, scenarios);
}
