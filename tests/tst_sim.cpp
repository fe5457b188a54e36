// The simulated unit in one process: what each shipped profile answers, value
// checks and the start-up rule, injected codes, the call trace, text buffers,
// live readings and firmware runs.
#include "simunit.h"
#include "zuaux2.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>
#include <functional>
#include <map>

using namespace Korvane;

namespace
{

struct Answer {
    int code;
    QString value;
};

// One read per row name, giving the code and the output as text.
const std::map<QString, std::function<Answer()>>& probes()
{
    // clang-format off
    static const std::map<QString, std::function<Answer()>> table = {
        {"HeatingTempLimit", [] { int16_t v = 0; int e = Config_getHeatingTempLimit(GetConfig(), &v); return Answer{e, QString::number(v)}; }},
        {"SuspendMaxTime", [] { uint16_t v = 0; int e = Config_getSuspendMaxTime(GetConfig(), &v); return Answer{e, QString::number(v)}; }},
        {"Baudrate 1", [] { uint16_t v = 0; int e = CanSetting_getBaudrate(GetCanSetting(), 1, &v); return Answer{e, QString::number(v)}; }},
        {"Baudrate 3", [] { uint16_t v = 0; int e = CanSetting_getBaudrate(GetCanSetting(), 3, &v); return Answer{e, QString::number(v)}; }},
        {"CAN count", [] { uint8_t v = 0; int e = About_getNrOfCANConnections(GetAbout(), &v); return Answer{e, QString::number(v)}; }},
        {"Button count", [] { int v = 0; int e = About_getNrOfButtons(GetAbout(), &v); return Answer{e, QString::number(v)}; }},
        {"ButtonFunction 10", [] { ButtonConfigEnum v = BUTTON_ONLY_MP_ACTION; int e = Config_getButtonFunction(GetConfig(), 10, &v); return Answer{e, QString::number(v)}; }},
        {"ButtonFunction 11", [] { ButtonConfigEnum v = BUTTON_ONLY_MP_ACTION; int e = Config_getButtonFunction(GetConfig(), 11, &v); return Answer{e, QString::number(v)}; }},
        {"Display", [] { bool v = false; int e = About_getIsDisplayAvailable(GetAbout(), &v); return Answer{e, QString::number(v)}; }},
        {"Intensity", [] { uint8_t v = 0; int e = Backlight_getIntensity(GetBacklight(), &v); return Answer{e, QString::number(v)}; }},
        {"TouchMode", [] { TouchScreenMode v = TOUCH_MODE_MOUSE_NEXT_BOOT; int e = TouchScreen_getMode(GetTouchScreen(), &v); return Answer{e, QString::number(v)}; }},
        {"BatteryPresent", [] { bool v = false; int e = Battery_isBatteryPresent(GetBattery(), &v); return Answer{e, QString::number(v)}; }},
        {"BatteryTemp", [] { int16_t v = 0; int e = Battery_getBatteryTemp(GetBattery(), &v); return Answer{e, QString::number(v)}; }},
        {"Telematics", [] { int v = 0; int e = Telematics_getTelematicsAvailable(GetTelematics(), &v); return Answer{e, QString::number(v)}; }},
        {"GPS mounted", [] { bool v = false; int e = About_getIsGPSMounted(GetAbout(), &v); return Answer{e, QString::number(v)}; }},
        {"GPS power", [] { ZuStatus v = ZU_DISABLED; int e = Telematics_getGPSPowerStatus(GetTelematics(), &v); return Answer{e, QString::number(v)}; }},
        {"AddOn serial", [] { char b[50] = "x"; int e = About_getAddOnPCBSerial(GetAbout(), b, sizeof b); return Answer{e, QString::fromLatin1(b)}; }},
        {"Manufacturing date", [] { char b[50] = "x"; int e = About_getMainManufacturingDate(GetAbout(), b, sizeof b); return Answer{e, QString::fromLatin1(b)}; }},
        {"PMTemp 0", [] { int16_t t = 0; PMTempSensorType s = PM_SENSOR_OTHER; int e = Diagnostic_getPMTemp(GetDiagnostic(), 0, &t, &s); return Answer{e, QString::number(s)}; }},
        {"Voltage 1", [] { double v = 0; int e = Adc_getVoltage(GetAdc(), 1, &v); return Answer{e, QString::number(v)}; }},
        {"HWStatus", [] { bool v = true; int e = Backlight_getHWStatus(GetBacklight(), &v); return Answer{e, QString::number(v)}; }},
        {"Trigger 3", [] { return Answer{Config_setStartupTriggerConfig(GetConfig(), TRIGGER_BOTH), QString()}; }},
        {"Sensor start", [] { return Answer{Lightsensor_startAverageCalc(GetLightsensor(), 4, 4, 80, LIGHTSENSOR_AUTO_RANGE), QString()}; }},
        {"Frame type", [] { CanFrameType v = CAN_FRAME_STANDARD; int e = CanSetting_getFrameType(GetCanSetting(), 1, &v); return Answer{e, QString::number(v)}; }},
        {"Private", [] { char b[50] = "x"; int e = ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "Screen_Rotation", b, sizeof b); return Answer{e, QString::fromLatin1(b)}; }},
    };
    // clang-format on
    return table;
}

Answer probe(const QString& name)
{
    const auto found = probes().find(name);
    if (found == probes().end())
        qFatal("no probe %s", qPrintable(name));
    return found->second();
}

} // namespace

class TestSim : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void profileAnswers_data();
    void profileAnswers();
    void validation_data();
    void validation();
    void startupRule();
    void faultInjection_data();
    void faultInjection();
    void failedCallLeavesOutputsAndState();
    void trace_data();
    void trace();
    void textBuffers_data();
    void textBuffers();
    void persistsWithinStateFile();
    void liveReadings();
    void automaticBacklight();
    void firmwareRun_data();
    void firmwareRun();
    void firmwareStartFailures();
    void texts();
    void handles();
};

void TestSim::init()
{
    resetUnit(QStringLiteral("full"));
}

void TestSim::profileAnswers_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("probe");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("value");

    // Factory values of a unit with everything fitted.
    // clang-format off
    QTest::newRow("full heating") << "full" << "HeatingTempLimit" << 0 << "-25";
    QTest::newRow("full suspend") << "full" << "SuspendMaxTime" << 0 << "60";
    QTest::newRow("full CAN1") << "full" << "Baudrate 1" << 0 << "125";
    QTest::newRow("full CAN3 missing") << "full" << "Baudrate 3" << 2 << "0";
    QTest::newRow("full CAN count") << "full" << "CAN count" << 0 << "2";
    QTest::newRow("full button 10") << "full" << "ButtonFunction 10" << 0 << "0";
    QTest::newRow("full button 11") << "full" << "ButtonFunction 11" << 2 << "0";
    QTest::newRow("full intensity") << "full" << "Intensity" << 0 << "255";
    QTest::newRow("full touch") << "full" << "TouchMode" << 0 << "3";
    QTest::newRow("full battery") << "full" << "BatteryPresent" << 0 << "1";
    QTest::newRow("full telematics") << "full" << "Telematics" << 0 << "1";
    QTest::newRow("full GPS") << "full" << "GPS mounted" << 0 << "1";
    QTest::newRow("full GPS power") << "full" << "GPS power" << 0 << "0";
    QTest::newRow("full trigger") << "full" << "Trigger 3" << 0 << "";
    QTest::newRow("full sensor") << "full" << "Sensor start" << 0 << "";
    QTest::newRow("full rotation") << "full" << "Private" << 0 << "0";

    QTest::newRow("headless heater") << "headless" << "HeatingTempLimit" << 2 << "0";
    QTest::newRow("headless suspend") << "headless" << "SuspendMaxTime" << 2 << "0";
    QTest::newRow("headless CAN count") << "headless" << "CAN count" << 0 << "0";
    QTest::newRow("headless CAN1") << "headless" << "Baudrate 1" << 2 << "0";
    QTest::newRow("headless display") << "headless" << "Display" << 0 << "0";
    QTest::newRow("headless intensity") << "headless" << "Intensity" << 2 << "0";
    QTest::newRow("headless touch") << "headless" << "TouchMode" << 2 << "0";
    QTest::newRow("headless battery") << "headless" << "BatteryPresent" << 0 << "0";
    QTest::newRow("headless battery temp") << "headless" << "BatteryTemp" << 2 << "0";
    QTest::newRow("headless telematics") << "headless" << "Telematics" << 0 << "0";
    QTest::newRow("headless GPS") << "headless" << "GPS mounted" << 2 << "0";
    QTest::newRow("headless add-on") << "headless" << "AddOn serial" << 2 << "x";
    QTest::newRow("headless ADC 1") << "headless" << "Voltage 1" << 2 << "0";

    QTest::newRow("unsupported count") << "unsupported" << "Button count" << 2 << "0";
    QTest::newRow("unsupported heater") << "unsupported" << "HeatingTempLimit" << 2 << "0";
    QTest::newRow("unsupported battery") << "unsupported" << "BatteryPresent" << 2 << "0";
    QTest::newRow("unsupported private") << "unsupported" << "Private" << 2 << "x";
    QTest::newRow("unsupported trigger") << "unsupported" << "Trigger 3" << 2 << "";

    QTest::newRow("faulty date") << "faulty" << "Manufacturing date" << 18 << "x";
    QTest::newRow("faulty add-on") << "faulty" << "AddOn serial" << 18 << "x";
    QTest::newRow("faulty trigger") << "faulty" << "Trigger 3" << 34 << "";
    QTest::newRow("faulty sensor busy") << "faulty" << "Sensor start" << 20 << "";
    QTest::newRow("faulty backlight hw") << "faulty" << "HWStatus" << 0 << "0";
    QTest::newRow("faulty no PM sensor") << "faulty" << "PMTemp 0" << 4 << "7";
    QTest::newRow("faulty frame type") << "faulty" << "Frame type" << 8 << "0";
    QTest::newRow("faulty keeps the rest") << "faulty" << "Baudrate 1" << 0 << "125";
    // clang-format on
}

void TestSim::profileAnswers()
{
    QFETCH(QString, profile);
    QFETCH(QString, probe);
    QFETCH(int, code);
    QFETCH(QString, value);

    resetUnit(profile);
    const Answer answer = ::probe(probe);
    QCOMPARE(answer.code, code);
    QCOMPARE(answer.value, value);
}

void TestSim::validation_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("code");
    // clang-format off
    QTest::newRow("button function 3 (odd)") << "Config_setButtonFunction(1, 3)" << 4;
    QTest::newRow("button function 16") << "Config_setButtonFunction(1, 16)" << 4;
    QTest::newRow("button function 14") << "Config_setButtonFunction(1, 14)" << 0;
    QTest::newRow("button 11 of 10") << "Config_setButtonFunction(11, 0)" << 2;
    QTest::newRow("button 0") << "Config_setButtonFunction(0, 0)" << 2;
    QTest::newRow("frame type 3") << "CanSetting_setFrameType(1, 3)" << 4;
    QTest::newRow("frame type 2") << "CanSetting_setFrameType(2, 2)" << 0;
    QTest::newRow("net 3 of 2") << "CanSetting_setBaudrate(3, 125)" << 2;
    QTest::newRow("odd baud rate") << "CanSetting_setBaudrate(1, 83)" << 0;
    QTest::newRow("CfgIn mode 9") << "CfgIn_setCfgInMode(1, 9)" << 4;
    QTest::newRow("CfgIn mode 8") << "CfgIn_setCfgInMode(2, 8)" << 0;
    QTest::newRow("CfgIn 3 of 2") << "CfgIn_setCfgInMode(3, 0)" << 2;
    QTest::newRow("volume 52") << "Buzzer_setVolume(52)" << 4;
    QTest::newRow("volume 51") << "Buzzer_setVolume(51)" << 0;
    QTest::newRow("trigger 0") << "Config_setStartupTriggerConfig(0)" << 4;
    QTest::newRow("trigger 16") << "Config_setStartupTriggerConfig(16)" << 4;
    QTest::newRow("trigger CAN only") << "Config_setStartupTriggerConfig(4)" << 34;
    QTest::newRow("trigger CI and CAN") << "Config_setStartupTriggerConfig(12)" << 34;
    QTest::newRow("trigger button, no start button") << "Config_setStartupTriggerConfig(1)" << 34;
    QTest::newRow("trigger signal and CAN") << "Config_setStartupTriggerConfig(6)" << 0;
    QTest::newRow("LED blue 16") << "FrontLED_setColor(0, 0, 16)" << 4;
    QTest::newRow("LED 15 15 15") << "FrontLED_setColor(15, 15, 15)" << 0;
    QTest::newRow("power action 3") << "Config_setOnOffSigAction(3)" << 4;
    QTest::newRow("touch mode 4") << "TouchScreen_setMode(4)" << 4;
    QTest::newRow("PWM duty 101") << "PWMOut_setPWMOutputChannelDutyCycle(1, 101)" << 4;
    QTest::newRow("sensor range 2") << "Lightsensor_setOperatingRange(2)" << 4;
    QTest::newRow("video mask beyond 2 channels") << "Config_setVideoStartupPowerConfig(4)" << 4;
    QTest::newRow("PM sensor past the last") << "Diagnostic_getPMTemp(3)" << 4;
    // clang-format on
}

void TestSim::validation()
{
    QFETCH(QString, call);
    QFETCH(int, code);

    // The trace names each call exactly as the row does, so one table serves
    // both as the call list and as the check of what ran.
    // clang-format off
    static const std::map<QString, std::function<int()>> calls = {
        {"Config_setButtonFunction(1, 3)", [] { return Config_setButtonFunction(GetConfig(), 1, ButtonConfigEnum(3)); }},
        {"Config_setButtonFunction(1, 16)", [] { return Config_setButtonFunction(GetConfig(), 1, ButtonConfigEnum(16)); }},
        {"Config_setButtonFunction(1, 14)", [] { return Config_setButtonFunction(GetConfig(), 1, ButtonConfigEnum(14)); }},
        {"Config_setButtonFunction(11, 0)", [] { return Config_setButtonFunction(GetConfig(), 11, BUTTON_ONLY_MP_ACTION); }},
        {"Config_setButtonFunction(0, 0)", [] { return Config_setButtonFunction(GetConfig(), 0, BUTTON_ONLY_MP_ACTION); }},
        {"CanSetting_setFrameType(1, 3)", [] { return CanSetting_setFrameType(GetCanSetting(), 1, CanFrameType(3)); }},
        {"CanSetting_setFrameType(2, 2)", [] { return CanSetting_setFrameType(GetCanSetting(), 2, CAN_FRAME_STANDARD_EXTENDED); }},
        {"CanSetting_setBaudrate(3, 125)", [] { return CanSetting_setBaudrate(GetCanSetting(), 3, 125); }},
        {"CanSetting_setBaudrate(1, 83)", [] { return CanSetting_setBaudrate(GetCanSetting(), 1, 83); }},
        {"CfgIn_setCfgInMode(1, 9)", [] { return CfgIn_setCfgInMode(GetCfgIn(), 1, CfgInModeEnum(9)); }},
        {"CfgIn_setCfgInMode(2, 8)", [] { return CfgIn_setCfgInMode(GetCfgIn(), 2, CFGIN_FREQ_PULL_DOWN); }},
        {"CfgIn_setCfgInMode(3, 0)", [] { return CfgIn_setCfgInMode(GetCfgIn(), 3, CFGIN_NOT_IN_USE); }},
        {"Buzzer_setVolume(52)", [] { return Buzzer_setVolume(GetBuzzer(), 52); }},
        {"Buzzer_setVolume(51)", [] { return Buzzer_setVolume(GetBuzzer(), 51); }},
        {"Config_setStartupTriggerConfig(0)", [] { return Config_setStartupTriggerConfig(GetConfig(), TriggerConf(0)); }},
        {"Config_setStartupTriggerConfig(16)", [] { return Config_setStartupTriggerConfig(GetConfig(), TriggerConf(16)); }},
        {"Config_setStartupTriggerConfig(4)", [] { return Config_setStartupTriggerConfig(GetConfig(), TRIGGER_CAN); }},
        {"Config_setStartupTriggerConfig(12)", [] { return Config_setStartupTriggerConfig(GetConfig(), TriggerConf(12)); }},
        {"Config_setStartupTriggerConfig(1)", [] { return Config_setStartupTriggerConfig(GetConfig(), TRIGGER_FRONT_BUTTON); }},
        {"Config_setStartupTriggerConfig(6)", [] { return Config_setStartupTriggerConfig(GetConfig(), TriggerConf(6)); }},
        {"FrontLED_setColor(0, 0, 16)", [] { return FrontLED_setColor(GetFrontLED(), 0, 0, 16); }},
        {"FrontLED_setColor(15, 15, 15)", [] { return FrontLED_setColor(GetFrontLED(), 15, 15, 15); }},
        {"Config_setOnOffSigAction(3)", [] { return Config_setOnOffSigAction(GetConfig(), PowerAction(3)); }},
        {"TouchScreen_setMode(4)", [] { return TouchScreen_setMode(GetTouchScreen(), TouchScreenMode(4)); }},
        {"PWMOut_setPWMOutputChannelDutyCycle(1, 101)", [] { return PWMOut_setPWMOutputChannelDutyCycle(GetPWMOut(), 1, 101); }},
        {"Lightsensor_setOperatingRange(2)", [] { return Lightsensor_setOperatingRange(GetLightsensor(), 2); }},
        {"Config_setVideoStartupPowerConfig(4)", [] { return Config_setVideoStartupPowerConfig(GetConfig(), 4); }},
        {"Diagnostic_getPMTemp(3)", [] { int16_t t = 0; PMTempSensorType s = PM_SENSOR_CPU; return Diagnostic_getPMTemp(GetDiagnostic(), 3, &t, &s); }},
    };
    // clang-format on
    const auto found = calls.find(call);
    QVERIFY2(found != calls.end(), qPrintable(call));
    QCOMPARE(found->second(), code);
    QCOMPARE(callsTo(call.section(QLatin1Char('('), 0, 0)),
        QStringList { QStringLiteral("%1 -> %2").arg(call).arg(code) });
}

void TestSim::startupRule()
{
    ConfigHandle h = GetConfig();
    // Button only as trigger needs a start-up button first.
    QCOMPARE(Config_setButtonFunction(h, 2, BUTTON_AS_STARTUP_TRIG), ERR_SUCCESS);
    QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_FRONT_BUTTON), ERR_SUCCESS);
    // The last start-up button cannot lose its role ...
    QCOMPARE(Config_setButtonFunction(h, 2, BUTTON_AS_ACTION_TRIG), ERR_STARTUP_TRIGGER_CONFLICT);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("Config/ButtonFunction_2")).toInt(), 2);
    // ... unless another one takes it over.
    QCOMPARE(Config_setButtonFunction(h, 5, BUTTON_AS_BACKLIGHT_INCR_STARTUP_TRIG), ERR_SUCCESS);
    QCOMPARE(Config_setButtonFunction(h, 2, BUTTON_AS_ACTION_TRIG), ERR_SUCCESS);
    QCOMPARE(Config_setStartupTriggerConfig(h, TriggerConf(TRIGGER_FRONT_BUTTON | TRIGGER_CAN)), ERR_SUCCESS);
    QCOMPARE(Config_setButtonFunction(h, 5, BUTTON_AS_BACKLIGHT_INCREASE), ERR_STARTUP_TRIGGER_CONFLICT);
    // With the signal as a trigger, buttons are free.
    QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_ALL), ERR_SUCCESS);
    QCOMPARE(Config_setButtonFunction(h, 5, BUTTON_ONLY_MP_ACTION), ERR_SUCCESS);
    TriggerConf trigger = TRIGGER_BOTH;
    QCOMPARE(Config_getStartupTriggerConfig(h, &trigger), ERR_SUCCESS);
    QCOMPARE(trigger, TRIGGER_ALL);
    QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_FRONT_BUTTON), ERR_STARTUP_TRIGGER_CONFLICT);
}

void TestSim::faultInjection_data()
{
    QTest::addColumn<QString>("forced");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("intensityCode");
    QTest::addColumn<int>("volumeCode");

    // clang-format off
    QTest::newRow("by name") << "Backlight_getIntensity" << 7 << 7 << 0;
    QTest::newRow("by star") << "*" << 6 << 6 << 6;
    QTest::newRow("other name") << "Buzzer_getVolume" << 18 << 0 << 18;
    QTest::newRow("name differs in case") << "backlight_getintensity" << 7 << 0 << 0;
    // clang-format on
}

void TestSim::faultInjection()
{
    QFETCH(QString, forced);
    QFETCH(int, code);
    QFETCH(int, intensityCode);
    QFETCH(int, volumeCode);

    ZuAuxSim::forceCode(forced, code);
    uint8_t intensity = 0;
    uint16_t volume = 0;
    QCOMPARE(int(Backlight_getIntensity(GetBacklight(), &intensity)), intensityCode);
    QCOMPARE(int(Buzzer_getVolume(GetBuzzer(), &volume)), volumeCode);

    // An exact entry wins over "*", and clearing restores the profile.
    ZuAuxSim::forceCode(QStringLiteral("*"), 9);
    ZuAuxSim::forceCode(QStringLiteral("Buzzer_getVolume"), 0);
    QCOMPARE(int(Buzzer_getVolume(GetBuzzer(), &volume)), 0);
    QCOMPARE(int(Buzzer_getTrigger(GetBuzzer(), nullptr)), 9);
    ZuAuxSim::clearCodes();
    QCOMPARE(int(Backlight_getIntensity(GetBacklight(), &intensity)), 0);
    QCOMPARE(intensity, uint8_t(255));
}

void TestSim::failedCallLeavesOutputsAndState()
{
    ZuAuxSim::forceCode(QStringLiteral("Backlight_setIntensity"), 7);
    ZuAuxSim::forceCode(QStringLiteral("FrontLED_getColor"), 18);
    ZuAuxSim::forceCode(QStringLiteral("Config_setButtonFunction"), 1);
    QCOMPARE(Backlight_setIntensity(GetBacklight(), 10), ERR_COMMUNICATION);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("Backlight/Intensity")).toInt(), 255);
    QCOMPARE(Config_setButtonFunction(GetConfig(), 1, BUTTON_AS_STARTUP_TRIG), ERR_FAILED);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("Config/ButtonFunction_1")).toInt(), 0);

    uint8_t red = 99, green = 99, blue = 99;
    QCOMPARE(FrontLED_getColor(GetFrontLED(), &red, &green, &blue), ERR_NOT_AVAILABLE);
    QCOMPARE(red, uint8_t(99));
    QCOMPARE(green, uint8_t(99));
    QCOMPARE(blue, uint8_t(99));

    // Rejected arguments leave everything as it was too.
    int16_t limit = 0;
    QCOMPARE(Config_setHeatingTempLimit(GetConfig(), 200), ERR_INVALID_PARAMETER);
    QCOMPARE(Config_getHeatingTempLimit(GetConfig(), &limit), ERR_SUCCESS);
    QCOMPARE(limit, int16_t(-25));
}

void TestSim::trace_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("lines");

    // clang-format off
    QTest::newRow("setter") << "setIntensity" << QStringList { "GetBacklight()", "Backlight_setIntensity(255) -> 0" };
    QTest::newRow("indexed setter") << "setBaudrate" << QStringList { "GetCanSetting()",
                                           "CanSetting_setBaudrate(1, 125) -> 0" };
    QTest::newRow("getter, outputs not traced") << "getButtonFunction" << QStringList { "GetConfig()", "Config_getButtonFunction(3) -> 0" };
    QTest::newRow("three numbers") << "setColor" << QStringList { "GetFrontLED()", "FrontLED_setColor(0, 0, 15) -> 0" };
    QTest::newRow("float") << "setThreshold" << QStringList { "GetCfgIn()", "CfgIn_setMinFrequencyThreshold(2, 0.5) -> 0" };
    QTest::newRow("double") << "setVoltage" << QStringList { "GetConfig()", "Config_setStartupVoltageConfig(9.25) -> 0" };
    QTest::newRow("large float, %g") << "setPwmFrequency" << QStringList { "GetPWMOut()",
                                            "PWMOut_setPWMOutputChannelFrequency(1, 1.23457e+06) -> 4" };
    QTest::newRow("bool") << "setTrigger" << QStringList { "GetBuzzer()", "Buzzer_setTrigger(1) -> 0" };
    QTest::newRow("enum") << "setFilter" << QStringList { "GetBacklight()",
                                 "Backlight_setAutomaticBLFilter(5, 5, 50, 2) -> 0" };
    QTest::newRow("strings") << "setFileSetting" << QStringList {
                                    "GetZuAuxPrivate()",
                                    "ZuAuxPrivate_setFileSetting(\"ZusettingsGpsPort\", \"/dev/ttyS1\") -> 0"
                                };
    QTest::newRow("text getter") << "getFileSetting" << QStringList { "GetZuAuxPrivate()",
                                        "ZuAuxPrivate_getFileSetting(\"ZusettingsGsmPort\") -> 1" };
    QTest::newRow("file name") << "startUpgrade" << QStringList { "GetFirmwareUpgrade()",
                                      "FirmwareUpgrade_startFpgaUpgrade(\"/nonexistent/fw.mcs\", 0) -> 9" };
    QTest::newRow("release") << "release" << QStringList { "GetBattery()", "Battery_release()" };
    QTest::newRow("texts untraced") << "texts" << QStringList {};
    QTest::newRow("forced code") << "forced" << QStringList { "GetBuzzer()", "Buzzer_setVolume(3) -> 18" };
    // clang-format on
}

void TestSim::trace()
{
    QFETCH(QString, call);
    QFETCH(QStringList, lines);

    // clang-format off
    static const std::map<QString, std::function<void()>> calls = {
        {"setIntensity", [] { Backlight_setIntensity(GetBacklight(), 255); }},
        {"setBaudrate", [] { CanSetting_setBaudrate(GetCanSetting(), 1, 125); }},
        {"getButtonFunction", [] { ButtonConfigEnum f; Config_getButtonFunction(GetConfig(), 3, &f); }},
        {"setColor", [] { FrontLED_setColor(GetFrontLED(), 0, 0, 15); }},
        {"setThreshold", [] { CfgIn_setMinFrequencyThreshold(GetCfgIn(), 2, 0.5f); }},
        {"setVoltage", [] { Config_setStartupVoltageConfig(GetConfig(), 9.25); }},
        {"setPwmFrequency", [] { PWMOut_setPWMOutputChannelFrequency(GetPWMOut(), 1, 1234567.0f); }},
        {"setTrigger", [] { Buzzer_setTrigger(GetBuzzer(), true); }},
        {"setFilter", [] { Backlight_setAutomaticBLFilter(GetBacklight(), 5, 5, 50, LIGHTSENSOR_AUTO_RANGE); }},
        {"setFileSetting", [] { ZuAuxPrivate_setFileSetting(GetZuAuxPrivate(), "ZusettingsGpsPort", "/dev/ttyS1"); }},
        {"getFileSetting", [] { char b[20]; ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "ZusettingsGsmPort", b, sizeof b); }},
        {"startUpgrade", [] { FirmwareUpgrade_startFpgaUpgrade(GetFirmwareUpgrade(), "/nonexistent/fw.mcs", false); }},
        {"release", [] { Battery_release(GetBattery()); }},
        {"texts", [] { GetErrorStringA(ERR_BUSY); GetHwErrorStatusStringA(1); GetStartupReasonStringA(1); }},
        {"forced", [] { ZuAuxSim::forceCode(QStringLiteral("Buzzer_setVolume"), 18); Buzzer_setVolume(GetBuzzer(), 3); }},
    };
    // clang-format on
    calls.at(call)();
    QCOMPARE(ZuAuxSim::trace(), lines);
    ZuAuxSim::clearTrace();
    QVERIFY(ZuAuxSim::trace().isEmpty());
}

void TestSim::textBuffers_data()
{
    QTest::addColumn<uint32_t>("size");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("text");

    // clang-format off
    QTest::newRow("size 0 refused") << 0u << 4 << QByteArray("\x7f");
    QTest::newRow("size 1") << 1u << 0 << QByteArray("");
    QTest::newRow("short") << 5u << 0 << QByteArray("SN-0");
    QTest::newRow("one short") << 9u << 0 << QByteArray("SN-00123");
    QTest::newRow("exact") << 10u << 0 << QByteArray("SN-00123\xB0");
    QTest::newRow("roomy") << 200u << 0 << QByteArray("SN-00123\xB0");
    // clang-format on
}

void TestSim::textBuffers()
{
    QFETCH(uint32_t, size);
    QFETCH(int, code);
    QFETCH(QByteArray, text);

    // Nine characters, the last outside ASCII: one Latin-1 byte.
    const QString serial = QStringLiteral("SN-00123") + QChar(0xB0);
    ZuAuxSim::setValue(QStringLiteral("About/UnitSerial"), serial);
    ZuAuxSim::setValue(QStringLiteral("File/Label"), serial);

    for (int which = 0; which < 2; ++which) {
        char buffer[256];
        std::memset(buffer, 0x7f, sizeof buffer);
        const eErr e = which == 0 ? About_getUnitSerial(GetAbout(), buffer, size)
                                  : ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "Label", buffer, size);
        QCOMPARE(int(e), code);
        if (code == 0) {
            QCOMPARE(QByteArray(buffer), text);
            QCOMPARE(buffer[text.size()], '\0');
        } else {
            QCOMPARE(buffer[0], '\x7f');
        }
        // Nothing is written past the caller's size.
        for (uint32_t i = size; i < sizeof buffer; ++i)
            QCOMPARE(buffer[i], '\x7f');
    }
}

void TestSim::persistsWithinStateFile()
{
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("unit/state.ini"));
    ZuAuxSim::reset(QStringLiteral("full"), state);
    QCOMPARE(Backlight_setIntensity(GetBacklight(), 40), ERR_SUCCESS);
    QCOMPARE(Config_setStartupVoltageConfig(GetConfig(), 10.7), ERR_SUCCESS);
    QCOMPARE(
        ZuAuxPrivate_setFileSetting(GetZuAuxPrivate(), "ZusettingsGsmPort", "/dev/ttyACM0"), ERR_SUCCESS);
    QCOMPARE(Buzzer_setVolume(GetBuzzer(), 99), ERR_INVALID_PARAMETER);

    ZuAuxSim::reset(QStringLiteral("full"), state);
    uint8_t intensity = 0;
    double volts = 0;
    char port[32] = {};
    QCOMPARE(Backlight_getIntensity(GetBacklight(), &intensity), ERR_SUCCESS);
    QCOMPARE(intensity, uint8_t(40));
    QCOMPARE(Config_getStartupVoltageConfig(GetConfig(), &volts), ERR_SUCCESS);
    QCOMPARE(volts, 10.7);
    QCOMPARE(
        ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "ZusettingsGsmPort", port, sizeof port), ERR_SUCCESS);
    QCOMPARE(QByteArray(port), QByteArray("/dev/ttyACM0"));

    // The file holds what was written and nothing of the profile.
    QSettings saved(state, QSettings::IniFormat);
    QStringList keys = saved.allKeys();
    keys.sort();
    QCOMPARE(keys,
        (QStringList { "Backlight/Intensity", "Config/StartupVoltageConfig", "File/ZusettingsGsmPort" }));

    // Without a state file nothing survives a reset.
    ZuAuxSim::reset(QStringLiteral("full"), QString());
    QCOMPARE(Backlight_setIntensity(GetBacklight(), 41), ERR_SUCCESS);
    ZuAuxSim::reset(QStringLiteral("full"), QString());
    QCOMPARE(ZuAuxSim::value(QStringLiteral("Backlight/Intensity")).toInt(), 255);
}

void TestSim::liveReadings()
{
    ZuAuxSim::freezeLive(false);
    QList<double> volts;
    QList<int> temps;
    for (int i = 0; i < 4; ++i) {
        double v = 0;
        int16_t t = 0;
        QCOMPARE(Adc_getVoltage(GetAdc(), 0, &v), ERR_SUCCESS);
        QCOMPARE(Diagnostic_getPCBTemp(GetDiagnostic(), &t), ERR_SUCCESS);
        volts << v;
        temps << t;
        QTest::qWait(120);
    }
    // The 24 V input wanders a little around its profile value, never far.
    for (double v : volts)
        QVERIFY2(v > 24.5 * 0.98 && v < 24.5 * 1.02, qPrintable(QString::number(v)));
    QVERIFY(volts.first() != volts.last());
    for (int t : temps)
        QVERIFY2(t >= 42 - 5 && t <= 42 + 5, qPrintable(QString::number(t)));

    // Frozen readings are the profile's; held ones are exact.
    ZuAuxSim::freezeLive(true);
    double v = 0;
    QCOMPARE(Adc_getVoltage(GetAdc(), 0, &v), ERR_SUCCESS);
    QCOMPARE(v, 24.5);
    ZuAuxSim::hold(QStringLiteral("Battery/BatteryVoltageStatus"), 12);
    uint8_t level = 0;
    QCOMPARE(Battery_getBatteryVoltageStatus(GetBattery(), &level), ERR_SUCCESS);
    QCOMPARE(level, uint8_t(12));
}

void TestSim::automaticBacklight()
{
    BacklightHandle h = GetBacklight();
    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), 0);
    QCOMPARE(Backlight_setIntensity(h, 180), ERR_SUCCESS);
    QCOMPARE(Backlight_startAutomaticBL(h), ERR_SUCCESS);
    uint8_t dark = 0, bright = 0, manual = 0, running = 0;
    QCOMPARE(Backlight_getAutomaticBLStatus(h, &running), ERR_SUCCESS);
    QCOMPARE(running, uint8_t(1));
    QCOMPARE(Backlight_getIntensity(h, &dark), ERR_SUCCESS);
    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), 5000);
    QCOMPARE(Backlight_getIntensity(h, &bright), ERR_SUCCESS);
    QVERIFY2(dark < bright, qPrintable(QStringLiteral("%1 %2").arg(dark).arg(bright)));
    QCOMPARE(bright, uint8_t(255));
    QCOMPARE(
        Lightsensor_startAverageCalc(GetLightsensor(), 4, 4, 80, LIGHTSENSOR_AUTO_RANGE), ERR_SENSOR_BUSY);

    QCOMPARE(Backlight_stopAutomaticBL(h), ERR_SUCCESS);
    QCOMPARE(Backlight_getIntensity(h, &manual), ERR_SUCCESS);
    QCOMPARE(manual, uint8_t(180));
    QCOMPARE(Lightsensor_startAverageCalc(GetLightsensor(), 4, 4, 80, LIGHTSENSOR_AUTO_RANGE), ERR_SUCCESS);
}

void TestSim::firmwareRun_data()
{
    QTest::addColumn<int>("endsWith");
    QTest::addColumn<int>("finalState");

    // clang-format off
    QTest::newRow("done") << 0 << int(UPGRADE_DONE);
    QTest::newRow("verify error") << int(ERR_FLASH_VERIFY) << int(UPGRADE_COMPLETE_WITH_ERROR);
    // clang-format on
}

void TestSim::firmwareRun()
{
    QFETCH(int, endsWith);
    QFETCH(int, finalState);

    QTemporaryDir dir;
    QFile image(dir.filePath(QStringLiteral("fpga.mcs")));
    QVERIFY(image.open(QIODevice::WriteOnly));
    image.write(":020000040000FA\n");
    image.close();
    ZuAuxSim::setValue(QStringLiteral("Unit/UpgradeEndsWithError"), endsWith);

    FirmwareUpgradeHandle h = GetFirmwareUpgrade();
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(FirmwareUpgrade_startFpgaUpgrade(h, QFile::encodeName(image.fileName()).constData(), false),
        ERR_SUCCESS);
    QCOMPARE(
        FirmwareUpgrade_startSSUpgrade(h, QFile::encodeName(image.fileName()).constData(), false), ERR_BUSY);

    UpgradeStatus status { UPGRADE_INITIATING, 0, ERR_SUCCESS };
    QList<int> states;
    int lastPercent = 0;
    int polls = 0;
    do {
        QCOMPARE(FirmwareUpgrade_getUpgradeStatus(h, &status, true), ERR_SUCCESS);
        QVERIFY(states.isEmpty() || status.state >= states.last());
        QVERIFY(status.percent >= lastPercent && status.percent <= 100);
        if (states.isEmpty() || states.last() != status.state)
            states << status.state;
        lastPercent = status.percent;
        ++polls;
    } while (status.state <= UPGRADE_VERIFYING && polls < 1000);

    // Every stage shows up on the way, and the waiting status call paces the loop.
    const QList<int> stages { 0, 1, 2, 3, 4, 5, finalState };
    QCOMPARE(states, stages);
    QCOMPARE(int(status.state), finalState);
    QCOMPARE(int(status.errorCode), endsWith);
    QCOMPARE(int(status.percent), endsWith == 0 ? 100 : 99);
    QVERIFY2(clock.elapsed() >= 1500 && clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QVERIFY2(polls < 150, qPrintable(QString::number(polls)));

    // A finished run makes room for the next one.
    QCOMPARE(
        FirmwareUpgrade_startFrontVerification(h, QFile::encodeName(image.fileName()).constData(), false),
        ERR_SUCCESS);
}

void TestSim::firmwareStartFailures()
{
    FirmwareUpgradeHandle h = GetFirmwareUpgrade();
    UpgradeStatus status { UPGRADE_FLASHING, 42, ERR_SUCCESS };
    QCOMPARE(FirmwareUpgrade_getUpgradeStatus(h, &status, false), ERR_NOT_INITIALISED);
    QCOMPARE(int(status.percent), 42);
    QCOMPARE(FirmwareUpgrade_startSSVerification(h, "/nonexistent/ss.hex", false), ERR_FILE_OPEN);
    QCOMPARE(FirmwareUpgrade_startFrontUpgrade(h, nullptr, false), ERR_INVALID_PARAMETER);
    QTemporaryDir dir;
    QFile empty(dir.filePath(QStringLiteral("empty.hex")));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    QCOMPARE(FirmwareUpgrade_startFrontUpgrade(h, QFile::encodeName(empty.fileName()).constData(), false),
        ERR_FILE_FORMAT);

    QCOMPARE(FirmwareUpgrade_shutDown(h), ERR_SUCCESS);
    QCOMPARE(FirmwareUpgrade_shutDown(h), ERR_SUCCESS);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("FirmwareUpgrade/ShutDownCount")).toInt(), 2);
}

void TestSim::texts()
{
    QSet<QByteArray> seen;
    const int codes[] = { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 34 };
    for (int code : codes) {
        const QByteArray text = GetErrorStringA(eErr(code));
        QVERIFY(!text.isEmpty());
        QVERIFY2(text != "Unknown error", qPrintable(QString::number(code)));
        seen.insert(text);
    }
    QCOMPARE(seen.size(), int(std::size(codes)));
    QCOMPARE(QByteArray(GetErrorStringA(eErr(21))), QByteArray("Unknown error"));
    QCOMPARE(QByteArray(GetErrorStringA(eErr(-1))), QByteArray("Unknown error"));
    for (uint16_t value : { uint16_t(0), uint16_t(5), uint16_t(31), uint16_t(65535) }) {
        QVERIFY(GetHwErrorStatusStringA(value) && *GetHwErrorStatusStringA(value));
        QVERIFY(GetStartupReasonStringA(value) && *GetStartupReasonStringA(value));
    }
}

void TestSim::handles()
{
    // Handles are fixed per family, so one never released costs nothing.
    QVERIFY(GetAbout() != nullptr);
    QCOMPARE(GetAbout(), GetAbout());
    QCOMPARE(GetTelematics(), GetTelematics());
    QVERIFY(static_cast<void*>(GetAbout()) != static_cast<void*>(GetConfig()));
    uint8_t intensity = 0;
    QCOMPARE(Backlight_getIntensity(nullptr, &intensity), ERR_INVALID_HANDLE);
}

QTEST_GUILESS_MAIN(TestSim)
#include "tst_sim.moc"
