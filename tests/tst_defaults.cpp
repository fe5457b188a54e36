#include "Dialogs.h"
#include "WriteDefaultValues.h"
#include "simunit.h"
#include "zuaux2.h"

#include <QTest>

using namespace Korvane;

namespace
{

void put(const QString& key, const QVariant& value)
{
    ZuAuxSim::setValue(key, value);
    ZuAuxSim::hold(key, value);
}

void inventory(int can, int video, int buttons, int cfgIn, int pwm)
{
    put("About/NrOfCANConnections", can);
    put("About/NrOfVideoConnections", video);
    put("About/NrOfButtons", buttons);
    put("About/NrOfCfgInConnections", cfgIn);
    put("About/NrOfPWMOutConnections", pwm);
}

QString errorBox(int code, const char* where)
{
    return QStringLiteral("Error(%1) in %2: %3")
        .arg(code)
        .arg(QLatin1String(where))
        .arg(QString::fromLatin1(GetErrorStringA(static_cast<eErr>(code))));
}

// What every unit gets whatever it has fitted.
const QStringList backlightAndBuzzer = {
    "GetBacklight()",
    "Backlight_setIntensity(255) -> 0",
    "Backlight_stopAutomaticBL() -> 0",
    "Backlight_setAutomaticBLParams(0) -> 0",
    "Backlight_setAutomaticBLFilter(5, 5, 50, 2) -> 0",
    "Backlight_setLedDimming(1) -> 0",
    "Backlight_release()",
    "GetBuzzer()",
    "Buzzer_setFrequency(700) -> 0",
    "Buzzer_setVolume(0) -> 0",
    "Buzzer_setTrigger(0) -> 0",
    "Buzzer_release()",
};

const QStringList frontLedToTouch = {
    "GetFrontLED()",
    "FrontLED_setColor(0, 0, 15) -> 0",
    "FrontLED_setEnabledDuringStartup(1) -> 0",
    "FrontLED_setIdleTime(0) -> 0",
    "FrontLED_setNrOfPulses(0) -> 0",
    "FrontLED_setOffTime(0) -> 0",
    "FrontLED_setOnTime(100) -> 0",
    "FrontLED_release()",
    "GetLightsensor()",
    "Lightsensor_setOperatingRange(0) -> 0",
    "Lightsensor_release()",
};

const QStringList touch = {
    "GetTouchScreen()",
    "TouchScreen_setMode(3) -> 0",
    "TouchScreen_setMode(2) -> 0",
    "TouchScreen_setMouseRightClickTime(1000) -> 0",
    "TouchScreen_setMode(3) -> 0",
    "TouchScreen_release()",
};

const QStringList inventoryQueries = {
    "GetAbout()",
    "About_getNrOfCANConnections() -> 0",
    "About_getNrOfVideoConnections() -> 0",
    "About_getNrOfButtons() -> 0",
    "About_getNrOfPWMOutConnections() -> 0",
    "About_getNrOfCfgInConnections() -> 0",
    "About_release()",
};

} // namespace

class tst_defaults : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void fullUnit();
    void bareUnit();
    void failuresAreReportedAndDoNotStop();
};

// Two CAN nets, video, three buttons, two inputs and outputs, suspend, and
// telematics with GSM and GPS answering "fitted"; the WLAN and Bluetooth
// queries fail, which counts as not fitted and is not reported.
void tst_defaults::fullUnit()
{
    inventory(2, 1, 3, 2, 2);
    put("Unit/SuspendSupported", 1);
    put("Unit/TelematicsAvailable", 1);
    for (const char* key :
        { "About/IsGPRSMounted", "About/IsWLANMounted", "About/IsGPSMounted", "About/IsBTMounted" })
        put(key, 1);
    ZuAuxSim::forceCode("About_getIsWLANMounted", 7);
    ZuAuxSim::forceCode("About_getIsBTMounted", 2);
    ZuAuxSim::forceCode("Telematics_setGPSStartUpPowerStatus", 9);
    ZuAuxSim::clearTrace();

    Dialogs::Recorder recorder;
    QVERIFY(WriteDefaultValues());
    QCOMPARE(recorder.texts(), QStringList { errorBox(9, "setGPSStartUpPowerStatus") });

    const QStringList expected = inventoryQueries + backlightAndBuzzer
        + QStringList{
            "GetCanSetting()",
            "CanSetting_setBaudrate(1, 125) -> 0",
            "CanSetting_setBaudrate(2, 125) -> 0",
            "CanSetting_release()",
            "GetConfig()",
            "Config_getSuspendMaxTime() -> 0",
            "Config_setCanStartupPowerConfig(0) -> 0",
            "Config_setExtFanStartupPowerConfig(0) -> 0",
            "Config_setExtOnOffSigTrigTime(4) -> 0",
            "Config_setFrontBtnTrigTime(4000) -> 0",
            "Config_setHeatingTempLimit(-25) -> 0",
            "Config_setLongButtonPressAction(2) -> 0",
            "Config_setOnOffSigAction(2) -> 0",
            "Config_setShortButtonPressAction(1) -> 0",
            "Config_setStartupTriggerConfig(3) -> 0",
            "Config_setStartupVoltageConfig(9) -> 0",
            "Config_setSuspendMaxTime(60) -> 0",
            "Config_setVideoStartupPowerConfig(0) -> 0",
            "Config_setPowerOnStartup(1) -> 0",
            "Config_setButtonFunction(3, 0) -> 0",
            "Config_setButtonFunction(2, 0) -> 0",
            "Config_setButtonFunction(1, 0) -> 0",
            "Config_release()",
            "GetCfgIn()",
            "CfgIn_setMinFrequencyThreshold(2, 1) -> 0",
            "CfgIn_setCfgInMode(2, 0) -> 0",
            "CfgIn_setMinFrequencyThreshold(1, 1) -> 0",
            "CfgIn_setCfgInMode(1, 0) -> 0",
            "CfgIn_release()",
            "GetPWMOut()",
            "PWMOut_setPWMOutputChannelDutyCycle(2, 0) -> 0",
            "PWMOut_setPWMOutputChannelFrequency(2, 0) -> 0",
            "PWMOut_setPWMOutputChannelDutyCycle(1, 0) -> 0",
            "PWMOut_setPWMOutputChannelFrequency(1, 0) -> 0",
            "PWMOut_release()",
        }
        + frontLedToTouch
        + QStringList{
            "GetPower()",
            "Power_setBLPowerStatus(1) -> 0",
            "Power_setCanPowerStatus(0) -> 0",
            "Power_setExtFanPowerStatus(0) -> 0",
            "Power_setVideoPowerStatus(0) -> 0",
            "Power_release()",
        }
        + touch
        + QStringList{
            "GetTelematics()",
            "Telematics_getTelematicsAvailable() -> 0",
            "GetAbout()",
            "About_getIsGPRSMounted() -> 0",
            "Telematics_setGPRSPowerStatus(0) -> 0",
            "Telematics_setGPRSStartUpPowerStatus(0) -> 0",
            "About_getIsWLANMounted() -> 7",
            "About_getIsGPSMounted() -> 0",
            "Telematics_setGPSPowerStatus(0) -> 0",
            "Telematics_setGPSStartUpPowerStatus(0) -> 9",
            "About_getIsBTMounted() -> 2",
            "About_release()",
            "Telematics_release()",
        };
    QCOMPARE(ZuAuxSim::trace(), expected);
}

// No CAN, video, buttons, inputs or outputs; no suspend; no telematics.
void tst_defaults::bareUnit()
{
    inventory(0, 0, 0, 0, 0);
    put("Unit/TelematicsAvailable", 0);
    ZuAuxSim::forceCode("Config_getSuspendMaxTime", 2);
    ZuAuxSim::clearTrace();

    Dialogs::Recorder recorder;
    WriteDefaultValues();
    QCOMPARE(recorder.texts(), QStringList());

    const QStringList expected = inventoryQueries + backlightAndBuzzer
        + QStringList{
            "GetCanSetting()",
            "CanSetting_release()",
            "GetConfig()",
            "Config_getSuspendMaxTime() -> 2",
            "Config_setExtFanStartupPowerConfig(0) -> 0",
            "Config_setExtOnOffSigTrigTime(4) -> 0",
            "Config_setFrontBtnTrigTime(4000) -> 0",
            "Config_setHeatingTempLimit(-25) -> 0",
            "Config_setLongButtonPressAction(2) -> 0",
            "Config_setOnOffSigAction(2) -> 0",
            "Config_setShortButtonPressAction(2) -> 0",
            "Config_setStartupTriggerConfig(3) -> 0",
            "Config_setStartupVoltageConfig(9) -> 0",
            "Config_setPowerOnStartup(1) -> 0",
            "Config_release()",
            "GetCfgIn()",
            "CfgIn_release()",
            "GetPWMOut()",
            "PWMOut_release()",
        }
        + frontLedToTouch
        + QStringList{
            "GetPower()",
            "Power_setBLPowerStatus(1) -> 0",
            "Power_setExtFanPowerStatus(0) -> 0",
            "Power_release()",
        }
        + touch
        + QStringList{
            "GetTelematics()",
            "Telematics_getTelematicsAvailable() -> 0",
            "Telematics_release()",
        };
    QCOMPARE(ZuAuxSim::trace(), expected);
}

// One box per failing setter (never for 2), and every later step still runs.
void tst_defaults::failuresAreReportedAndDoNotStop()
{
    inventory(9, 1, 2, 0, 0);
    ZuAuxSim::forceCode("Config_getSuspendMaxTime", 7); // not 2: the suspend branch
    ZuAuxSim::forceCode("Telematics_getTelematicsAvailable", 7);
    ZuAuxSim::forceCode("About_getNrOfPWMOutConnections", 7);
    ZuAuxSim::forceCode("Backlight_setIntensity", 3);
    ZuAuxSim::forceCode("Buzzer_setVolume", 2);
    ZuAuxSim::forceCode("CanSetting_setBaudrate", 19);
    ZuAuxSim::forceCode("Config_setSuspendMaxTime", 4);
    ZuAuxSim::forceCode("Config_setButtonFunction", 18);
    ZuAuxSim::forceCode("TouchScreen_setMode", 13);
    ZuAuxSim::forceCode("Power_setVideoPowerStatus", 2);
    ZuAuxSim::clearTrace();

    Dialogs::Recorder recorder;
    WriteDefaultValues();

    const QStringList expected = {
        errorBox(3, "setIntensity"),
        errorBox(19, "setBaudrate CAN1"),
        errorBox(19, "setBaudrate CAN2"),
        errorBox(19, "setBaudrate CAN3"),
        errorBox(19, "setBaudrate CAN4"),
        errorBox(19, "setBaudrate CAN5"),
        errorBox(19, "setBaudrate CAN6"),
        errorBox(19, "setBaudrate CAN7"),
        errorBox(4, "setSuspendMaxTime"),
        errorBox(18, "Config_setButtonFunction"),
        errorBox(18, "Config_setButtonFunction"),
        errorBox(13, "setMode"),
        errorBox(13, "setMode"),
        errorBox(13, "setMode"),
    };
    QCOMPARE(recorder.texts(), expected);
    for (const Dialogs::Shown& box : recorder.shown) {
        QCOMPARE(box.title, QStringLiteral("Zusettings"));
        QCOMPARE(box.icon, QMessageBox::Critical);
    }

    QCOMPARE(callsTo("CanSetting_setBaudrate(").size(), 7);
    QCOMPARE(callsTo("Config_setShortButtonPressAction("),
        QStringList { "Config_setShortButtonPressAction(1) -> 0" });
    QCOMPARE(callsTo("Config_setButtonFunction("),
        (QStringList { "Config_setButtonFunction(2, 0) -> 18", "Config_setButtonFunction(1, 0) -> 18" }));
    // A failed count query leaves the count at 0.
    QCOMPARE(callsTo("PWMOut_set").size(), 0);
    QCOMPARE(callsTo("Power_setVideoPowerStatus("), QStringList { "Power_setVideoPowerStatus(0) -> 2" });
    QCOMPARE(callsTo("Telematics_set").size(), 0);
    QCOMPARE(ZuAuxSim::trace().last(), QStringLiteral("Telematics_release()"));
}

QTEST_GUILESS_MAIN(tst_defaults)
#include "tst_defaults.moc"
