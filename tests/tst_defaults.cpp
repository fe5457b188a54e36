#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "report/WriteDefaultValues.h"
#include "simunit.h"

#include <QRegularExpression>
#include <QTest>

namespace
{

// Every unit gets these, in this order.
const QStringList everyUnit = { "Backlight_setIntensity(255)", "Backlight_stopAutomaticBL()",
    "Backlight_setAutomaticBLParams(0)", "Backlight_setAutomaticBLFilter(5, 5, 50, 2)",
    "Backlight_setLedDimming(1)", "Buzzer_setFrequency(700)", "Buzzer_setVolume(0)", "Buzzer_setTrigger(0)",
    "Config_setExtFanStartupPowerConfig(0)", "Config_setExtOnOffSigTrigTime(4)",
    "Config_setFrontBtnTrigTime(4000)", "Config_setHeatingTempLimit(-25)",
    "Config_setLongButtonPressAction(2)", "Config_setOnOffSigAction(2)", "Config_setStartupTriggerConfig(3)",
    "Config_setStartupVoltageConfig(9)", "Config_setPowerOnStartup(1)", "FrontLED_setColor(0, 0, 15)",
    "FrontLED_setEnabledDuringStartup(1)", "FrontLED_setIdleTime(0)", "FrontLED_setNrOfPulses(0)",
    "FrontLED_setOffTime(0)", "FrontLED_setOnTime(100)", "Lightsensor_setOperatingRange(0)",
    "Power_setBLPowerStatus(1)", "Power_setExtFanPowerStatus(0)", "TouchScreen_setMode(3)",
    "TouchScreen_setMode(2)", "TouchScreen_setMouseRightClickTime(1000)", "TouchScreen_setMode(3)" };

} // namespace

class tst_defaults : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void unitKinds_data();
    void unitKinds();
};

// Each row is one writer run (1.6 s of touch screen pauses): the unit's
// inventory and failures, the writes of this unit beyond every unit's, and
// the boxes.
void tst_defaults::unitKinds_data()
{
    QTest::addColumn<QStringList>("unit");
    QTest::addColumn<QStringList>("writes");
    QTest::addColumn<QStringList>("boxes");

    // GSM and GPS fitted; the WLAN query fails and Bluetooth is absent, so
    // neither is written. The suspend query fails with a code other than 2.
    QTest::newRow("2 CAN nets, 3 buttons, telematics")
        << QStringList { "About/NrOfCANConnections=2", "About/NrOfVideoConnections=1", "About/NrOfButtons=3",
               "About/NrOfCfgInConnections=2", "About/NrOfPWMOutConnections=2", "Unit/TelematicsAvailable=1",
               "About/IsGPRSMounted=1", "About/IsGPSMounted=1", "About/IsBTMounted=0",
               "About_getIsWLANMounted=7", "Config_getSuspendMaxTime=7", "Backlight_setIntensity=3",
               "Buzzer_setVolume=2", "CanSetting_setBaudrate=19", "Config_setButtonFunction=18",
               "TouchScreen_setMode=2", "Telematics_setGPSStartUpPowerStatus=9" }
        << QStringList { "CanSetting_setBaudrate(1, 125)", "CanSetting_setBaudrate(2, 125)",
               "Config_setCanStartupPowerConfig(0)", "Config_setShortButtonPressAction(1)",
               "Config_setSuspendMaxTime(60)", "Config_setVideoStartupPowerConfig(0)",
               "Config_setButtonFunction(3, 0)", "Config_setButtonFunction(2, 0)",
               "Config_setButtonFunction(1, 0)", "CfgIn_setMinFrequencyThreshold(2, 1)",
               "CfgIn_setCfgInMode(2, 0)", "CfgIn_setMinFrequencyThreshold(1, 1)", "CfgIn_setCfgInMode(1, 0)",
               "PWMOut_setPWMOutputChannelDutyCycle(2, 0)", "PWMOut_setPWMOutputChannelFrequency(2, 0)",
               "PWMOut_setPWMOutputChannelDutyCycle(1, 0)", "PWMOut_setPWMOutputChannelFrequency(1, 0)",
               "Power_setCanPowerStatus(0)", "Power_setVideoPowerStatus(0)",
               "Telematics_setGPRSPowerStatus(0)", "Telematics_setGPRSStartUpPowerStatus(0)",
               "Telematics_setGPSPowerStatus(0)", "Telematics_setGPSStartUpPowerStatus(0)" }
        << QStringList { "Error(3) in setIntensity: Invalid handle",
               "Error(19) in setBaudrate CAN1: Hardware fault",
               "Error(19) in setBaudrate CAN2: Hardware fault",
               "Error(18) in Config_setButtonFunction: Value not available",
               "Error(18) in Config_setButtonFunction: Value not available",
               "Error(18) in Config_setButtonFunction: Value not available",
               "Error(9) in setGPSStartUpPowerStatus: Could not open file" };
    QTest::newRow("no CAN, no suspend, no telematics")
        << QStringList { "About/NrOfCANConnections=0", "About/NrOfVideoConnections=0", "About/NrOfButtons=0",
               "About/NrOfCfgInConnections=0", "About/NrOfPWMOutConnections=0", "Unit/TelematicsAvailable=0",
               "Config_getSuspendMaxTime=2" }
        << QStringList { "Config_setShortButtonPressAction(2)" } << QStringList();
}

void tst_defaults::unitKinds()
{
    QFETCH(QStringList, unit);
    QFETCH(QStringList, writes);
    QFETCH(QStringList, boxes);

    for (const QString& setting : unit)
        change(setting);
    ZuAuxSim::clearTrace();
    Dialogs::Recorder recorder;
    WriteDefaultValues();

    // Result codes aside, every unit's writes in their order, and between
    // them the unit's own: a failure stops nothing.
    QStringList own;
    int next = 0;
    for (const QString& line : ZuAuxSim::trace().filter(QRegularExpression("^\\w+_(set|stop)"))) {
        const QString call = line.section(" -> ", 0, 0);
        if (next < everyUnit.size() && call == everyUnit[next])
            ++next;
        else
            own << call;
    }
    QCOMPARE(everyUnit.mid(next), QStringList());
    QCOMPARE(own, writes);
    QCOMPARE(recorder.texts(), boxes);
}

QTEST_GUILESS_MAIN(tst_defaults)
#include "tst_defaults.moc"
