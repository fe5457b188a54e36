// The "Light sensor" page on the simulated unit: the trial start on showing,
// the busy sensor, the reading and when it stops.
#include "pagecheck.h"
#include "simunit.h"
#include "tabLightSensorDlg.h"

#include <QtTest>

using Steps = QStringList;

class TestLightSensor : public QObject
{
    Q_OBJECT
private slots:
    void scenario_data();
    void scenario();
};

void TestLightSensor::scenario_data()
{
    addScenarioColumns();
    const QString start = QStringLiteral("Lightsensor_startAverageCalc(1, 0, 100, 0) -> %1");
    const QString stop = QStringLiteral("Lightsensor_stopAverageCalc() -> 0");
    const Steps running { "pushButtonOn.checked=true", "pushButtonOn.text=On", "timer.active=true" };
    const Steps stopped { "pushButtonOn.checked=false", "pushButtonOn.text=Off", "timer.active=false",
        "editIlumination.text=Light Sensor is not running" };
    const Steps shown { "tabLightSensor.show" };
    const Steps tick { "tabLightSensor.show", "tabLightSensor.updateIlluminance" };

    QTest::newRow("free sensor starts on showing") << shown << Steps { start.arg(0), stop, start.arg(0) }
                                                   << running
            + Steps { "pushButtonOn.enabled=true", "tabLightSensor.windowTitle=Light sensor",
                  "editIlumination.text=Light Sensor is not running", "timer.interval=500" }
                                                   << Steps();
    QTest::newRow("held by the automatic backlight")
        << Steps { "Backlight/AutomaticBLStatus=1", "tabLightSensor.show" } << Steps { start.arg(20) }
        << stopped
            + Steps { "pushButtonOn.enabled=false",
                  "pushButtonOn.toolTip=Cannot be started when automatic backlight is running" }
        << Steps { "Error(20) in startAverageCalc.\r\nThe light sensor cannot be started when automatic "
                   "backlight is "
                   "running.\r\nError: "
               + QString::fromLatin1(Korvane::GetErrorStringA(Korvane::ERR_SENSOR_BUSY)) };
    QTest::newRow("other start failure")
        << Steps { "Lightsensor_startAverageCalc=7", "tabLightSensor.show" } << Steps { start.arg(7) }
        << stopped + Steps { "pushButtonOn.enabled=false", "pushButtonOn.toolTip=Error: startAverageCalc" }
        << Steps { errorBox(7, "startAverageCalc") };
    QTest::newRow("next showing tries again")
        << Steps { "Backlight/AutomaticBLStatus=1", "tabLightSensor.show", "tabLightSensor.hide",
               "Backlight/AutomaticBLStatus=0", "tabLightSensor.show" }
        << Steps { start.arg(20), stop, start.arg(0), stop, start.arg(0) }
        << running + Steps { "pushButtonOn.enabled=true", "pushButtonOn.toolTip=" }
        << Steps { QStringLiteral("Error(20) in startAverageCalc.\r\nThe light sensor cannot be started when "
                                  "automatic backlight is running.\r\nError: ")
               + QString::fromLatin1(Korvane::GetErrorStringA(Korvane::ERR_SENSOR_BUSY)) };
    QTest::newRow("hide stops once") << tick + Steps { "tabLightSensor.hide" }
                                     << Steps { start.arg(0), stop, start.arg(0), stop } << stopped
                                     << Steps();

    QTest::newRow("reading") << tick << Steps { start.arg(0), stop, start.arg(0) }
                             << running + Steps { "editIlumination.text=350 Lux, Range standard" } << Steps();
    QTest::newRow("range 5") << Steps { "Lightsensor/OperatingRange=5" } + tick
                             << Steps { start.arg(0), stop, start.arg(0) }
                             << Steps { "editIlumination.text=350 Lux, Unknown range" } << Steps();
    QTest::newRow("unsupported illuminance hides the reading")
        << Steps { "Lightsensor/OperatingRange=1", "Lightsensor_getAverageIlluminance=2" } + tick
        << Steps { start.arg(0), stop, start.arg(0) }
        << running + Steps { "groupBoxLightsensor.visible=false", "editIlumination.text=Range extended" }
        << Steps();
    QTest::newRow("illuminance failure stops") << Steps { "Lightsensor_getAverageIlluminance=6" } + tick
                                               << Steps { start.arg(0), stop, start.arg(0), stop } << stopped
                                               << Steps { errorBox(6, "getIlluminance") };
    QTest::newRow("range failure stops") << Steps { "Lightsensor_getOperatingRange=7" } + tick
                                         << Steps { start.arg(0), stop, start.arg(0), stop } << stopped
                                         << Steps { errorBox(7, "getOperatingRange") };
    // Writing the text again would put the cursor at its end.
    QTest::newRow("unchanged reading rewrites nothing")
        << tick + Steps { "editIlumination.cursorPosition=2", "tabLightSensor.updateIlluminance" }
        << Steps { start.arg(0), stop, start.arg(0) } << Steps { "editIlumination.cursorPosition=2" }
        << Steps();
    QTest::newRow("changed reading rewritten")
        << tick + Steps { "Lightsensor/AverageIlluminance=351", "tabLightSensor.updateIlluminance" }
        << Steps { start.arg(0), stop, start.arg(0) }
        << Steps { "editIlumination.text=351 Lux, Range standard" } << Steps();

    // Settings changed while running wait for the next start.
    QTest::newRow("restart in auto range") << shown
            + Steps { "comboBoxSamplingsMode.currentIndex=2", "spinBoxAverageWndSize.value=99",
                  "spinBoxRejectWndSize.value=3", "spinBoxRejectDelta.value=65000", "pushButtonOn.click",
                  "pushButtonOn.click" }
                                           << Steps { start.arg(0), stop, start.arg(0), stop,
                                                  "Lightsensor_startAverageCalc(99, 3, 65000, 2) -> 0" }
                                           << running << Steps();
    QTest::newRow("refused start by the button")
        << shown
            + Steps { "pushButtonOn.click", "comboBoxSamplingsMode.currentIndex=1",
                  "Lightsensor_startAverageCalc=6", "pushButtonOn.click" }
        << Steps { start.arg(0), stop, start.arg(0), stop, "Lightsensor_startAverageCalc(1, 0, 100, 1) -> 6" }
        << stopped << Steps { errorBox(6, "startAverageCalc") };
}

void TestLightSensor::scenario()
{
    resetUnit(QStringLiteral("full"));
    Dialogs::Recorder recorder;
    tabLightSensorDlg page(nullptr);
    runScenario(page, recorder, QStringLiteral("Lightsensor_s"),
        { "Backlight/AutomaticBLStatus=0", "Lightsensor/OperatingRange=0",
            "Lightsensor/AverageIlluminance=350" });
}

QTEST_MAIN(TestLightSensor)
#include "tst_lightsensor.moc"
