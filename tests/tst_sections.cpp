#include "Sections.h"
#include "simunit.h"
#include "zuaux2.h"

#include <QTest>

using namespace Korvane;

namespace
{

// Stored and live values alike: the unit reports exactly this from now on.
void put(const QString& key, const QVariant& value)
{
    ZuAuxSim::setValue(key, value);
    ZuAuxSim::hold(key, value);
}

QString err(int code)
{
    return QStringLiteral("Error(%1) %2").arg(code).arg(QString::fromLatin1(GetErrorStringA(eErr(code))));
}

const QString degC = QString::fromLatin1("\xB0"
                                         "C");

// Minutes counts that exercise days, hours and minutes.
const char timerCounts[] = "1505,59,0,1440,60,1,12345";
const QStringList timerTexts = { "1505 min (1 days, 1h, 5min)", "59 min (0 days, 0h, 59min)",
    "0 min (0 days, 0h, 0min)", "1440 min (1 days, 0h, 0min)", "60 min (0 days, 1h, 0min)",
    "1 min (0 days, 0h, 1min)", "12345 min (8 days, 13h, 45min)" };

} // namespace

class tst_sections : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void diagnostics_data();
    void diagnostics();
    void diagnosticCodesCoverTheirLines();
    void eeprom();
    void eepromWithoutAddOn();
    void adc();
    void battery();
    void batteryFailingEveryStep();
    void batteryAbsent_data();
    void batteryAbsent();
    void cpuBoardAndPlatform();
};

void tst_sections::diagnostics_data()
{
    QTest::addColumn<int>("shutDownReason");
    QTest::addColumn<int>("firstSensorCode");
    QTest::addColumn<QString>("shutDownLine");

    QTest::newRow("reason 31 is a word") << 31 << 0 << "ShutDown reason: NoError \n";
    QTest::newRow("reason 0 is a number") << 0 << 0 << "ShutDown reason: 0 \n";
    QTest::newRow("reason 30 is a number") << 30 << 0 << "ShutDown reason: 30 \n";
    QTest::newRow("first sensor fails") << 31 << 1 << "ShutDown reason: NoError \n";
    QTest::newRow("first sensor unsupported") << 31 << 2 << "ShutDown reason: NoError \n";
}

void tst_sections::diagnostics()
{
    QFETCH(int, shutDownReason);
    QFETCH(int, firstSensorCode);
    QFETCH(QString, shutDownLine);

    put("Diagnostic/StartupReason", 3);
    put("Diagnostic/ShutDownReason", shutDownReason);
    put("Diagnostic/HwErrorStatus", 0);
    put("Diagnostic/Timer", timerCounts);
    put("Diagnostic/MinTemp", -21);
    put("Diagnostic/MaxTemp", 74);
    put("Diagnostic/PowerCycles", 812);
    put("Diagnostic/SSTemp", 43);
    put("Diagnostic/PCBTemp", -5);
    // Every sensor type, one unknown, and a type seen twice.
    const QStringList sensorLabels = { "CPU", "box", "environment", "board", "backplane", "chipsets", "video",
        "other", "unknown", "CPU" };
    const int types[] = { 0, 1, 2, 3, 4, 5, 6, 7, 12, 0 };
    put("Diagnostic/PMSensorCount", sensorLabels.size());
    QString sensors;
    for (int index = 0; index < sensorLabels.size(); ++index) {
        put(QStringLiteral("Diagnostic/PMTemp_%1").arg(index), 30 + index);
        put(QStringLiteral("Diagnostic/PMTempType_%1").arg(index), types[index]);
        sensors += QStringLiteral("JIDA %1 temp: %2 ").arg(sensorLabels[index]).arg(30 + index) + degC + "\n";
    }
    if (firstSensorCode != 0) {
        ZuAuxSim::forceCode("Diagnostic_getPMTemp", firstSensorCode);
        sensors.clear();
    }

    const QStringList timerLabels = { "Total run time", "Total suspend time", "Total heat time",
        "Total run time 40-60" + degC, "Total run time 60-70" + degC, "Total run time 70-80" + degC,
        "Total run time above 80" + degC };
    QString expected = "Diagnostic data:\nStartup reason: " + QString::fromLatin1(GetStartupReasonStringA(3))
        + " \n" + shutDownLine + "HW error status: " + QString::fromLatin1(GetHwErrorStatusStringA(0))
        + " \n";
    for (int i = 0; i < timerLabels.size(); ++i)
        expected += timerLabels[i] + ": " + timerTexts[i] + " \n";
    expected += "Minimum temp: -21 " + degC + "\nMaximum temp: 74 " + degC
        + "\nNumber of power cycles: 812 \n" + sensors + "SS temp: 43 " + degC + "\nPCB temp: -5 " + degC
        + "\n";

    QCOMPARE(readDiag(), expected);
    // The sensor loop asks one index past the last sensor, and no further.
    QCOMPARE(callsTo("Diagnostic_getPMTemp").size(), firstSensorCode != 0 ? 1 : sensorLabels.size() + 1);
    QCOMPARE(callsTo("Diagnostic_release").size(), 1);
}

// One timer call and one min/max call: their code applies to all their lines.
void tst_sections::diagnosticCodesCoverTheirLines()
{
    ZuAuxSim::forceCode("Diagnostic_getTimer", 18);
    ZuAuxSim::forceCode("Diagnostic_getMinMaxTemp", 7);
    const QString text = readDiag();
    QCOMPARE(text.count(": N/A\n"), 7);
    QVERIFY(text.contains("\nTotal run time above 80" + degC + ": N/A\nMinimum temp: "));
    QVERIFY(text.contains("\nMinimum temp: " + err(7) + "\nMaximum temp: " + err(7) + "\n"));
}

void tst_sections::eeprom()
{
    const QStringList texts = { "MainPCBSerial", "UnitSerial", "MainPCBArt", "MainManufacturingDate",
        "MainHWversion", "MainProdRev", "MainProdArtNr", "AddOnPCBSerial", "AddOnPCBArt",
        "AddOnManufacturingDate", "AddOnHWversion" };
    for (const QString& key : texts)
        put("About/" + key, key.toLower());
    const QStringList counts = { "ETH", "CAN", "Video", "USB", "Serial", "DigIO", "CfgIn", "PWMOut" };
    for (int i = 0; i < counts.size(); ++i)
        put("About/NrOf" + counts[i] + "Connections", i);
    put("About/NrOfButtons", 10);
    put("About/IsDisplayAvailable", 1);
    put("About/IsTouchScreenAvailable", 0);
    put("About/IsWLANMounted", 1);
    put("About/IsGPSMounted", 0);
    put("About/IsBTMounted", 1);
    put("About/IsGPRSMounted", 1);
    ZuAuxSim::forceCode("About_getNrOfSerialConnections", 18);
    ZuAuxSim::forceCode("About_getNrOfUSBConnections", 2);
    ZuAuxSim::forceCode("About_getMainProdRev", 9);

    const QString expected = "Mainboard:\nMain PCB Serial: mainpcbserial \nUnit serial number: unitserial \n"
                             "Main PCB article number: mainpcbart \n"
                             "Main manufacturing date: mainmanufacturingdate \n"
                             "Main hardware version: mainhwversion \nMain product revision: "
        + err(9)
        + "\nMain product art.nr: mainprodartnr \nNumber of Ethernet connections: 0\n"
          "Number of CAN connections: 1\nNumber of Video connections: 2\nNumber of Serial connections: N/A\n"
          "Number of Digital input connections: 5\nDisplay device mounted: Yes\nTouchscreen device mounted: "
          "No\n"
          "Number of Configurable inputs: 6\nNumber of PWM outputs: 7\nNumber of Configurable buttons: 10\n"
          "\nAddon/Telematics board:\nAddon PCB serial: addonpcbserial \n"
          "Addon board article number: addonpcbart \nAddon manufacturing date: addonmanufacturingdate \n"
          "Addon hardware version: addonhwversion \nWLAN device mounted: Yes\nGPS device mounted: No\n"
          "Bluetooth device mounted: Yes\nGSM/GPRS device mounted: Yes\n";
    QCOMPARE(readEeprom(), expected);
    QCOMPARE(callsTo("About_release").size(), 1);
}

void tst_sections::eepromWithoutAddOn()
{
    for (const char* operation : { "About_getAddOnPCBSerial", "About_getAddOnPCBArt",
             "About_getAddOnManufacturingDate", "About_getAddOnHWversion", "About_getIsWLANMounted",
             "About_getIsGPSMounted", "About_getIsBTMounted", "About_getIsGPRSMounted" })
        ZuAuxSim::forceCode(operation, 2);
    put("About/NrOfButtons", 8);
    QVERIFY(readEeprom().endsWith("\nNumber of Configurable buttons: 8\n\nAddon/Telematics board:\n"));
}

void tst_sections::adc()
{
    const QStringList labels = { "24V in", "", "12V", "12V video", "5V", "3.3V", "TFT", "5V STB", "1.9V",
        "1.8V", "1.5V", "1.2V", "1.05V", "1.0V", "0.9V", "SS VREF", "24V Backup", "2.5V", "1.1V", "1.3V PER",
        "1.3V VDDA", "3V3 STBY", "VPMIC", "VMAIN" };
    QString expected = "ADC values\n";
    QStringList asked;
    for (int channel = 0; channel < labels.size(); ++channel) {
        put(QStringLiteral("Adc/Voltage_%1").arg(channel), channel + 0.5);
        if (channel == 1)
            continue; // never read
        asked << QStringLiteral("Adc_getVoltage(%1) -> 0").arg(channel);
        expected += QStringLiteral("Voltage %1: %2 V\n").arg(labels[channel]).arg(channel + 0.5);
    }
    put("Adc/Voltage_0", 24.5);
    put("Adc/Voltage_3", 12.0);
    put("Adc/Voltage_8", 1.8765432);
    expected.replace("24V in: 0.5 V", "24V in: 24.5 V");
    expected.replace("12V video: 3.5 V", "12V video: 12 V");
    expected.replace("1.9V: 8.5 V", "1.9V: 1.87654 V");
    QCOMPARE(readAdc(), expected);
    QCOMPARE(callsTo("Adc_getVoltage("), asked);
}

void tst_sections::battery()
{
    put("Unit/HasBattery", 1);
    put("Battery/HwErrorStatus", 4);
    put("Battery/BatteryHWversion", "HW2");
    put("Battery/BatterySwVersion", "1.4.0.17");
    put("Battery/BatterySerial", "BAT-123");
    put("Battery/BatteryChargingStatus", 3);
    put("Battery/PowerSource", 7);
    put("Battery/BatteryVoltageStatus", 87);
    put("Battery/BatteryTemp", -3);
    put("Battery/MinTemp", -30);
    put("Battery/MaxTemp", 61);
    put("Battery/Timer", QString(timerCounts) + ",3,4");

    const QStringList timerLabels = { "on main power", "on battery power", "< -20" + degC, "-20-0" + degC,
        "0-40" + degC, "40-60" + degC, "60-70" + degC, "70-80" + degC, "above 80" + degC };
    QString expected = "Battery error! Overcurrent detected\nBattery HW version: HW2\n"
                       "Battery SW version: 1.4.0.17\nBattery serial number: BAT-123\n"
                       "Temperature is too low to charge the battery\nPower source: External power\n"
                       "Battery voltage level: 87%\nBattery temperature: -3 deg C\n"
                       "Battery minimum temp: -30 deg C, maximum temp: 61 deg C\n";
    const QStringList times
        = timerTexts + QStringList { "3 min (0 days, 0h, 3min)", "4 min (0 days, 0h, 4min)" };
    for (int i = 0; i < timerLabels.size(); ++i)
        expected += "Total run time " + timerLabels[i] + ": " + times[i] + " \n";
    QCOMPARE(readBatteryInfo(), expected);
    QCOMPARE(callsTo("Battery_release").size(), 1);

    // The two status tables, at their ends and beyond them.
    const struct {
        int hwError, charging, source;
        const char* lines;
    } cases[] = {
        { 0, 0, 0, "Battery reports no HW errors\n|Battery is not being charged\nPower source: Battery\n" },
        { 1, 1, 1, "Battery error! The thermistor temp sensor is not working\n|Battery is being charged\n" },
        { 2, 2, 1, "Battery error! The secondary temp sensor is not working\n|Battery is fully charged\n" },
        { 3, 4, 1, "Battery error! Charging failed\n|Temperature is too high to charge the battery\n" },
        { 5, 5, 1, "Battery error! Battery not initiated\n|Could not get battery charging status\n" },
        { 6, 6, 0, "Battery SW version: 1.4.0.17\n|Battery serial number: BAT-123\nPower source: Battery\n" },
    };
    for (const auto& c : cases) {
        put("Battery/HwErrorStatus", c.hwError);
        put("Battery/BatteryChargingStatus", c.charging);
        put("Battery/PowerSource", c.source);
        const QStringList parts = QString::fromLatin1(c.lines).split('|');
        const QString text = readBatteryInfo();
        QVERIFY2(text.startsWith(
                     c.hwError <= 5 ? parts[0] + "Battery HW version: HW2\n" : "Battery HW version: HW2\n"),
            c.lines);
        QVERIFY2(text.contains(parts[1]), c.lines);
    }
}

void tst_sections::batteryFailingEveryStep()
{
    put("Unit/HasBattery", 1);
    const struct {
        const char* operation;
        int code;
        const char* what;
    } steps[] = {
        { "Battery_getHwErrorStatus", 1, "battery error status code" },
        { "Battery_getBatteryHWversion", 2, "battery HW version" },
        { "Battery_getBatterySwVersion", 18, "battery SW version" },
        { "Battery_getBatterySerial", 3, "battery serial number" },
        { "Battery_getBatteryChargingStatus", 6, "battery charging status" },
        { "Battery_getPowerSource", 7, "power source" },
        { "Battery_getBatteryVoltageStatus", 8, "battery voltage level" },
        { "Battery_getBatteryTemp", 19, "battery temperature" },
        { "Battery_getMinMaxTemp", 13, "battery min/max temperature" },
        { "Battery_getTimer", 14, "battery diagnostic times" },
    };
    QString expected;
    for (const auto& step : steps) {
        ZuAuxSim::forceCode(step.operation, step.code);
        // Codes 2 and 18 are failures here like any other.
        expected += QStringLiteral("Could not get %1. %2\n").arg(QLatin1String(step.what), err(step.code));
    }
    QCOMPARE(readBatteryInfo(), expected);
}

void tst_sections::batteryAbsent_data()
{
    QTest::addColumn<int>("fitted");
    QTest::addColumn<int>("code");

    QTest::newRow("not fitted") << 0 << 0;
    QTest::newRow("query fails") << 1 << 7;
    QTest::newRow("query unsupported") << 1 << 2;
}

void tst_sections::batteryAbsent()
{
    QFETCH(int, fitted);
    QFETCH(int, code);

    put("Unit/HasBattery", fitted);
    if (code != 0)
        ZuAuxSim::forceCode("Battery_isBatteryPresent", code);
    QCOMPARE(readBatteryInfo(), QStringLiteral("External battery not available.\n"));
    QCOMPARE(callsTo("Battery_").size(), 1);
}

void tst_sections::cpuBoardAndPlatform()
{
    QCOMPARE(readCpuBoardInfo(), QString());
    platformType platform = PLATFORM_TYPE2;
    QVERIFY(GetPlatform(&platform));
    QCOMPARE(platform, PLATFORM_STANDARD);
    QVERIFY(ZuAuxSim::trace().isEmpty());
}

QTEST_GUILESS_MAIN(tst_sections)
#include "tst_sections.moc"
