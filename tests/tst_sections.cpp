#include "pagecheck.h"
#include "report/Sections.h"
#include "simunit.h"

namespace
{

const QString degC = QChar(0xB0) + QStringLiteral("C");

const QStringList warmBands = { "Total run time 40-60" + degC, "Total run time 60-70" + degC,
    "Total run time 70-80" + degC, "Total run time above 80" + degC };

} // namespace

class tst_sections : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void diagnostics_data();
    void diagnostics();
    void addOnAnswersUnsupported();
    void voltages();
    void battery_data();
    void battery();
    void batteryFailingEveryStep();
};

void tst_sections::diagnostics_data()
{
    QTest::addColumn<int>("shutDownReason");
    QTest::addColumn<int>("sensorCode");
    QTest::addColumn<int>("timerCode");
    QTest::addColumn<QString>("shutDown");

    QTest::newRow("reason 31 is a word") << 31 << 0 << 0 << "NoError";
    QTest::newRow("reason 0 is a number") << 0 << 0 << 0 << "0";
    QTest::newRow("first sensor fails") << 31 << 1 << 0 << "NoError";
    QTest::newRow("timer unavailable") << 30 << 0 << 18 << "30";
}

void tst_sections::diagnostics()
{
    QFETCH(int, shutDownReason);
    QFETCH(int, sensorCode);
    QFETCH(int, timerCode);
    QFETCH(QString, shutDown);

    change(QStringLiteral("Diagnostic/ShutDownReason=%1").arg(shutDownReason));
    for (const char* setting : { "Diagnostic/Timer=1,2,3,4,5,6,1505", "Diagnostic/PMSensorCount=2",
             "Diagnostic/PMTempType_0=0", "Diagnostic/PMTemp_1=-4", "Diagnostic/PMTempType_1=12" })
        change(setting);
    if (sensorCode != 0)
        ZuAuxSim::forceCode("Diagnostic_getPMTemp", sensorCode);
    ZuAuxSim::forceCode("Diagnostic_getTimer", timerCode);
    const QString text = readDiag();

    QStringList expected = { "Diagnostic data", "Startup reason", "ShutDown reason", "HW error status",
        "Total run time", "Total suspend time", "Total heat time" };
    expected += warmBands + QStringList { "Minimum temp", "Maximum temp", "Number of power cycles" };
    if (sensorCode == 0)
        expected += QStringList { "JIDA CPU temp", "JIDA unknown temp" };
    expected += QStringList { "SS temp", "PCB temp" };
    QCOMPARE(labels(text), expected);
    QVERIFY(text.contains("\nShutDown reason: " + shutDown + " \n"));
    // The library fails past the last sensor; that failure ends the list.
    QCOMPARE(callsTo("Diagnostic_getPMTemp").size(), sensorCode == 0 ? 3 : 1);
    QCOMPARE(text.contains("\nJIDA unknown temp: -4 " + degC + "\n"), sensorCode == 0);
    // One timer call: its code and its counts reach all seven lines.
    QCOMPARE(text.count(": N/A\n"), timerCode == 18 ? 7 : 0);
    QCOMPARE(text.contains(warmBands.last() + ": 1505 min (1 days, 1h, 5min) \n"), timerCode == 0);
}

void tst_sections::addOnAnswersUnsupported()
{
    for (const char* operation : { "About_getAddOnPCBSerial", "About_getAddOnPCBArt",
             "About_getAddOnManufacturingDate", "About_getAddOnHWversion", "About_getIsWLANMounted",
             "About_getIsGPSMounted", "About_getIsBTMounted", "About_getIsGPRSMounted" })
        ZuAuxSim::forceCode(operation, 2);
    change("About/NrOfButtons=8");
    const QString text = readEeprom();
    QVERIFY(text.startsWith("Mainboard:\nMain PCB Serial: "));
    QVERIFY(text.endsWith("\nNumber of Configurable buttons: 8\n\nAddon/Telematics board:\n"));
}

void tst_sections::voltages()
{
    change("Adc/Voltage_0=24.5");
    const QString text = readAdc();
    QVERIFY(text.startsWith("ADC values\nVoltage 24V in: 24.5 V\nVoltage 12V: "));
    QCOMPARE(labels(text).last(), QStringLiteral("Voltage VMAIN"));
    // Channels 0 to 23 but 1.
    QCOMPARE(callsTo("Adc_getVoltage(").size(), 23);
    QVERIFY(callsTo("Adc_getVoltage(1)").isEmpty());
}

// Both status tables end at 5; past them nothing is printed.
void tst_sections::battery_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("hwError");
    QTest::addColumn<QStringList>("charging");

    const QStringList hwErrors
        = { "Battery reports no HW errors", "Battery error! The thermistor temp sensor is not working",
              "Battery error! The secondary temp sensor is not working", "Battery error! Charging failed",
              "Battery error! Overcurrent detected", "Battery error! Battery not initiated" };
    const QStringList chargings = { "Battery is not being charged", "Battery is being charged",
        "Battery is fully charged", "Temperature is too low to charge the battery",
        "Temperature is too high to charge the battery", "Could not get battery charging status" };
    for (int status = 0; status <= 6; ++status)
        QTest::addRow("status %d", status) << status << hwErrors.mid(status, 1) << chargings.mid(status, 1);
}

void tst_sections::battery()
{
    QFETCH(int, status);
    QFETCH(QStringList, hwError);
    QFETCH(QStringList, charging);

    for (const char* key :
        { "Battery/HwErrorStatus", "Battery/BatteryChargingStatus", "Battery/PowerSource" })
        change(QStringLiteral("%1=%2").arg(key).arg(status));
    for (const char* setting : { "Unit/HasBattery=1", "Battery/BatteryVoltageStatus=87",
             "Battery/MinTemp=-30", "Battery/MaxTemp=61" })
        change(setting);
    const QString text = readBatteryInfo();
    const QStringList battery = { "Battery HW version", "Battery SW version", "Battery serial number" };
    const QStringList use = { "Power source", "Battery voltage level", "Battery temperature",
        "Battery minimum temp", "Total run time on main power", "Total run time on battery power",
        "Total run time < -20" + degC, "Total run time -20-0" + degC, "Total run time 0-40" + degC };
    QCOMPARE(labels(text), hwError + battery + charging + use + warmBands);
    QVERIFY(text.contains(
        QStringLiteral("\nPower source: %1\n").arg(status == 0 ? "Battery" : "External power")));
    QVERIFY(text.contains("\nBattery voltage level: 87%\n"));
    QVERIFY(text.contains("\nBattery minimum temp: -30 deg C, maximum temp: 61 deg C\n"));
    QCOMPARE(callsTo("Battery_release").size(), 1);
}

void tst_sections::batteryFailingEveryStep()
{
    change("Unit/HasBattery=1");
    const struct {
        const char* operation;
        int code;
        const char* line;
    } steps[] = {
        { "Battery_getHwErrorStatus", 1,
            "Could not get battery error status code. Error(1) Operation failed" },
        { "Battery_getBatteryHWversion", 2,
            "Could not get battery HW version. Error(2) Not supported by this unit" },
        { "Battery_getBatterySwVersion", 18,
            "Could not get battery SW version. Error(18) Value not available" },
        { "Battery_getBatterySerial", 3, "Could not get battery serial number. Error(3) Invalid handle" },
        { "Battery_getBatteryChargingStatus", 6,
            "Could not get battery charging status. Error(6) Timeout, the controller did not answer" },
        { "Battery_getPowerSource", 7,
            "Could not get power source. Error(7) Communication with the controller failed" },
        { "Battery_getBatteryVoltageStatus", 8,
            "Could not get battery voltage level. Error(8) Checksum error in the controller's answer" },
        { "Battery_getBatteryTemp", 19, "Could not get battery temperature. Error(19) Hardware fault" },
        { "Battery_getMinMaxTemp", 13,
            "Could not get battery min/max temperature. Error(13) Busy, another operation is in progress" },
        { "Battery_getTimer", 14, "Could not get battery diagnostic times. Error(14) Not initialised" },
    };
    QString expected;
    for (const auto& step : steps) {
        ZuAuxSim::forceCode(step.operation, step.code);
        // Codes 2 and 18 are failures here like any other.
        expected += QLatin1String(step.line) + QLatin1Char('\n');
    }
    QCOMPARE(readBatteryInfo(), expected);
}

QTEST_GUILESS_MAIN(tst_sections)
#include "tst_sections.moc"
