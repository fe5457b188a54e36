#include "pagecheck.h"
#include "report/SystemReport.h"
#include "simunit.h"

#include <QRegularExpression>

namespace
{

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

class tst_systemreport : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void frame();
    void settings();
    void variants_data();
    void variants();
};

// The sections in order. The report only reads, and gives back every handle it takes.
void tst_systemreport::frame()
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
void tst_systemreport::settings()
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
void tst_systemreport::variants_data()
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

void tst_systemreport::variants()
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

QTEST_GUILESS_MAIN(tst_systemreport)
#include "tst_systemreport.moc"
