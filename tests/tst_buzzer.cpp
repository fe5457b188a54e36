// The "Buzzer" page on the simulated unit: clamped readings that write back,
// and the writes of the user's changes.
#include "pagecheck.h"
#include "simunit.h"
#include "tabBuzzerDlg.h"

#include <QtTest>

using Steps = QStringList;

class TestBuzzer : public QObject
{
    Q_OBJECT
private slots:
    void scenario_data();
    void scenario();
};

void TestBuzzer::scenario_data()
{
    addScenarioColumns();
    // Once shown, the controls match the unit: showing again writes nothing.
    const Steps twice { "tabBuzzer.show", "tabBuzzer.hide", "tabBuzzer.show" };

    QTest::newRow("in range") << twice
                              << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(30) -> 0" }
                              << Steps { "tabBuzzer.windowTitle=Buzzer", "sliderFreq.value=2000",
                                     "labelFreq.text=Freq\n 2000 Hz", "sliderVol.value=30",
                                     "labelVolume.text=Volume\n 30", "buttonOn.checked=false",
                                     "buttonOn.text=Off" }
                              << Steps();
    QTest::newRow("volume 60 shows and writes 51")
        << Steps { "Buzzer/Volume=60", "tabBuzzer.show" }
        << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(51) -> 0" }
        << Steps { "sliderVol.value=51", "labelVolume.text=Volume\n 51" } << Steps();
    QTest::newRow("frequency 500 shows 700, writes nothing")
        << Steps { "Buzzer/Frequency=500", "Buzzer/Volume=0" } + twice << Steps()
        << Steps { "sliderFreq.value=700", "labelFreq.text=Freq\n 700 Hz" } << Steps();
    QTest::newRow("frequency 12000 set to 10000")
        << Steps { "Buzzer/Frequency=12000", "Buzzer/Volume=0" } + twice
        << Steps { "Buzzer_setFrequency(10000) -> 0" }
        << Steps { "sliderFreq.value=10000", "labelFreq.text=Freq\n 10000 Hz" } << Steps();
    QTest::newRow("sounding") << Steps { "Buzzer/Frequency=700", "Buzzer/Volume=0", "Buzzer/Trigger=1" }
            + twice << Steps { "Buzzer_setTrigger(1) -> 0" }
                              << Steps { "buttonOn.checked=true", "buttonOn.text=On" } << Steps();
    QTest::newRow("unsupported values hidden")
        << Steps { "Buzzer_getFrequency=2", "Buzzer_getVolume=2", "Buzzer_getTrigger=2", "tabBuzzer.show" }
        << Steps()
        << Steps { "sliderFreq.visible=false", "sliderVol.visible=false", "buttonOn.visible=false" }
        << Steps();
    QTest::newRow("failing reads reported")
        << Steps { "Buzzer_getFrequency=6", "Buzzer_getVolume=7", "Buzzer_getTrigger=8", "tabBuzzer.show" }
        << Steps() << Steps { "sliderFreq.visible=true", "sliderVol.visible=true", "buttonOn.visible=true" }
        << Steps { errorBox(6, "getFrequency"), errorBox(7, "getVolume"), errorBox(8, "getTrigger") };

    QTest::newRow("frequency refused")
        << Steps { "tabBuzzer.show", "Buzzer_setFrequency=4", "sliderFreq.value=4510" }
        << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(30) -> 0",
               "Buzzer_setFrequency(4510) -> 4" }
        << Steps { "labelFreq.text=Freq\n 4510 Hz" } << Steps { errorBox(4, "setFrequency") };
    QTest::newRow("volume refused") << Steps { "tabBuzzer.show", "Buzzer_setVolume=7", "sliderVol.value=0" }
                                    << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(30) -> 0",
                                           "Buzzer_setVolume(0) -> 7" }
                                    << Steps { "labelVolume.text=Volume\n 0" }
                                    << Steps { errorBox(7, "setVolume") };
    QTest::newRow("on and off") << Steps { "Buzzer/Volume=0", "tabBuzzer.show", "buttonOn.click",
        "buttonOn.click" }
                                << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setTrigger(1) -> 0",
                                       "Buzzer_setTrigger(0) -> 0" }
                                << Steps { "buttonOn.checked=false", "buttonOn.text=Off" } << Steps();
    // The button stays where the user put it, with its old caption.
    QTest::newRow("trigger refused") << Steps { "Buzzer/Volume=0", "tabBuzzer.show", "Buzzer_setTrigger=15",
        "buttonOn.click" } << Steps { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setTrigger(1) -> 15" }
                                     << Steps { "buttonOn.checked=true", "buttonOn.text=Off" }
                                     << Steps { errorBox(15, "setTrigger") };
}

void TestBuzzer::scenario()
{
    resetUnit(QStringLiteral("full"));
    Dialogs::Recorder recorder;
    tabBuzzerDlg page(nullptr);
    runScenario(page, recorder, QStringLiteral("Buzzer_set"),
        { "Buzzer/Frequency=2000", "Buzzer/Volume=30", "Buzzer/Trigger=0" });
}

QTEST_MAIN(TestBuzzer)
#include "tst_buzzer.moc"
