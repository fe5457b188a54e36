#include "Sections.h"
#include "simunit.h"

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

QString libraryText(int code)
{
    return QString::fromLatin1(GetErrorStringA(static_cast<eErr>(code)));
}

QString deg()
{
    return QString(QChar(0xB0)) + QLatin1Char('C');
}

// A unit with known identity, counters and temperatures.
void knownDiagnostics()
{
    put("Diagnostic/StartupReason", 3);
    put("Diagnostic/ShutDownReason", 31);
    put("Diagnostic/HwErrorStatus", 0);
    put("Diagnostic/Timer", "1505,59,0,1440,60,1,12345");
    put("Diagnostic/MinTemp", -21);
    put("Diagnostic/MaxTemp", 74);
    put("Diagnostic/PowerCycles", 812);
    put("Diagnostic/PMSensorCount", 3);
    put("Diagnostic/PMTemp_0", 48);
    put("Diagnostic/PMTempType_0", 0);
    put("Diagnostic/PMTemp_1", 39);
    put("Diagnostic/PMTempType_1", 12);
    put("Diagnostic/PMTemp_2", 51);
    put("Diagnostic/PMTempType_2", 0);
    put("Diagnostic/SSTemp", 43);
    put("Diagnostic/PCBTemp", -5);
}

QString expectedDiagnostics(const QString& shutDownLine, const QString& sensorLines)
{
    return "Diagnostic data:\n"
           "Startup reason: "
        + QString::fromLatin1(GetStartupReasonStringA(3)) + " \n" + shutDownLine
        + "HW error status: " + QString::fromLatin1(GetHwErrorStatusStringA(0)) + " \n"
        + "Total run time: 1505 min (1 days, 1h, 5min) \n"
          "Total suspend time: 59 min (0 days, 0h, 59min) \n"
          "Total heat time: 0 min (0 days, 0h, 0min) \n"
          "Total run time 40-60"
        + deg() + ": 1440 min (1 days, 0h, 0min) \nTotal run time 60-70" + deg()
        + ": 60 min (0 days, 1h, 0min) \nTotal run time 70-80" + deg()
        + ": 1 min (0 days, 0h, 1min) \nTotal run time above 80" + deg()
        + ": 12345 min (8 days, 13h, 45min) \n"
          "Minimum temp: -21 "
        + deg() + "\nMaximum temp: 74 " + deg() + "\nNumber of power cycles: 812 \n" + sensorLines
        + "SS temp: 43 " + deg() + "\nPCB temp: -5 " + deg() + "\n";
}

} // namespace

class tst_sections : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void diagnostics_data();
    void diagnostics();
    void diagnosticFailures_data();
    void diagnosticFailures();
    void everySensorType();
    void eeprom();
    void eepromWithoutAddOn();
    void adc();
    void battery_data();
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
    QTest::addColumn<QString>("expected");

    const QString sensors = "JIDA CPU temp: 48 " + deg() + "\nJIDA unknown temp: 39 " + deg()
        + "\nJIDA CPU temp: 51 " + deg() + "\n";
    QTest::newRow("reason 31 is a word")
        << 31 << 0 << expectedDiagnostics("ShutDown reason: NoError \n", sensors);
    QTest::newRow("reason 0 is a number") << 0 << 0 << expectedDiagnostics("ShutDown reason: 0 \n", sensors);
    QTest::newRow("reason 30 is a number")
        << 30 << 0 << expectedDiagnostics("ShutDown reason: 30 \n", sensors);
    QTest::newRow("first sensor fails")
        << 31 << 1 << expectedDiagnostics("ShutDown reason: NoError \n", QString());
    QTest::newRow("first sensor unsupported")
        << 31 << 2 << expectedDiagnostics("ShutDown reason: NoError \n", QString());
}

void tst_sections::diagnostics()
{
    QFETCH(int, shutDownReason);
    QFETCH(int, firstSensorCode);
    QFETCH(QString, expected);

    knownDiagnostics();
    put("Diagnostic/ShutDownReason", shutDownReason);
    if (firstSensorCode != 0)
        ZuAuxSim::forceCode("Diagnostic_getPMTemp", firstSensorCode);
    QCOMPARE(readDiag(), expected);
    // The sensor loop asks one index past the last sensor, and no further.
    QCOMPARE(callsTo("Diagnostic_getPMTemp").size(), firstSensorCode != 0 ? 1 : 4);
    QCOMPARE(callsTo("GetDiagnostic").size(), 1);
    QCOMPARE(callsTo("Diagnostic_release").size(), 1);
}

// One code per call; the timer and min/max codes apply to all their lines.
void tst_sections::diagnosticFailures_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("timer N/A") << "Diagnostic_getTimer" << 18
                               << QStringList { "Total run time: N/A", "Total suspend time: N/A",
                                      "Total heat time: N/A", "Total run time 40-60" + deg() + ": N/A",
                                      "Total run time 60-70" + deg() + ": N/A",
                                      "Total run time 70-80" + deg() + ": N/A",
                                      "Total run time above 80" + deg() + ": N/A" };
    const QString e7 = "Error(7) " + libraryText(7);
    QTest::newRow("min/max error") << "Diagnostic_getMinMaxTemp" << 7
                                   << QStringList { "Minimum temp: " + e7, "Maximum temp: " + e7 };
    QTest::newRow("shutdown error") << "Diagnostic_getShutDownReason" << 7
                                    << QStringList { "ShutDown reason: " + e7 };
    QTest::newRow("startup error") << "Diagnostic_getStartupReason" << 7
                                   << QStringList { "Startup reason: " + e7 };
    QTest::newRow("SS temp error") << "Diagnostic_getSSTemp" << 19
                                   << QStringList { "SS temp: Error(19) " + libraryText(19) };
}

void tst_sections::diagnosticFailures()
{
    QFETCH(QString, operation);
    QFETCH(int, code);
    QFETCH(QStringList, lines);

    knownDiagnostics();
    ZuAuxSim::forceCode(operation, code);
    const QString text = readDiag();
    for (const QString& line : lines)
        QVERIFY2(text.contains("\n" + line + "\n"), qPrintable(line));

    ZuAuxSim::forceCode(operation, 2);
    const QString without = readDiag();
    for (const QString& line : lines)
        QVERIFY(!without.contains("\n" + line.left(line.indexOf(':') + 1)));
}

void tst_sections::everySensorType()
{
    const QStringList labels = { "JIDA CPU temp", "JIDA box temp", "JIDA environment temp", "JIDA board temp",
        "JIDA backplane temp", "JIDA chipsets temp", "JIDA video temp", "JIDA other temp",
        "JIDA unknown temp" };
    put("Diagnostic/PMSensorCount", labels.size());
    QString expected;
    for (int index = 0; index < labels.size(); ++index) {
        put(QStringLiteral("Diagnostic/PMTemp_%1").arg(index), 30 + index);
        put(QStringLiteral("Diagnostic/PMTempType_%1").arg(index), index == 8 ? -1 : index);
        expected += QStringLiteral("%1: %2 ").arg(labels[index]).arg(30 + index) + deg() + "\n";
    }
    const QString text = readDiag();
    const int from = text.indexOf("JIDA");
    QVERIFY(from > 0);
    QCOMPARE(text.mid(from, text.indexOf("SS temp") - from), expected);
}

void tst_sections::eeprom()
{
    put("About/MainPCBSerial", "MB-0001");
    put("About/UnitSerial", "U 77");
    put("About/MainPCBArt", "40012");
    put("About/MainManufacturingDate", "2011-03-04");
    put("About/MainHWversion", "R3");
    put("About/MainProdRev", "B");
    put("About/MainProdArtNr", "ZU-800");
    put("About/NrOfETHConnections", 1);
    put("About/NrOfCANConnections", 2);
    put("About/NrOfVideoConnections", 0);
    put("About/NrOfUSBConnections", 3);
    put("About/NrOfSerialConnections", 4);
    put("About/NrOfDigIOConnections", 5);
    put("About/IsDisplayAvailable", 1);
    put("About/IsTouchScreenAvailable", 0);
    put("About/NrOfCfgInConnections", 6);
    put("About/NrOfPWMOutConnections", 2);
    put("About/NrOfButtons", 10);
    put("About/AddOnPCBSerial", "AO-9");
    put("About/AddOnPCBArt", "50001");
    put("About/AddOnManufacturingDate", "2012-01-31");
    put("About/AddOnHWversion", "A1");
    put("About/IsWLANMounted", 1);
    put("About/IsGPSMounted", 0);
    put("About/IsBTMounted", 1);
    put("About/IsGPRSMounted", 1);
    ZuAuxSim::forceCode("About_getNrOfSerialConnections", 18);
    ZuAuxSim::forceCode("About_getNrOfUSBConnections", 2);
    ZuAuxSim::forceCode("About_getMainProdRev", 9);

    const QString expected = "Mainboard:\n"
                             "Main PCB Serial: MB-0001 \n"
                             "Unit serial number: U 77 \n"
                             "Main PCB article number: 40012 \n"
                             "Main manufacturing date: 2011-03-04 \n"
                             "Main hardware version: R3 \n"
                             "Main product revision: Error(9) "
        + libraryText(9)
        + "\n"
          "Main product art.nr: ZU-800 \n"
          "Number of Ethernet connections: 1\n"
          "Number of CAN connections: 2\n"
          "Number of Video connections: 0\n"
          "Number of Serial connections: N/A\n"
          "Number of Digital input connections: 5\n"
          "Display device mounted: Yes\n"
          "Touchscreen device mounted: No\n"
          "Number of Configurable inputs: 6\n"
          "Number of PWM outputs: 2\n"
          "Number of Configurable buttons: 10\n"
          "\nAddon/Telematics board:\n"
          "Addon PCB serial: AO-9 \n"
          "Addon board article number: 50001 \n"
          "Addon manufacturing date: 2012-01-31 \n"
          "Addon hardware version: A1 \n"
          "WLAN device mounted: Yes\n"
          "GPS device mounted: No\n"
          "Bluetooth device mounted: Yes\n"
          "GSM/GPRS device mounted: Yes\n";
    QCOMPARE(readEeprom(), expected);
    QCOMPARE(callsTo("GetAbout").size(), 1);
    QCOMPARE(callsTo("About_release").size(), 1);
}

void tst_sections::eepromWithoutAddOn()
{
    for (const char* operation : { "About_getAddOnPCBSerial", "About_getAddOnPCBArt",
             "About_getAddOnManufacturingDate", "About_getAddOnHWversion", "About_getIsWLANMounted",
             "About_getIsGPSMounted", "About_getIsBTMounted", "About_getIsGPRSMounted" })
        ZuAuxSim::forceCode(operation, 2);
    const QString text = readEeprom();
    QVERIFY(text.startsWith("Mainboard:\nMain PCB Serial: "));
    QVERIFY(text.endsWith("Number of Configurable buttons: " + ZuAuxSim::value("About/NrOfButtons").toString()
        + "\n\nAddon/Telematics board:\n"));
}

void tst_sections::adc()
{
    const QList<QPair<int, QString>> channels = {
        { 0, "Voltage 24V in" },
        { 2, "Voltage 12V" },
        { 3, "Voltage 12V video" },
        { 4, "Voltage 5V" },
        { 5, "Voltage 3.3V" },
        { 6, "Voltage TFT" },
        { 7, "Voltage 5V STB" },
        { 8, "Voltage 1.9V" },
        { 9, "Voltage 1.8V" },
        { 10, "Voltage 1.5V" },
        { 11, "Voltage 1.2V" },
        { 12, "Voltage 1.05V" },
        { 13, "Voltage 1.0V" },
        { 14, "Voltage 0.9V" },
        { 15, "Voltage SS VREF" },
        { 16, "Voltage 24V Backup" },
        { 17, "Voltage 2.5V" },
        { 18, "Voltage 1.1V" },
        { 19, "Voltage 1.3V PER" },
        { 20, "Voltage 1.3V VDDA" },
        { 21, "Voltage 3V3 STBY" },
        { 22, "Voltage VPMIC" },
        { 23, "Voltage VMAIN" },
    };
    for (const auto& channel : channels)
        put(QStringLiteral("Adc/Voltage_%1").arg(channel.first), 1.0 + channel.first / 4.0);
    put("Adc/Voltage_0", 24.5);
    put("Adc/Voltage_4", 5.0);
    put("Adc/Voltage_8", 1.8765432);

    QString expected = "ADC values\n";
    for (const auto& channel : channels) {
        QString value = QString::number(1.0 + channel.first / 4.0);
        if (channel.first == 0)
            value = "24.5";
        else if (channel.first == 4)
            value = "5";
        else if (channel.first == 8)
            value = "1.87654";
        expected += channel.second + ": " + value + " V\n";
    }
    QCOMPARE(readAdc(), expected);

    QStringList asked;
    for (const QString& line : callsTo("Adc_getVoltage("))
        asked << line.section('(', 1).section(')', 0, 0);
    QStringList wanted;
    for (const auto& channel : channels)
        wanted << QString::number(channel.first);
    QCOMPARE(asked, wanted);
}

void tst_sections::battery_data()
{
    QTest::addColumn<int>("hwError");
    QTest::addColumn<int>("charging");
    QTest::addColumn<int>("source");
    QTest::addColumn<QString>("statusLines");

    QTest::newRow("healthy on battery") << 0 << 0 << 0
                                        << "Battery reports no HW errors\nBattery is not being charged\n"
                                           "Power source: Battery\n";
    QTest::newRow("thermistor, charging") << 1 << 1 << 1
                                          << "Battery error! The thermistor temp sensor is not working\n"
                                             "Battery is being charged\nPower source: External power\n";
    QTest::newRow("secondary, full") << 2 << 2 << 7
                                     << "Battery error! The secondary temp sensor is not working\n"
                                        "Battery is fully charged\nPower source: External power\n";
    QTest::newRow("charging failed, too cold") << 3 << 3 << 0
                                               << "Battery error! Charging failed\n"
                                                  "Temperature is too low to charge the battery\n"
                                                  "Power source: Battery\n";
    QTest::newRow("overcurrent, too hot") << 4 << 4 << 0
                                          << "Battery error! Overcurrent detected\n"
                                             "Temperature is too high to charge the battery\n"
                                             "Power source: Battery\n";
    QTest::newRow("not initiated, unknown")
        << 5 << 5 << 0
        << "Battery error! Battery not initiated\n"
           "Could not get battery charging status\nPower source: Battery\n";
    QTest::newRow("beyond the tables") << 6 << 6 << 0 << "Power source: Battery\n";
}

void tst_sections::battery()
{
    QFETCH(int, hwError);
    QFETCH(int, charging);
    QFETCH(int, source);
    QFETCH(QString, statusLines);

    put("Unit/HasBattery", 1);
    put("Battery/HwErrorStatus", hwError);
    put("Battery/BatteryHWversion", "HW2");
    put("Battery/BatterySwVersion", "1.4.0.17");
    put("Battery/BatterySerial", "BAT-123");
    put("Battery/BatteryChargingStatus", charging);
    put("Battery/PowerSource", source);
    put("Battery/BatteryVoltageStatus", 87);
    put("Battery/BatteryTemp", -3);
    put("Battery/MinTemp", -30);
    put("Battery/MaxTemp", 61);
    put("Battery/Timer", "1505,59,0,1,2,3,4,5,1440");

    // The charging line sits between the serial and the power source lines.
    const int split = statusLines.indexOf('\n') + 1;
    const QString hwLine = hwError <= 5 ? statusLines.left(split) : QString();
    const QString rest = hwError <= 5 ? statusLines.mid(split) : statusLines;
    const QString expected = hwLine
        + "Battery HW version: HW2\n"
          "Battery SW version: 1.4.0.17\n"
          "Battery serial number: BAT-123\n"
        + rest
        + "Battery voltage level: 87%\n"
          "Battery temperature: -3 deg C\n"
          "Battery minimum temp: -30 deg C, maximum temp: 61 deg C\n"
          "Total run time on main power: 1505 min (1 days, 1h, 5min) \n"
          "Total run time on battery power: 59 min (0 days, 0h, 59min) \n"
          "Total run time < -20"
        + deg() + ": 0 min (0 days, 0h, 0min) \nTotal run time -20-0" + deg()
        + ": 1 min (0 days, 0h, 1min) \nTotal run time 0-40" + deg()
        + ": 2 min (0 days, 0h, 2min) \nTotal run time 40-60" + deg()
        + ": 3 min (0 days, 0h, 3min) \nTotal run time 60-70" + deg()
        + ": 4 min (0 days, 0h, 4min) \nTotal run time 70-80" + deg()
        + ": 5 min (0 days, 0h, 5min) \nTotal run time above 80" + deg() + ": 1440 min (1 days, 0h, 0min) \n";
    QCOMPARE(readBatteryInfo(), expected);
    QCOMPARE(callsTo("Battery_release").size(), 1);
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
        expected += QStringLiteral("Could not get %1. Error(%2) %3\n")
                        .arg(QLatin1String(step.what))
                        .arg(step.code)
                        .arg(libraryText(step.code));
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
    // Neither touches the unit.
    QVERIFY(ZuAuxSim::trace().isEmpty());
}

QTEST_GUILESS_MAIN(tst_sections)
#include "tst_sections.moc"
