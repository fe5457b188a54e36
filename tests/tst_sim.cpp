// The simulated unit in one process: what each shipped profile answers, the
// start-up rule, injected codes, the call trace, text buffers and firmware runs.
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
template <class T, class Op> Probe read(Op op)
{
    return [op] {
        T value = static_cast<T>(untouched);
        const int code = op(&value);
        if (code == 0 || value != static_cast<T>(untouched))
            return QStringLiteral("%1 %2").arg(code).arg(value);
        return QString::number(code);
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

} // namespace

class tst_sim : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void profiles_data()
    {
        QTest::addColumn<Probe>("probe");
        QTest::addColumn<QString>("answers"); // full | headless | unsupported | faulty | quirky

        QTest::newRow("heater") << get(Config_getHeatingTempLimit, GetConfig)
                                << "0 -25 | 2 | 2 | 0 -25 | 0 -25";
        QTest::newRow("battery") << get(Battery_isBatteryPresent, GetBattery) << "0 1 | 0 0 | 2 | 0 1 | 0 1";
        QTest::newRow("battery temperature")
            << get(Battery_getBatteryTemp, GetBattery) << "0 31 | 2 | 2 | 7 | 0 31";
        QTest::newRow("power source") << get(Battery_getPowerSource, GetBattery) << "0 1 | 2 | 2 | 0 1 | 0 0";
        QTest::newRow("ADC 1") << getAt(Adc_getVoltage, GetAdc, 1) << "0 24.4 | 2 | 2 | 18 | 0 24.4";
        QTest::newRow("CAN net 1") << getAt(CanSetting_getBaudrate, GetCanSetting, 1)
                                   << "0 125 | 2 | 2 | 0 125 | 0 83";
        QTest::newRow("CAN net 3") << getAt(CanSetting_getBaudrate, GetCanSetting, 3) << "2 | 2 | 2 | 2 | 2";
        QTest::newRow("input 2 mode") << getAt(CfgIn_getCfgInMode, GetCfgIn, 2) << "0 0 | 2 | 2 | 0 0 | 0 9";
        QTest::newRow("start-up trigger") << Probe([] {
            return QString::number(Config_setStartupTriggerConfig(GetConfig(), TRIGGER_BOTH));
        }) << "0 | 0 | 2 | 34 | 0";
    }

    void profiles()
    {
        QFETCH(Probe, probe);
        QFETCH(QString, answers);

        QStringList actual;
        for (const char* profile : { "full", "headless", "unsupported", "faulty", "quirky" }) {
            resetUnit(QString::fromLatin1(profile));
            actual << probe();
        }
        QCOMPARE(actual.join(QStringLiteral(" | ")), answers);
    }

    void calls_data()
    {
        // Each row is named by the whole trace its call must give.
        QTest::addColumn<Call>("call");

        QTest::newRow("GetConfig() | Config_getButtonFunction(3) -> 4")
            << Call([] { return Config_getButtonFunction(GetConfig(), 3, nullptr); });
        QTest::newRow("GetPWMOut() | PWMOut_setPWMOutputChannelFrequency(1, 1.23457e+06) -> 4")
            << Call([] { return PWMOut_setPWMOutputChannelFrequency(GetPWMOut(), 1, 1234567.0f); });
        QTest::newRow(
            "GetZuAuxPrivate() | ZuAuxPrivate_setFileSetting(\"ZusettingsGpsPort\", \"/dev/ttyS1\") -> 0")
            << Call([] {
                   return ZuAuxPrivate_setFileSetting(GetZuAuxPrivate(), "ZusettingsGpsPort", "/dev/ttyS1");
               });
        QTest::newRow("GetZuAuxPrivate() | ZuAuxPrivate_getFileSetting(\"ZusettingsGsmPort\") -> 1") << Call(
            [] { return ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "ZusettingsGsmPort", nullptr, 0); });
        QTest::newRow("GetConfig() | Config_setButtonFunction(11, 0) -> 2")
            << Call([] { return Config_setButtonFunction(GetConfig(), 11, BUTTON_ONLY_MP_ACTION); });
        QTest::newRow("GetBuzzer() | Buzzer_setTrigger(1) -> 0")
            << Call([] { return Buzzer_setTrigger(GetBuzzer(), true); });
        // Codes are forced by exact name; "*" answers for every other operation.
        QTest::newRow("GetBuzzer() | Buzzer_getVolume() -> 0") << Call([] {
            uint16_t volume = 0;
            ZuAuxSim::forceCode(QStringLiteral("buzzer_getvolume"), 7);
            return Buzzer_getVolume(GetBuzzer(), &volume);
        });
        QTest::newRow("GetBacklight() | Backlight_getIntensity() -> 7 | Backlight_setIntensity(10) -> 9")
            << Call([] {
                   ZuAuxSim::forceCode(QStringLiteral("Backlight_getIntensity"), 7);
                   ZuAuxSim::forceCode(QStringLiteral("*"), 9);
                   const BacklightHandle h = GetBacklight();
                   uint8_t intensity = 0;
                   Backlight_getIntensity(h, &intensity);
                   return Backlight_setIntensity(h, 10);
               });
        // Text functions leave no line, and a call without a handle is refused.
        QTest::newRow("GetBattery() | Battery_release() | Backlight_getIntensity() -> 3") << Call([] {
            Battery_release(GetBattery());
            GetErrorStringA(ERR_BUSY);
            return Backlight_getIntensity(nullptr, nullptr);
        });
    }

    void calls()
    {
        QFETCH(Call, call);

        const QStringList lines = QString::fromLatin1(QTest::currentDataTag()).split(QStringLiteral(" | "));
        QTemporaryDir dir;
        const QString state = dir.filePath(QStringLiteral("state.ini"));
        ZuAuxSim::reset(QStringLiteral("full"), state);
        const int code = call();
        QCOMPARE(code, lines.last().section(QStringLiteral(" -> "), -1).toInt());
        QCOMPARE(ZuAuxSim::trace(), lines);
        // Only a setter that succeeds saves anything.
        QCOMPARE(QFile::exists(state), code == 0 && lines.last().contains(QLatin1String("_set")));
    }

    void startupRule()
    {
        ConfigHandle h = GetConfig();
        // No trigger is no setting; the CAN message alone cannot start the unit.
        QCOMPARE(Config_setStartupTriggerConfig(h, TriggerConf(0)), ERR_INVALID_PARAMETER);
        QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_CAN), ERR_STARTUP_TRIGGER_CONFLICT);
        // With the button alone, the last start-up button cannot lose its role.
        QCOMPARE(Config_setButtonFunction(h, 2, BUTTON_AS_STARTUP_TRIG), ERR_SUCCESS);
        QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_FRONT_BUTTON), ERR_SUCCESS);
        QCOMPARE(Config_setButtonFunction(h, 2, BUTTON_AS_ACTION_TRIG), ERR_STARTUP_TRIGGER_CONFLICT);
        // With the signal as a trigger, buttons are free.
        QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_ALL), ERR_SUCCESS);
        QCOMPARE(Config_setButtonFunction(h, 2, BUTTON_AS_ACTION_TRIG), ERR_SUCCESS);
        QCOMPARE(Config_setStartupTriggerConfig(h, TRIGGER_FRONT_BUTTON), ERR_STARTUP_TRIGGER_CONFLICT);
    }

    void textBuffers_data()
    {
        QTest::addColumn<uint32_t>("size");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("text");

        QTest::newRow("size 0 refused") << 0u << 4 << QByteArray();
        QTest::newRow("size 1") << 1u << 0 << QByteArray("");
        QTest::newRow("cut") << 5u << 0 << QByteArray("SN-0");
        QTest::newRow("exact") << 10u << 0 << QByteArray("SN-00123\xB0");
    }

    void textBuffers()
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
        QCOMPARE(
            QByteArray(buffer, sizeof buffer), written + QByteArray(sizeof buffer - written.size(), '\x7f'));
    }

    void firmwareRun_data()
    {
        QTest::addColumn<int>("endsWith"); // rows are named by the final state, percent and code

        QTest::newRow("6 100 0") << 0;
        QTest::newRow("7 99 12") << int(ERR_FLASH_VERIFY);
    }

    void firmwareRun()
    {
        QFETCH(int, endsWith);

        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("fpga.mcs"));
        QVERIFY(writeFile(path, ":020000040000FA\n"));
        const QByteArray image = QFile::encodeName(path);
        FirmwareUpgradeHandle h = GetFirmwareUpgrade();
        ZuAuxSim::setValue(QStringLiteral("Unit/UpgradeEndsWithError"), endsWith);

        QCOMPARE(FirmwareUpgrade_startFpgaUpgrade(h, image.constData(), false), ERR_SUCCESS);
        QCOMPARE(FirmwareUpgrade_startSSUpgrade(h, image.constData(), false), ERR_BUSY);
        UpgradeStatus status { UPGRADE_INITIATING, 0, ERR_SUCCESS };
        QList<int> states;
        int polls = 0;
        // The waiting status call paces the loop through the two seconds of a run;
        // every stage shows up in order and the percentage never goes back.
        for (int percent = 0; status.state <= UPGRADE_VERIFYING && ++polls < 1000; percent = status.percent) {
            QCOMPARE(FirmwareUpgrade_getUpgradeStatus(h, &status, true), ERR_SUCCESS);
            QVERIFY(status.percent >= percent && status.percent <= 100);
            if (states.isEmpty() || states.last() != status.state)
                states << status.state;
        }
        QCOMPARE(states, (QList<int> { 0, 1, 2, 3, 4, 5, status.state }));
        QCOMPARE(QStringLiteral("%1 %2 %3").arg(status.state).arg(status.percent).arg(status.errorCode),
            QTest::currentDataTag());
        QVERIFY2(polls > 20 && polls < 150, qPrintable(QString::number(polls)));
        // A finished run makes room for the next one.
        QCOMPARE(FirmwareUpgrade_startFrontVerification(h, image.constData(), false), ERR_SUCCESS);
    }

    void texts()
    {
        // Just past the end of each list comes the unknown text.
        QCOMPARE(QByteArray(GetErrorStringA(eErr(21))), QByteArray("Unknown error"));
        QCOMPARE(QByteArray(GetHwErrorStatusStringA(8)), QByteArray("Unknown hardware error"));
        QCOMPARE(QByteArray(GetStartupReasonStringA(9)), QByteArray("Unknown start-up reason"));
    }

    void numberTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("whole"); // as a 16-bit temperature reads it
        QTest::addColumn<double>("number"); // as a voltage reads it

        QTest::newRow("plain") << "350" << 350 << 350.0;
        QTest::newRow("negative") << "-12" << -12 << -12.0;
        QTest::newRow("plus sign") << "+7" << 7 << 7.0;
        QTest::newRow("blanks around") << " 42 " << 42 << 42.0;
        QTest::newRow("fraction rounds") << "7.6" << 8 << 7.6;
        QTest::newRow("exponent") << "1e2" << 100 << 100.0;
        QTest::newRow("sign alone") << "-" << 0 << 0.0;
    }

    // Values are kept as text; how a reading turns it into its number.
    void numberTexts()
    {
        QFETCH(QString, text);
        QFETCH(int, whole);
        QFETCH(double, number);

        ZuAuxSim::hold(QStringLiteral("Diagnostic/PCBTemp"), text);
        ZuAuxSim::hold(QStringLiteral("Adc/Voltage_1"), text);
        int16_t celsius = 1;
        QCOMPARE(Diagnostic_getPCBTemp(GetDiagnostic(), &celsius), ERR_SUCCESS);
        QCOMPARE(int(celsius), whole);
        double volts = 1;
        QCOMPARE(Adc_getVoltage(GetAdc(), 1, &volts), ERR_SUCCESS);
        QCOMPARE(volts, number);
    }
};

QTEST_GUILESS_MAIN(tst_sim)
#include "tst_sim.moc"
