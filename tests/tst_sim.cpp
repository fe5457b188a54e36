// The simulated unit in one process: what each shipped profile answers, value
// checks, the start-up rule, injected codes, the call trace, text buffers,
// the automatic backlight and firmware runs.
#include "simunit.h"
#include "zuaux2.h"

#include <QTemporaryDir>
#include <QtTest>

#include <functional>

using namespace Korvane;

using Probe = std::function<QString()>;
using Call = std::function<int()>;
Q_DECLARE_METATYPE(Probe)
Q_DECLARE_METATYPE(Call)

namespace
{

// What a failing call must leave in its output.
constexpr int untouched = 77;

// "<code> <output>" after success; after a failure the code alone, as long as
// the output was left as it was.
QString answer(int code, const QString& output, bool outputUntouched)
{
    if (code != 0)
        return outputUntouched ? QString::number(code) : QStringLiteral("%1, output written").arg(code);
    return output.isNull() ? QStringLiteral("0") : QStringLiteral("0 ") + output;
}

template <class T, class Op> Probe read(Op op)
{
    return [op] {
        T value = static_cast<T>(untouched);
        const int code = op(&value);
        return answer(code, QString::number(value), value == static_cast<T>(untouched));
    };
}

template <class H, class T> Probe get(eErr (*op)(H, T*), H (*handle)())
{
    return read<T>([=](T* value) { return op(handle(), value); });
}

template <class H, class T> Probe getAt(eErr (*op)(H, uint8_t, T*), H (*handle)(), uint8_t index)
{
    return read<T>([=](T* value) { return op(handle(), index, value); });
}

Probe call(const Call& c)
{
    return [c] { return answer(c(), QString(), true); };
}

eErr pmSensorType(DiagnosticHandle h, uint8_t index, PMTempSensorType* type)
{
    int16_t celsius = 0;
    return Diagnostic_getPMTemp(h, index, &celsius, type);
}

} // namespace

class TestSim : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void profiles_data();
    void profiles();
    void calls_data();
    void calls();
    void startupRule();
    void faultInjection();
    void textBuffers_data();
    void textBuffers();
    void automaticBacklight();
    void firmwareRun_data();
    void firmwareRun();
    void texts();
    void handles();
};

void TestSim::init()
{
    resetUnit(QStringLiteral("full"));
}

void TestSim::profiles_data()
{
    QTest::addColumn<Probe>("probe");
    QTest::addColumn<QString>("answers"); // full | headless | unsupported | faulty

    QTest::newRow("heater") << get(Config_getHeatingTempLimit, GetConfig) << "0 -25 | 2 | 2 | 0 -25";
    QTest::newRow("CAN 1 frame type")
        << getAt(CanSetting_getFrameType, GetCanSetting, 1) << "0 0 | 2 | 2 | 8";
    QTest::newRow("button 10") << getAt(Config_getButtonFunction, GetConfig, 10) << "0 0 | 2 | 2 | 0 0";
    QTest::newRow("automatic backlight")
        << get(Backlight_getAutomaticBLStatus, GetBacklight) << "0 0 | 2 | 2 | 0 1";
    QTest::newRow("battery") << get(Battery_isBatteryPresent, GetBattery) << "0 1 | 0 0 | 2 | 0 1";
    QTest::newRow("battery temperature") << get(Battery_getBatteryTemp, GetBattery) << "0 31 | 2 | 2 | 7";
    QTest::newRow("telematics") << get(Telematics_getTelematicsAvailable, GetTelematics)
                                << "0 1 | 0 0 | 2 | 0 1";
    QTest::newRow("ADC 1") << getAt(Adc_getVoltage, GetAdc, 1) << "0 24.4 | 2 | 2 | 18";
    QTest::newRow("PM sensor 0") << getAt(pmSensorType, GetDiagnostic, 0) << "0 0 | 0 0 | 2 | 4";
    QTest::newRow("start-up trigger")
        << call([] { return Config_setStartupTriggerConfig(GetConfig(), TRIGGER_BOTH); }) << "0 | 0 | 2 | 34";
    QTest::newRow("light sensor") << call([] {
        return Lightsensor_startAverageCalc(GetLightsensor(), 4, 4, 80, LIGHTSENSOR_AUTO_RANGE);
    }) << "0 | 2 | 2 | 20";
}

void TestSim::profiles()
{
    QFETCH(Probe, probe);
    QFETCH(QString, answers);

    QStringList actual;
    for (const char* profile : { "full", "headless", "unsupported", "faulty" }) {
        resetUnit(QString::fromLatin1(profile));
        actual << probe();
    }
    QCOMPARE(actual.join(QStringLiteral(" | ")), answers);
}

void TestSim::calls_data()
{
    // Each row is named by the trace line its call must give.
    QTest::addColumn<Call>("call");

    QTest::newRow("Config_getButtonFunction(3) -> 4")
        << Call([] { return Config_getButtonFunction(GetConfig(), 3, nullptr); });
    QTest::newRow("PWMOut_setPWMOutputChannelFrequency(1, 1.23457e+06) -> 4")
        << Call([] { return PWMOut_setPWMOutputChannelFrequency(GetPWMOut(), 1, 1234567.0f); });
    QTest::newRow("ZuAuxPrivate_setFileSetting(\"ZusettingsGpsPort\", \"/dev/ttyS1\") -> 0") << Call(
        [] { return ZuAuxPrivate_setFileSetting(GetZuAuxPrivate(), "ZusettingsGpsPort", "/dev/ttyS1"); });
    QTest::newRow("ZuAuxPrivate_getFileSetting(\"ZusettingsGsmPort\") -> 1") << Call(
        [] { return ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "ZusettingsGsmPort", nullptr, 0); });
    QTest::newRow("FirmwareUpgrade_startSSVerification(\"/nonexistent/ss.hex\", 1) -> 9") << Call([] {
        return FirmwareUpgrade_startSSVerification(GetFirmwareUpgrade(), "/nonexistent/ss.hex", true);
    });
    QTest::newRow("Config_setButtonFunction(1, 3) -> 4")
        << Call([] { return Config_setButtonFunction(GetConfig(), 1, ButtonConfigEnum(3)); });
    QTest::newRow("Config_setButtonFunction(11, 0) -> 2")
        << Call([] { return Config_setButtonFunction(GetConfig(), 11, BUTTON_ONLY_MP_ACTION); });
    QTest::newRow("Buzzer_setVolume(52) -> 4") << Call([] { return Buzzer_setVolume(GetBuzzer(), 52); });
    QTest::newRow("Config_setVideoStartupPowerConfig(4) -> 4")
        << Call([] { return Config_setVideoStartupPowerConfig(GetConfig(), 4); });
}

void TestSim::calls()
{
    QFETCH(Call, call);

    const QString line = QString::fromLatin1(QTest::currentDataTag());
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("state.ini"));
    ZuAuxSim::reset(QStringLiteral("full"), state);
    const int code = call();
    QCOMPARE(code, line.section(QStringLiteral(" -> "), -1).toInt());
    QCOMPARE(callsTo(line.section(QLatin1Char('('), 0, 0)), QStringList { line });
    // Only a setter that succeeds saves anything.
    QCOMPARE(QFile::exists(state), code == 0 && line.contains(QLatin1String("_set")));
}

void TestSim::startupRule()
{
    ConfigHandle h = GetConfig();
    // No trigger at all is no valid setting; the CAN message alone cannot start the unit.
    QCOMPARE(Config_setStartupTriggerConfig(h, TriggerConf(0)), ERR_INVALID_PARAMETER);
    QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_CAN), ERR_STARTUP_TRIGGER_CONFLICT);
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
    QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_FRONT_BUTTON), ERR_STARTUP_TRIGGER_CONFLICT);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("Config/StartupTriggerConfig")).toInt(), int(TRIGGER_ALL));
}

void TestSim::faultInjection()
{
    uint8_t intensity = 0;
    uint16_t volume = 0;
    ZuAuxSim::forceCode(QStringLiteral("Backlight_getIntensity"), 7);
    ZuAuxSim::forceCode(QStringLiteral("buzzer_getvolume"), 7);
    QCOMPARE(Backlight_getIntensity(GetBacklight(), &intensity), ERR_COMMUNICATION);
    QCOMPARE(Buzzer_getVolume(GetBuzzer(), &volume), ERR_SUCCESS);
    // "*" answers for every operation without a code of its own.
    ZuAuxSim::forceCode(QStringLiteral("*"), 9);
    QCOMPARE(Backlight_getIntensity(GetBacklight(), &intensity), ERR_COMMUNICATION);
    QCOMPARE(Buzzer_getVolume(GetBuzzer(), &volume), ERR_FILE_OPEN);
    QCOMPARE(Backlight_setIntensity(GetBacklight(), 10), ERR_FILE_OPEN);
    QCOMPARE(callsTo(QStringLiteral("Backlight_")),
        (QStringList { "Backlight_getIntensity() -> 7", "Backlight_getIntensity() -> 7",
            "Backlight_setIntensity(10) -> 9" }));
    // Clearing brings back the profile's answers; the refused setter saved nothing.
    ZuAuxSim::clearCodes();
    QCOMPARE(Backlight_getIntensity(GetBacklight(), &intensity), ERR_SUCCESS);
    QCOMPARE(intensity, uint8_t(255));
}

void TestSim::textBuffers_data()
{
    QTest::addColumn<uint32_t>("size");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("size 0 refused") << 0u << 4 << QByteArray();
    QTest::newRow("size 1") << 1u << 0 << QByteArray("");
    QTest::newRow("cut") << 5u << 0 << QByteArray("SN-0");
    QTest::newRow("exact") << 10u << 0 << QByteArray("SN-00123\xB0");
}

void TestSim::textBuffers()
{
    QFETCH(uint32_t, size);
    QFETCH(int, code);
    QFETCH(QByteArray, text);

    // Nine characters, the last one outside ASCII: one byte in Latin-1.
    ZuAuxSim::setValue(QStringLiteral("About/UnitSerial"), QStringLiteral("SN-00123") + QChar(0xB0));
    char buffer[32];
    std::memset(buffer, 0x7f, sizeof buffer);
    QCOMPARE(int(About_getUnitSerial(GetAbout(), buffer, size)), code);
    // The text and its terminator, and nothing written past the caller's size.
    const QByteArray written = code == 0 ? text + '\0' : QByteArray();
    QCOMPARE(QByteArray(buffer, sizeof buffer), written + QByteArray(sizeof buffer - written.size(), '\x7f'));
}

void TestSim::automaticBacklight()
{
    // While it runs, the intensity follows the light: 20 in the dark, 255 in daylight.
    const QString intensity = QStringLiteral("Backlight/Intensity");
    QCOMPARE(Backlight_setIntensity(GetBacklight(), 180), ERR_SUCCESS);
    QCOMPARE(Backlight_startAutomaticBL(GetBacklight()), ERR_SUCCESS);
    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), 0);
    QCOMPARE(ZuAuxSim::value(intensity).toInt(), 20);
    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), 5000);
    QCOMPARE(ZuAuxSim::value(intensity).toInt(), 255);
    QCOMPARE(Backlight_stopAutomaticBL(GetBacklight()), ERR_SUCCESS);
    QCOMPARE(ZuAuxSim::value(intensity).toInt(), 180);
}

void TestSim::firmwareRun_data()
{
    QTest::addColumn<int>("endsWith");
    QTest::addColumn<QString>("end"); // state, percent, code

    QTest::newRow("done") << 0 << "6 100 0";
    QTest::newRow("verify error") << int(ERR_FLASH_VERIFY) << "7 99 12";
}

void TestSim::firmwareRun()
{
    QFETCH(int, endsWith);
    QFETCH(QString, end);

    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("fpga.mcs")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray image = QFile::encodeName(file.fileName());
    FirmwareUpgradeHandle h = GetFirmwareUpgrade();
    QCOMPARE(FirmwareUpgrade_startFpgaUpgrade(h, image.constData(), false), ERR_FILE_FORMAT);
    file.write(":020000040000FA\n");
    file.close();
    ZuAuxSim::setValue(QStringLiteral("Unit/UpgradeEndsWithError"), endsWith);

    QCOMPARE(FirmwareUpgrade_startFpgaUpgrade(h, image.constData(), false), ERR_SUCCESS);
    QCOMPARE(FirmwareUpgrade_startSSUpgrade(h, image.constData(), false), ERR_BUSY);
    UpgradeStatus status { UPGRADE_INITIATING, 0, ERR_SUCCESS };
    QList<int> states;
    int polls = 0;
    do {
        const int lastPercent = status.percent;
        QCOMPARE(FirmwareUpgrade_getUpgradeStatus(h, &status, true), ERR_SUCCESS);
        QVERIFY(status.percent >= lastPercent && status.percent <= 100);
        if (states.isEmpty() || states.last() != status.state)
            states << status.state;
    } while (status.state <= UPGRADE_VERIFYING && ++polls < 1000);

    // Every stage shows up in order, and the waiting status call paces the
    // loop through the two seconds of a run.
    QCOMPARE(states, (QList<int> { 0, 1, 2, 3, 4, 5, status.state }));
    QCOMPARE(QStringLiteral("%1 %2 %3").arg(status.state).arg(status.percent).arg(status.errorCode), end);
    QVERIFY2(polls > 20 && polls < 150, qPrintable(QString::number(polls)));
    // A finished run makes room for the next one.
    QCOMPARE(FirmwareUpgrade_startFrontVerification(h, image.constData(), false), ERR_SUCCESS);
}

void TestSim::texts()
{
    // Every code the unit uses has a text of its own.
    QSet<QByteArray> seen { "Unknown error" };
    const int codes[] = { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 34 };
    for (int code : codes)
        seen.insert(GetErrorStringA(eErr(code)));
    QCOMPARE(seen.size(), int(std::size(codes)) + 1);
    // Just past the end of each list.
    QCOMPARE(QByteArray(GetErrorStringA(eErr(21))), QByteArray("Unknown error"));
    QCOMPARE(QByteArray(GetHwErrorStatusStringA(8)), QByteArray("Unknown hardware error"));
    QCOMPARE(QByteArray(GetStartupReasonStringA(9)), QByteArray("Unknown start-up reason"));
}

void TestSim::handles()
{
    // Handle calls are traced without a code, text functions not at all, and
    // a call without a handle is refused.
    ZuAuxSim::clearTrace();
    Battery_release(GetBattery());
    GetErrorStringA(ERR_BUSY);
    QCOMPARE(Backlight_getIntensity(nullptr, nullptr), ERR_INVALID_HANDLE);
    QCOMPARE(ZuAuxSim::trace(),
        (QStringList { "GetBattery()", "Battery_release()", "Backlight_getIntensity() -> 3" }));
}

QTEST_GUILESS_MAIN(TestSim)
#include "tst_sim.moc"
