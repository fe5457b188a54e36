// The "Button backlight" page on the simulated unit: showing reads without
// writing back; every change writes the signal and switches the LED on.
#include "pagecheck.h"
#include "simunit.h"
#include "tabLEDDlg.h"

#include <QtTest>

using Steps = QStringList;

class TestLed : public QObject
{
    Q_OBJECT
private slots:
    void scenario_data();
    void scenario();
};

void TestLed::scenario_data()
{
    addScenarioColumns();
    const Steps on { "buttonOff.checked=true", "buttonOff.text=On" };
    const Steps off { "buttonOff.checked=false", "buttonOff.text=Off" };
    const Steps shown { "tabLED.show" };
    const QString signal = QStringLiteral("FrontLED_setSignal(2.5, 0) -> %1");
    const QString dimming = QStringLiteral("Button backlight dimming is active. Changing intensity has no "
                                           "effect.\r\nYou can turn off dimming on the "
                                           "Display tab.");

    // Showing writes nothing back.
    QTest::newRow("show") << Steps { "FrontLED/EnabledDuringStartup=1", "tabLED.show" } << Steps()
                          << off
            + Steps { "tabLED.windowTitle=Button backlight", "groupFrontLED.title=Backlight",
                  "label_8.text=Intensity", "label_7.text=Enable during system start-up",
                  "buttonColorpick.visible=false", "label_customcolor.visible=false",
                  "comboBoxColor.count=16", "comboBoxColor.currentText=12", "sliderFreq.value=25",
                  "labelFreq.text=Freq\n 2.5 Hz", "labelDutyC.text=Duty cycle\n 0% on",
                  "spinBoxPulses.value=3", "spinBoxIdleTime.value=500", "checkEnFrontLED.checked=true" }
                          << Steps();
    QTest::newRow("0.15 Hz shows 0.2 at slider 4")
        << Steps { "FrontLED/SignalFrequency=0.15", "FrontLED/SignalDutyCycle=50", "tabLED.show" } << Steps()
        << on
            + Steps { "sliderFreq.value=4", "labelFreq.text=Freq\n 0.2 Hz", "sliderDutyC.value=50",
                  "labelDutyC.text=Duty cycle\n 50% on" }
        << Steps();
    QTest::newRow("45 Hz shows 30 at slider 300")
        << Steps { "FrontLED/SignalFrequency=45", "tabLED.show" } << Steps()
        << Steps { "sliderFreq.value=300", "labelFreq.text=Freq\n 30 Hz" } << Steps();
    QTest::newRow("rounded to two decimals")
        << Steps { "FrontLED/SignalFrequency=2.346", "tabLED.show" } << Steps()
        << Steps { "sliderFreq.value=23", "labelFreq.text=Freq\n 2.35 Hz" } << Steps();
    QTest::newRow("unsupported values hidden")
        << Steps { "FrontLED/SignalDutyCycle=50", "FrontLED_getSignal=2", "FrontLED_getNrOfPulses=2",
               "FrontLED_getIdleTime=2", "FrontLED_getEnabledDuringStartup=2", "tabLED.show" }
        << Steps()
        << off
            + Steps { "sliderFreq.visible=false", "sliderDutyC.visible=false", "spinBoxPulses.visible=false",
                  "spinBoxIdleTime.visible=false", "groupFrontLED.visible=false" }
        << Steps();
    QTest::newRow("failing reads reported")
        << Steps { "FrontLED/SignalDutyCycle=50", "FrontLED_getSignal=7", "FrontLED_getColor=7",
               "FrontLED_getNrOfPulses=6", "FrontLED_getIdleTime=6", "FrontLED_getEnabledDuringStartup=17",
               "tabLED.show" }
        << Steps()
        << off
            + Steps { "comboBoxColor.currentIndex=15", "sliderFreq.visible=true",
                  "spinBoxPulses.visible=true", "groupFrontLED.visible=true", "groupFrontLED.enabled=false" }
        << Steps { errorBox(7, "getSignal"), errorBox(6, "getNrOfPulses"), errorBox(6, "getIdleTime"),
               errorBox(17, "getEnabledDuringStartup") };

    // Every change switches the dark LED on.
    QTest::newRow("intensity 9") << shown + Steps { "comboBoxColor.currentIndex=9" }
                                 << Steps { "FrontLED_setColor(0, 0, 9) -> 0", signal.arg(0) } << on
                                 << Steps();
    QTest::newRow("intensity with dimming active")
        << shown
            + Steps { "Backlight/LedDimming=1", "comboBoxColor.currentIndex=3",
                  "comboBoxColor.currentIndex=4" }
        << Steps { "FrontLED_setColor(0, 0, 3) -> 0", signal.arg(0), "FrontLED_setColor(0, 0, 4) -> 0",
               signal.arg(0) }
        << on << Steps { dimming, dimming };
    QTest::newRow("intensity refused")
        << shown + Steps { "FrontLED_setColor=4", "FrontLED_setSignal=5", "comboBoxColor.currentIndex=0" }
        << Steps { "FrontLED_setColor(0, 0, 0) -> 4", signal.arg(5) } << on
        << Steps { errorBox(4, "FrontLED_setStandardColor"), errorBox(5, "FrontLED_setSignal") };
    QTest::newRow("frequency") << shown + Steps { "FrontLED_setSignal=5", "sliderFreq.value=7" }
                               << Steps { "FrontLED_setSignal(0.7, 0) -> 5" }
                               << on + Steps { "labelFreq.text=Freq\n 0.7 Hz" }
                               << Steps { errorBox(5, "setSignal") };
    QTest::newRow("duty cycle") << shown + Steps { "sliderDutyC.value=30" }
                                << Steps { "FrontLED_setSignal(2.5, 30) -> 0" }
                                << on + Steps { "labelDutyC.text=Duty cycle\n 30% on" } << Steps();
    QTest::newRow("pulses") << shown + Steps { "FrontLED_setNrOfPulses=4", "spinBoxPulses.value=7" }
                            << Steps { signal.arg(0), "FrontLED_setNrOfPulses(7) -> 4" } << on
                            << Steps { errorBox(4, "setNrOfPulses") };
    QTest::newRow("idle time 250 ms written as 2") << shown
            + Steps { "spinBoxIdleTime.value=250", "FrontLED_setIdleTime=4", "spinBoxIdleTime.value=10000" }
                                                   << Steps { signal.arg(0), "FrontLED_setIdleTime(2) -> 0",
                                                          signal.arg(0), "FrontLED_setIdleTime(100) -> 4" }
                                                   << on << Steps { errorBox(4, "setIdleTime") };
    // Switching on writes the signal without checking the result.
    QTest::newRow("on and off") << shown
            + Steps { "FrontLED_setSignal=4", "buttonOff.click", "buttonOff.click" }
                                << Steps { signal.arg(4), "FrontLED_setOff() -> 0" } << off << Steps();
    QTest::newRow("off refused") << shown
            + Steps { "FrontLED_setOff=7", "buttonOff.click", "buttonOff.click" }
                                 << Steps { signal.arg(0), "FrontLED_setOff() -> 7" } << off
                                 << Steps { errorBox(7, "setOff") };
    QTest::newRow("start-up setting refused")
        << shown
            + Steps { "checkEnFrontLED.click", "FrontLED_setEnabledDuringStartup=13",
                  "checkEnFrontLED.click" }
        << Steps { "FrontLED_setEnabledDuringStartup(1) -> 0", "FrontLED_setEnabledDuringStartup(0) -> 13" }
        << off + Steps { "groupFrontLED.enabled=false" } << Steps { errorBox(13, "setEnabledDuringStartup") };

    // The hidden colour picker, shown again. Picking selects intensity 6,
    // which writes its own colour before the custom colour is read back.
    const Steps pick
        = shown + Steps { "buttonColorpick.show", "label_customcolor.show", "buttonColorpick.click" };
    const Steps picked { "FrontLED_setColor(15, 8, 2) -> 0", "FrontLED_setColor(0, 0, 6) -> 0",
        signal.arg(0) };
    QTest::newRow("colour picked") << pick << picked
                                   << on
            + Steps { "comboBoxColor.currentIndex=6", "label_customcolor.text=R:0 G:0 B:6",
                  "buttonColorpick.styleSheet=* { background-color: rgb(0,0,102) }" }
                                   << Steps();
    QTest::newRow("picked colour unreadable")
        << Steps { "FrontLED_getColor=9" } + pick << picked << Steps { "label_customcolor.text=Undefined" }
        << Steps { errorBox(9, "FrontLED_getColor") };
    QTest::newRow("picked colour unsupported")
        << Steps { "FrontLED_getColor=2" } + pick << picked
        << Steps { "label_customcolor.visible=false",
               "buttonColorpick.styleSheet=* { background-color: qlineargradient(spread:pad, x1:0, y1:0, "
               "x2:0, "
               "y2:1, stop:0 rgba(173, 173, 173, 255), stop:1 rgba(95, 95, 95, 255)) }" }
        << Steps();
}

void TestLed::scenario()
{
    resetUnit(QStringLiteral("full"));
    Dialogs::Recorder recorder;
    recorder.answerColor(QColor(255, 136, 50));
    tabLEDDlg page(nullptr);
    runScenario(page, recorder, QStringLiteral("FrontLED_set"),
        { "FrontLED/SignalFrequency=2.5", "FrontLED/SignalDutyCycle=0", "FrontLED/ColorRed=15",
            "FrontLED/ColorGreen=0", "FrontLED/ColorBlue=12", "FrontLED/NrOfPulses=3", "FrontLED/IdleTime=5",
            "FrontLED/EnabledDuringStartup=0", "Backlight/LedDimming=0" });
    // The temporary handle that asks for the dimming is given back each time.
    QCOMPARE(
        callsTo(QStringLiteral("Backlight_release")).size(), callsTo(QStringLiteral("GetBacklight")).size());
}

QTEST_MAIN(TestLed)
#include "tst_led.moc"
