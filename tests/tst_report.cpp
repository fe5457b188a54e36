// The system report: its line formatters, the identity, diagnostic and
// battery sections, and the whole report with its settings dump.
#include "pagecheck.h"
#include "report/Formatters.h"
#include "report/Sections.h"
#include "report/SystemReport.h"
#include "simunit.h"

#include <QRegularExpression>

using namespace Korvane;

namespace
{

const QString degC = QChar(0xB0) + QStringLiteral("C");

const QStringList warmBands = { "Total run time 40-60" + degC, "Total run time 60-70" + degC,
    "Total run time 70-80" + degC, "Total run time above 80" + degC };

QString header(const QString& title)
{
    return "\n------------------  " + title + "  ------------------\n";
}

// The text between the first `from` and the next `to` after it.
QString between(const QString& report, const QString& from, const QString& to)
{
    const int start = report.indexOf(from);
    const int end = report.indexOf(to, start + from.size());
    if (start < 0 || end < 0)
        return QStringLiteral("<missing>");
    return report.mid(start + from.size(), end - start - from.size());
}

} // namespace

class tst_report : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void lines_data();
    void lines()
    {
        QFETCH(QString, line);
        QFETCH(QString, expected);
        QCOMPARE(line, expected);
    }
    void diagnostics_data();
    void diagnostics();
    void addOnAnswersUnsupported();
    void voltages();
    void battery_data();
    void battery();
    void batteryFailingEveryStep();
    void frame();
    void settings();
    void variants_data();
    void variants();
};

void tst_report::lines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    // How a failed read shows where it is not left out or "N/A".
    const QMap<int, QString> failed { { 2, "Error(2) Not supported by this unit" },
        { 18, "Error(18) Value not available" },
        { 34, "Error(34) Start-up trigger conflicts with the button functions" } };
    for (int code : { 0, 2, 18, 34 }) {
        const eErr e = eErr(code);
        // The create... family: 0 the value, 2 no line at all, 18 "N/A", else the error.
        const auto created = [code, &failed](const char* what, const QString& line, const QString& label,
                                 const QString& value) {
            const QString tail = code == 0 ? value : code == 18 ? QStringLiteral("N/A") : failed[code];
            QTest::addRow("%s %d", what, code) << line << (code == 2 ? QString() : label + tail + "\n");
        };
        created("text", createString(e, "Unit serial number", "ZU-\xE9", QString()),
            "Unit serial number: ", "ZU-" + QString(QChar(0xE9)) + " ");
        created("numberOf", createStringNumberOf(e, "CAN", 255), "Number of CAN connections: ", "255");
        created("mounted", createStringMounted(e, "GPS", true), "GPS device mounted: ", "Yes");
        created("time", createStringTime(e, "Total run time", 1505),
            "Total run time: ", "1505 min (1 days, 1h, 5min) ");
        // The Print... family has no N/A line; only the button one drops code 2.
        const auto printed = [code, &failed](const char* what, const QString& line, const QString& value) {
            QTest::addRow("%s %d", what, code) << line << "L: " + (code == 0 ? value : failed[code]) + "\n";
        };
        printed("version", PrintVersion("L", 1, 20, 3, 255, e), "v1.20.3.255");
        printed(
            "trigger", PrintSettingTriggerConfig("L", TRIGGER_BOTH, e), "Both Front button and OnOff signal");
        QTest::addRow("button %d", code)
            << PrintSettingButtonConfig("L", BUTTON_AS_ACTION_TRIG, e)
            << (code == 2
                       ? QString()
                       : "L: " + (code == 0 ? QStringLiteral("BUTTON_AS_ACTION_TRIG") : failed[code]) + "\n");
    }

    QTest::newRow("time 0") << createStringTime(ERR_SUCCESS, "T", 0) << "T: 0 min (0 days, 0h, 0min) \n";
    QTest::newRow("time 59") << createStringTime(ERR_SUCCESS, "T", 59) << "T: 59 min (0 days, 0h, 59min) \n";
    QTest::newRow("time 1440") << createStringTime(ERR_SUCCESS, "T", 1440)
                               << "T: 1440 min (1 days, 0h, 0min) \n";
    QTest::newRow("double 3.3") << createString(ERR_SUCCESS, "V", 3.3, "V") << "V: 3.3 V\n";
    QTest::newRow("double 12") << createString(ERR_SUCCESS, "V", 12.0, "V") << "V: 12 V\n";
    QTest::newRow("double 6 digits") << createString(ERR_SUCCESS, "V", 0.0001234567, "V")
                                     << "V: 0.000123457 V\n";
    // Even values up to 14 are configurations; odd ones and the rest are not.
    const char* const buttons[] = { "ONLY_MP_ACTION", "AS_STARTUP_TRIG", "AS_ACTION_TRIG",
        "AS_ACTION_STARTUP_TRIG", "AS_BACKLIGHT_DECREASE", "AS_BACKLIGHT_DECR_STARTUP_TRIG",
        "AS_BACKLIGHT_INCREASE", "AS_BACKLIGHT_INCR_STARTUP_TRIG" };
    for (int value : { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 255 })
        QTest::addRow("button value %d", value)
            << PrintSettingButtonConfig("B", ButtonConfigEnum(value), ERR_SUCCESS)
            << "B: "
                + (value % 2 == 0 && value <= 14 ? QStringLiteral("BUTTON_") + buttons[value / 2]
                                                 : QStringLiteral("%1 - Incorrect setting").arg(value))
                + "\n";
}

void tst_report::diagnostics_data()
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

void tst_report::diagnostics()
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

void tst_report::addOnAnswersUnsupported()
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

void tst_report::voltages()
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
void tst_report::battery_data()
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

void tst_report::battery()
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

void tst_report::batteryFailingEveryStep()
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

// The sections in order. The report only reads, and gives back every handle it takes.
void tst_report::frame()
{
    change("Unit/HasBattery=1");
    const QString report = SystemReport();
    QStringList headers;
    for (const char* title : { "SW Versions", "EEPROM data", "Diagnostic data", "ADC data", "CPU board data",
             "Settings", "Log Files", "End of report" })
        headers << header(title).trimmed();
    QCOMPARE(report.split('\n').filter(QRegularExpression("^-{18}  ")), headers);
    QVERIFY(report.endsWith(header("Log Files") + header("End of report")));
    const QStringList trace = ZuAuxSim::trace();
    QCOMPARE(trace.filter(QRegularExpression("^\\w+_(set|start|stop)")), QStringList());
    QCOMPARE(trace.filter(QRegularExpression("^Get\\w+\\(")).size(), trace.filter("_release()").size());
}

// The dump's lines whose form is not the obvious one.
void tst_report::settings()
{
    for (const char* setting : { "Backlight/LedDimming=1", "Backlight/Status=1", "Power/VideoPowerStatus=3",
             "Backlight/KValue=0.25" })
        change(setting);
    const QString dump = between(SystemReport(), header("Settings"), "\nBattery:\n");
    QVERIFY(dump.startsWith("Backlight:\nIntensity: "));
    QVERIFY(dump.contains("\nLed dimming: Enabled\nBacklight Status: 1\n"));
    QVERIFY(dump.contains("\n   K value: 0.25\n"));
    QVERIFY(dump.contains("\n\n\nBuzzer:\nFrequency: "));
    QVERIFY(dump.contains("\n\n PWM outputs:\nPWMOut channel 1 duty cycle: "));
    QVERIFY(
        dump.contains("\nVideoPowerStatus: 3\n\nTouchScreen:\nMouseRightClickTime (for mouse profile): "));
}

// A few values or result codes changed: the text between two markers.
void tst_report::variants_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("lines");

    const QString button8 = "ButtonFunction 8: BUTTON_ONLY_MP_ACTION\n";
    const QString pwm = "\n PWM outputs:\n";
    QTest::newRow("8 buttons") << QStringList { "About/NrOfButtons=8" } << button8 << pwm << "";
    QTest::newRow("10 buttons") << QStringList { "About/NrOfButtons=10" } << button8 << pwm
                                << "ButtonFunction 9: 16 - Incorrect setting\n"
                                   "ButtonFunction 10: BUTTON_AS_ACTION_STARTUP_TRIG\n";
    QTest::newRow("button count unknown")
        << QStringList { "About/NrOfButtons=10", "About_getNrOfButtons=7" } << button8 << pwm << "";

    const QString frequency = "PWMOut channel 2 frequency: 2000\n";
    const QString frontLed = "\nFrontLED:\n";
    QTest::newRow("pwm status 3") << QStringList { "PWMOut/PWMOutputStatus=3" } << frequency << frontLed
                                  << "Status PWMOut channel 1: Not OK\nStatus PWMOut channel 2: Not OK\n";
    QTest::newRow("pwm status 4") << QStringList { "PWMOut/PWMOutputStatus=4" } << frequency << frontLed
                                  << "";
    QTest::newRow("bl params fail")
        << QStringList { "Backlight_getAutomaticBLParams=20" } << "Automatic backlight Status: 0\n"
        << "\nBuzzer:\n"
        << "getAutomaticBLParams: Error(20) Light sensor busy, used by the automatic backlight\n";

    const QString telematics = "\nTelematics:\n";
    const QString battery = "\nBattery:\n";
    // Every module is asked even after one of them failed.
    QTest::newRow("telematics")
        << QStringList { "Telematics/GPSAntennaStatus=0", "Telematics/WLANStartUpPowerStatus=1",
               "Telematics_getWLANPowerStatus=7" }
        << telematics << battery
        << "Telematics board available: Enabled\nGPRSPowerStatus: Disabled\n"
           "GPRSStartUpPowerStatus: Disabled\nGPSAntennaStatus: Disabled\nWLANPowerStatus: Error(7) "
           "Communication with the controller failed\nWLANStartUpPowerStatus: Enabled\n";
    QTest::newRow("no telematics") << QStringList { "Unit/TelematicsAvailable=0" } << telematics << battery
                                   << "Telematics board available: Disabled\n";
    QTest::newRow("telematics fails")
        << QStringList { "Telematics_getTelematicsAvailable=7" } << telematics << battery
        << "Telematics board available: Error(7) Communication with the controller failed\n";
    QTest::newRow("no battery") << QStringList { "Unit/HasBattery=0" } << battery << header("Log Files")
                                << "External battery not available.\n";
}

void tst_report::variants()
{
    QFETCH(QStringList, settings);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, lines);

    for (const char* setting : { "Backlight/AutomaticBLStatus=0", "PWMOut/PWMOutputChannelFrequency_2=2000",
             "Unit/TelematicsAvailable=1", "About/NrOfButtons=8", "Config/ButtonFunction_8=0",
             "Config/ButtonFunction_9=16", "Config/ButtonFunction_10=6" })
        change(setting);
    for (const QString& setting : settings)
        change(setting);
    QCOMPARE(between(SystemReport(), from, to), lines);
}

QTEST_GUILESS_MAIN(tst_report)
#include "tst_report.moc"
