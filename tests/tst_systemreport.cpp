#include "SystemReport.h"
#include "simunit.h"
#include "zuaux2.h"

#include <QDateTime>
#include <QTest>

using namespace Korvane;

namespace
{

void put(const QString& key, const QVariant& value)
{
    ZuAuxSim::setValue(key, value);
    ZuAuxSim::hold(key, value);
}

QString err(int code)
{
    return QStringLiteral("Error(%1) %2").arg(code).arg(QString::fromLatin1(GetErrorStringA(eErr(code))));
}

QString header(const QString& title)
{
    return "\n------------------  " + title + "  ------------------\n";
}

// The text between the line `from` and the line `to` (both excluded).
QString between(const QString& report, const QString& from, const QString& to)
{
    const int start = report.indexOf(from);
    if (start < 0)
        return QStringLiteral("<missing %1>").arg(from);
    const int end = report.indexOf(to, start + from.size());
    if (end < 0)
        return QStringLiteral("<missing %1>").arg(to);
    return report.mid(start + from.size(), end - start - from.size());
}

// Every setting of the dump at a value of our choosing.
void knownSettings()
{
    put("Backlight/Intensity", 180);
    put("Backlight/LedDimming", 1);
    put("Backlight/Status", 1);
    put("Backlight/AutomaticBLStatus", 0);
    put("Backlight/SoftTransitions", 1);
    put("Backlight/KValue", 0.25);
    put("Backlight/AverageWindowSize", 12);
    put("Backlight/RejectWindowSize", 3);
    put("Backlight/RejectDeltaInLux", 400);
    put("Backlight/SamplingMode", 2);
    put("Buzzer/Frequency", 2400);
    put("Buzzer/Volume", 51);
    put("Buzzer/Trigger", 1);
    put("About/NrOfCANConnections", 4);
    put("CanSetting/Baudrate_1", 125);
    put("CanSetting/Baudrate_2", 250);
    put("CanSetting/Baudrate_3", 500);
    put("CanSetting/Baudrate_4", 1000);
    put("Config/CanStartupPowerConfig", 1);
    put("Config/ExtFanStartupPowerConfig", 0);
    put("Config/ExtOnOffSigTrigTime", 4);
    put("Config/FrontBtnTrigTime", 4000);
    put("Config/HeatingTempLimit", -25);
    put("Config/LongButtonPressAction", 2);
    put("Config/ShortButtonPressAction", 1);
    put("Config/OnOffSigAction", 0);
    put("Config/PowerOnStartup", 1);
    put("Config/StartupTriggerConfig", 3);
    put("Config/StartupVoltageConfig", 9.5);
    put("Config/SuspendMaxTime", 60);
    put("Config/VideoStartupPowerConfig", 3);
    put("About/NrOfButtons", 8);
    for (int button = 1; button <= 10; ++button)
        put(QStringLiteral("Config/ButtonFunction_%1").arg(button), 2 * (button - 1));
    put("About/NrOfPWMOutConnections", 2);
    put("PWMOut/PWMOutputChannelDutyCycle_1", 40);
    put("PWMOut/PWMOutputChannelFrequency_1", 100.5);
    put("PWMOut/PWMOutputChannelDutyCycle_2", 0);
    put("PWMOut/PWMOutputChannelFrequency_2", 2000);
    put("PWMOut/PWMOutputStatus", 0);
    put("FrontLED/EnabledDuringStartup", 0);
    put("FrontLED/ColorRed", 15);
    put("FrontLED/ColorGreen", 7);
    put("FrontLED/ColorBlue", 0);
    put("FrontLED/IdleTime", 10);
    put("FrontLED/NrOfPulses", 3);
    put("FrontLED/OffTime", 20);
    put("FrontLED/OnTime", 100);
    put("FrontLED/SignalFrequency", 1.5);
    put("FrontLED/SignalDutyCycle", 50);
    put("Power/BLPowerStatus", 1);
    put("Power/CanPowerStatus", 0);
    put("Power/ExtFanPowerStatus", 1);
    put("Power/VideoPowerStatus", 3);
    put("TouchScreen/MouseRightClickTime", 1000);
    put("TouchScreen/Mode", 3);
    put("Unit/TelematicsAvailable", 1);
    put("Telematics/GPRSPowerStatus", 1);
    put("Telematics/GPRSStartUpPowerStatus", 0);
    put("Telematics/GPSAntennaStatus", 1);
    put("Telematics/WLANPowerStatus", 0);
    put("Telematics/WLANStartUpPowerStatus", 1);
}

const char expectedSettings[] = "Backlight:\n"
                                "Intensity: 180\n"
                                "Led dimming: Enabled\n"
                                "Backlight Status: 1\n"
                                "Automatic backlight Status: 0\n"
                                "Automatic backlight settings:\n"
                                "   Soft transitions: 1\n"
                                "   K value: 0.25\n"
                                "   Average window size: 12\n"
                                "   Reject window size: 3\n"
                                "   Reject delta in lux: 400\n"
                                "   Sampling mode: 2\n"
                                "\n"
                                "\nBuzzer:\n"
                                "Frequency: 2400\n"
                                "Volume: 51\n"
                                "Trigger (On/Off): 1\n"
                                "\nCan Settings:\n"
                                "CAN1 Baud rate: 125\n"
                                "CAN2 Baud rate: 250\n"
                                "CAN3 Baud rate: 500\n"
                                "CAN4 Baud rate: 1000\n"
                                "\nConfig:\n"
                                "CanStartupPowerConfig: Enabled\n"
                                "ExtFanStartupPowerConfig: Disabled\n"
                                "ExtOnOffSigTrigTime: 4\n"
                                "FrontBtnTrigTime: 4000\n"
                                "HeatingTempLimit: -25\n"
                                "LongButtonPressAction: ShutDown\n"
                                "ShortButtonPressAction: Suspend\n"
                                "OnOffSigAction: NoAction\n"
                                "PowerOnStartup: Enabled\n"
                                "StartupTrigger: Both Front button and OnOff signal\n"
                                "StartupVoltage: 9.5\n"
                                "SuspendMaxTime: 60\n"
                                "VideoStartupPowerConfig: 3\n"
                                "ButtonFunction 1: BUTTON_ONLY_MP_ACTION\n"
                                "ButtonFunction 2: BUTTON_AS_STARTUP_TRIG\n"
                                "ButtonFunction 3: BUTTON_AS_ACTION_TRIG\n"
                                "ButtonFunction 4: BUTTON_AS_ACTION_STARTUP_TRIG\n"
                                "ButtonFunction 5: BUTTON_AS_BACKLIGHT_DECREASE\n"
                                "ButtonFunction 6: BUTTON_AS_BACKLIGHT_DECR_STARTUP_TRIG\n"
                                "ButtonFunction 7: BUTTON_AS_BACKLIGHT_INCREASE\n"
                                "ButtonFunction 8: BUTTON_AS_BACKLIGHT_INCR_STARTUP_TRIG\n"
                                "\n PWM outputs:\n"
                                "PWMOut channel 1 duty cycle: 40\n"
                                "PWMOut channel 1 frequency: 100.5\n"
                                "PWMOut channel 2 duty cycle: 0\n"
                                "PWMOut channel 2 frequency: 2000\n"
                                "Status PWMOut channel 1 & 2 OK\n"
                                "\nFrontLED:\n"
                                "EnabledDuringStartup: Disabled\n"
                                "Color R: 15\n"
                                "Color G: 7\n"
                                "Color B: 0\n"
                                "IdleTime: 10\n"
                                "NrOfPulses: 3\n"
                                "OffTime: 20\n"
                                "OnTime: 100\n"
                                "Signal frequency: 1.5\n"
                                "Signal duty cycle: 50\n"
                                "\nPower:\n"
                                "BLPowerStatus: Enabled\n"
                                "CanPowerStatus: Disabled\n"
                                "ExtFanPowerStatus: Enabled\n"
                                "VideoPowerStatus: 3\n"
                                "\nTouchScreen:\n"
                                "MouseRightClickTime (for mouse profile): 1000\n"
                                "TouchScreenMode: Touch profile\n"
                                "\nTelematics:\n"
                                "Telematics board available: Enabled\n"
                                "GPRSPowerStatus: Enabled\n"
                                "GPRSStartUpPowerStatus: Disabled\n"
                                "GPSAntennaStatus: Enabled\n"
                                "WLANPowerStatus: Disabled\n"
                                "WLANStartUpPowerStatus: Enabled\n";

} // namespace

class tst_systemreport : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void frame();
    void versions();
    void settings();
    void buttons_data();
    void buttons();
    void variants_data();
    void variants();
    void readsOnly();
};

void tst_systemreport::frame()
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    const QString report = SystemReport();
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);

    const QString prefix = "\nSystem report generated on: ";
    QVERIFY(report.startsWith(prefix));
    const QString date = report.mid(prefix.size(), report.indexOf('\n', prefix.size()) - prefix.size());
    const QDateTime stamp = QDateTime::fromString(date, Qt::TextDate);
    QVERIFY2(stamp.isValid(), qPrintable(date));
    QVERIFY(stamp >= before.addMSecs(-before.time().msec()) && stamp <= after);

    // Each header once, in order, with its section's first line after it.
    const QStringList sections = { "SW Versions|Zusettings v", "EEPROM data|Mainboard:\n",
        "Diagnostic data|Diagnostic data:\n", "ADC data|ADC values\n", "CPU board data|",
        "Settings|Backlight:\n", "Log Files|", "End of report|" };
    int at = 0;
    for (const QString& section : sections) {
        const QString title = section.section('|', 0, 0);
        QCOMPARE(report.count(header(title)), 1);
        const int next = report.indexOf(header(title) + section.section('|', 1));
        QVERIFY2(next > at, qPrintable(title));
        at = next;
    }
    QVERIFY(report.contains(header("CPU board data") + header("Settings")));
    QVERIFY(report.endsWith("\nBattery:\n" + between(report, "\nBattery:\n", header("Log Files"))
        + header("Log Files") + header("End of report")));
}

void tst_systemreport::versions()
{
    put("AuxVersion/ZuAuxVersion", "2.1.0.9");
    put("AuxVersion/ZuAuxDrvVersion", "1.0.4.0");
    put("AuxVersion/FPGAVersion", "0.255.7.1");
    put("AuxVersion/SSVersion", "12.0.0.1");
    // No empty line and no N/A for versions: 2 and 18 are errors here.
    ZuAuxSim::forceCode("AuxVersion_getFrontVersion", 2);
    ZuAuxSim::forceCode("AuxVersion_getOSVersion", 18);
    QCOMPARE(between(SystemReport(), header("SW Versions"), header("EEPROM data")),
        "Zusettings v2.7.5.0\nZuaux API: v2.1.0.9\nZuaux Driver: v1.0.4.0\nFPGA: v0.255.7.1\nFront uc: "
            + err(2) + "\nSystem Supervisor: v12.0.0.1\nOS version: " + err(18) + "\n");
}

void tst_systemreport::settings()
{
    knownSettings();
    QCOMPARE(
        between(SystemReport(), header("Settings"), "\nBattery:\n"), QString::fromLatin1(expectedSettings));
}

void tst_systemreport::buttons_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("countCode");
    QTest::addColumn<int>("lastAsked");

    QTest::newRow("8 buttons") << 8 << 0 << 8;
    QTest::newRow("9 buttons") << 9 << 0 << 9;
    QTest::newRow("10 buttons") << 10 << 0 << 10;
    QTest::newRow("12 buttons") << 12 << 0 << 10;
    QTest::newRow("3 buttons") << 3 << 0 << 8;
    QTest::newRow("count unknown") << 10 << 7 << 8;
}

void tst_systemreport::buttons()
{
    QFETCH(int, count);
    QFETCH(int, countCode);
    QFETCH(int, lastAsked);

    knownSettings();
    put("About/NrOfButtons", count);
    if (countCode != 0)
        ZuAuxSim::forceCode("About_getNrOfButtons", countCode);
    const QString report = SystemReport();

    QStringList asked;
    for (const QString& line : callsTo("Config_getButtonFunction("))
        asked << line.section('(', 1).section(')', 0, 0);
    QStringList wanted;
    for (int button = 1; button <= lastAsked; ++button)
        wanted << QString::number(button);
    QCOMPARE(asked, wanted);
    QCOMPARE(report.contains("\nButtonFunction 9: 16 - Incorrect setting\n"), lastAsked >= 9);
    QCOMPARE(report.contains("\nButtonFunction 10: 18 - Incorrect setting\n"), lastAsked >= 10);
}

// One value or failure changed from the known settings: the lines between
// two markers of the report.
void tst_systemreport::variants_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("lines");

    const QString pwmFrom = "PWMOut channel 2 frequency: 2000\n";
    const QString pwmStatus = "PWMOut/PWMOutputStatus";
    const QString one = "Status PWMOut channel 1: Not OK\n";
    const QString two = "Status PWMOut channel 2: Not OK\n";
    QTest::newRow("pwm 1") << pwmStatus << 1 << "" << 0 << pwmFrom << "\nFrontLED:\n" << one;
    QTest::newRow("pwm 2") << pwmStatus << 2 << "" << 0 << pwmFrom << "\nFrontLED:\n" << two;
    QTest::newRow("pwm 3") << pwmStatus << 3 << "" << 0 << pwmFrom << "\nFrontLED:\n" << one + two;
    QTest::newRow("pwm 4") << pwmStatus << 4 << "" << 0 << pwmFrom << "\nFrontLED:\n"
                           << "";
    QTest::newRow("pwm 5") << pwmStatus << 5 << "" << 0 << pwmFrom << "\nFrontLED:\n" << one;
    QTest::newRow("pwm fails") << pwmStatus << 0 << "PWMOut_getPWMOutputStatus" << 2 << pwmFrom
                               << "\nFrontLED:\n"
                               << "PWMOut_getPWMOutputStatus: " + err(2) + "\n";
    QTest::newRow("pwm duty fails") << pwmStatus << 0 << "PWMOut_getPWMOutputChannelDutyCycle" << 7
                                    << "PWM outputs:\n"
                                    << "PWMOut channel 1 frequency"
                                    << "PWMOut_getPWMOutputChannelDutyCycle: " + err(7) + "\n";

    const QString blFrom = "Automatic backlight Status: 0\n";
    QTest::newRow("bl params fail") << "" << 0 << "Backlight_getAutomaticBLParams" << 20 << blFrom
                                    << "\nBuzzer:\n"
                                    << "getAutomaticBLParams: " + err(20) + "\n";
    QTest::newRow("bl filter fails") << "" << 0 << "Backlight_getAutomaticBLFilter" << 2 << blFrom
                                     << "\nBuzzer:\n"
                                     << "getAutomaticBLFilter: " + err(2) + "\n";

    const QString touchFrom = "MouseRightClickTime (for mouse profile): 1000\n";
    const QStringList modes = { "Mouse profile (next boot)", "Touch profile (next boot)", "Mouse profile",
        "Touch profile", "Undefined value" };
    for (int mode = 0; mode < modes.size(); ++mode)
        QTest::addRow("touch %d", mode)
            << "TouchScreen/Mode" << mode << "" << 0 << touchFrom << "\nTelematics:\n"
            << "TouchScreenMode: " + modes[mode] + "\n";
    QTest::newRow("touch fails") << "" << 0 << "TouchScreen_getMode" << 15 << touchFrom << "\nTelematics:\n"
                                 << "TouchScreenMode: " + err(15) + "\n";

    const QString available = "Unit/TelematicsAvailable";
    QTest::newRow("no telematics") << available << 0 << "" << 0 << "\nTelematics:\n"
                                   << "\nBattery:\n"
                                   << "Telematics board available: Disabled\n";
    QTest::newRow("telematics fails")
        << available << 1 << "Telematics_getTelematicsAvailable" << 7 << "\nTelematics:\n"
        << "\nBattery:\n"
        << "Telematics board available: " + err(7) + "\n";
    QTest::newRow("no battery") << "Unit/HasBattery" << 0 << "" << 0 << "\nBattery:\n"
                                << header("Log Files") << "External battery not available.\n";
    QTest::newRow("can 3 fails") << "" << 0 << "CanSetting_getBaudrate" << 18 << "\nCan Settings:\n"
                                 << "\nConfig:\n"
                                 << "CAN1 Baud rate: " + err(18) + "\nCAN2 Baud rate: " + err(18)
            + "\nCAN3 Baud rate: " + err(18) + "\nCAN4 Baud rate: " + err(18) + "\n";
}

void tst_systemreport::variants()
{
    QFETCH(QString, key);
    QFETCH(int, value);
    QFETCH(QString, operation);
    QFETCH(int, code);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, lines);

    knownSettings();
    if (!key.isEmpty())
        put(key, value);
    if (!operation.isEmpty())
        ZuAuxSim::forceCode(operation, code);
    QCOMPARE(between(SystemReport(), from, to), lines);
}

// The report never writes to the unit, and gives back every handle it takes
// (the telematics one included).
void tst_systemreport::readsOnly()
{
    put("Unit/HasBattery", 1);
    SystemReport();
    QStringList opened, released;
    for (const QString& line : ZuAuxSim::trace()) {
        const QString name = line.section('(', 0, 0);
        QVERIFY2(
            !name.contains("_set") && !name.contains("_start") && !name.contains("_stop"), qPrintable(line));
        if (name.startsWith("Get") && !name.contains('_'))
            opened << name.mid(3);
        else if (name.endsWith("_release"))
            released << name.section('_', 0, 0);
    }
    opened.sort();
    released.sort();
    QCOMPARE(released, opened);
}

QTEST_GUILESS_MAIN(tst_systemreport)
#include "tst_systemreport.moc"
