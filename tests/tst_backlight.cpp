// The "Display" page on the simulated unit: what showing reads, what each
// polling tick does, and what the user's changes write.
#include "pagecheck.h"
#include "simunit.h"
#include "tabBacklightDlg.h"

#include <QtTest>

using Steps = QStringList;

class TestBacklight : public QObject
{
    Q_OBJECT
private slots:
    void scenario_data();
    void scenario();
};

void TestBacklight::scenario_data()
{
    addScenarioColumns();
    const QString tip = QStringLiteral("Change the reject window size");
    const Steps greyed { "checkBoxABLEnable.checked=true", "checkBoxABLSoftTransitions.enabled=false",
        "sliderSensitivity.enabled=false" };
    const Steps start { "Backlight_setAutomaticBLParams(0) -> 0",
        "Backlight_setAutomaticBLFilter(4, 10, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 0" };

    // Showing only reads: no setter, no start or stop.
    QTest::newRow("show stopped")
        << Steps { "Backlight/SoftTransitions=1", "Backlight/RejectWindowSize=9", "Backlight/LedDimming=1",
               "tabBacklight.show" }
        << Steps()
        << Steps { "tabBacklight.windowTitle=Display", "groupBox_3.title=Button backlight dimming",
               "label_hwstatus0.toolTip=" + tip, "label_hwstatus1.toolTip=" + tip,
               "label_hwstatus1.text=status:   ", "sliderSensitivity.toolTip=" + tip,
               "checkBoxABLSoftTransitions.checked=true", "checkBoxABLSoftTransitions.enabled=true",
               "sliderSensitivity.value=9", "labelKLevel.text=9", "checkBoxABLEnable.checked=false",
               "checkBoxLedDim.checked=true", "timer.active=true", "timer.interval=500" }
        << Steps();
    QTest::newRow("show running") << Steps { "Backlight/AutomaticBLStatus=1", "Backlight/RejectWindowSize=40",
        "tabBacklight.show" } << Steps()
                                  << greyed + Steps { "sliderSensitivity.value=17" } << Steps();
    QTest::newRow("show unreadable")
        << Steps { "Backlight/SoftTransitions=1", "Backlight/LedDimming=1", "Backlight/AutomaticBLStatus=1",
               "Backlight_getAutomaticBLParams=13", "Backlight_getAutomaticBLFilter=4",
               "Backlight_getAutomaticBLStatus=5", "Backlight_getLedDimming=6", "tabBacklight.show" }
        << Steps()
        << Steps { "checkBoxABLSoftTransitions.checked=false", "sliderSensitivity.value=2",
               "labelKLevel.text=0", "checkBoxABLEnable.checked=false", "sliderSensitivity.enabled=true",
               "checkBoxLedDim.checked=false" }
        << Steps { errorBox(13, "getAutomaticBLParams"), errorBox(4, "getAutomaticBLFilter"),
               errorBox(5, "getAutomaticBLStatus"), errorBox(6, "getLedDimming") };
    QTest::newRow("hidden page does not poll") << Steps { "tabBacklight.show", "tabBacklight.hide" }
                                               << Steps() << Steps { "timer.active=false" } << Steps();

    // Polling: a new reading is shown and written back; an unchanged one
    // touches nothing.
    QTest::newRow("tick with new reading") << Steps { "Backlight/Intensity=120", "tabBacklight.show",
        "tabBacklight.refresh", "tabBacklight.refresh" }
                                           << Steps { "Backlight_setIntensity(120) -> 0" }
                                           << Steps { "sliderBacklightLevel.value=120",
                                                  "labelBLLevel.text=120", "label_hwstatus1.text=status: OK" }
                                           << Steps();
    QTest::newRow("tick at zero") << Steps { "Backlight/HWStatus=0", "tabBacklight.show",
        "tabBacklight.refresh" } << Steps()
                                  << Steps { "labelBLLevel.text=0", "label_hwstatus1.text=status: ERROR" }
                                  << Steps();
    QTest::newRow("tick unsupported") << Steps { "Backlight/Intensity=120", "Backlight_getIntensity=2",
        "Backlight_getHWStatus=2", "tabBacklight.show", "labelKLevel.text=", "tabBacklight.refresh" }
                                      << Steps()
                                      << Steps { "sliderBacklightLevel.visible=false", "labelKLevel.text=10",
                                             "label_hwstatus1.text=status:   ", "timer.active=true" }
                                      << Steps();
    QTest::newRow("tick failing stops polling")
        << Steps { "Backlight/Intensity=120", "Backlight_getIntensity=7", "Backlight_getHWStatus=19",
               "tabBacklight.show", "tabBacklight.refresh" }
        << Steps() << Steps { "labelBLLevel.text=0", "label_hwstatus1.text=Error: 19", "timer.active=false" }
        << Steps { errorBox(7, "getIntensity") };
    QTest::newRow("polling again on the next showing")
        << Steps { "Backlight_getIntensity=7", "tabBacklight.show", "tabBacklight.refresh",
               "tabBacklight.hide", "tabBacklight.show" }
        << Steps() << Steps { "timer.active=true" } << Steps { errorBox(7, "getIntensity") };

    // The user's changes.
    QTest::newRow("intensity") << Steps { "tabBacklight.show", "sliderBacklightLevel.value=200" }
                               << Steps { "Backlight_setIntensity(200) -> 0" }
                               << Steps { "labelBLLevel.text=200" } << Steps();
    QTest::newRow("start with sensitivity 17, soft")
        << Steps { "tabBacklight.show", "sliderSensitivity.value=17", "checkBoxABLSoftTransitions.click",
               "checkBoxABLEnable.click" }
        << Steps { "Backlight_setAutomaticBLParams(1) -> 0",
               "Backlight_setAutomaticBLFilter(4, 17, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 0" }
        << greyed + Steps { "labelKLevel.text=17" } << Steps();
    QTest::newRow("failing start still greys")
        << Steps { "tabBacklight.show", "Backlight_startAutomaticBL=19", "checkBoxABLEnable.click" }
        << Steps { start[0], start[1], "Backlight_startAutomaticBL() -> 19" } << greyed
        << Steps { errorBox(19, "startAutomaticBL") };
    QTest::newRow("failing parameters, filter still sent")
        << Steps { "tabBacklight.show", "Backlight_setAutomaticBLParams=4", "checkBoxABLEnable.click" }
        << Steps { "Backlight_setAutomaticBLParams(0) -> 4", start[1], start[2] } << greyed
        << Steps { errorBox(4, "setAutomaticBLParams") };
    QTest::newRow("stop gives the parameters back")
        << Steps { "tabBacklight.show", "checkBoxABLEnable.click", "Backlight_stopAutomaticBL=1",
               "checkBoxABLEnable.click" }
        << start + Steps { "Backlight_stopAutomaticBL() -> 1" }
        << Steps { "checkBoxABLSoftTransitions.enabled=true", "sliderSensitivity.enabled=true" }
        << Steps { errorBox(1, "stopAutomaticBL") };
    QTest::newRow("dimming on and off, refused")
        << Steps { "tabBacklight.show", "Backlight_setLedDimming=15", "checkBoxLedDim.click",
               "checkBoxLedDim.click" }
        << Steps { "Backlight_setLedDimming(1) -> 15", "Backlight_setLedDimming(0) -> 15" } << Steps()
        << Steps { errorBox(15, "setLedDimming"), errorBox(15, "setLedDimming") };
}

void TestBacklight::scenario()
{
    resetUnit(QStringLiteral("full"));
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    runScenario(page, recorder, QStringLiteral("Backlight_s"),
        { "Backlight/AutomaticBLStatus=0", "Backlight/SoftTransitions=0", "Backlight/RejectWindowSize=10",
            "Backlight/LedDimming=0", "Backlight/HWStatus=1", "Backlight/Intensity=0" });
}

QTEST_MAIN(TestBacklight)
#include "tst_backlight.moc"
