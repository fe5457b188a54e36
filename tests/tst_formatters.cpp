#include "Formatters.h"

#include <QTest>

using namespace Korvane;

namespace
{

QString err(int code)
{
    return QStringLiteral("Error(%1) %2").arg(code).arg(QString::fromLatin1(GetErrorStringA(eErr(code))));
}

const QString degC = QString::fromLatin1("\xB0"
                                         "C");

} // namespace

class tst_formatters : public QObject
{
    Q_OBJECT
private slots:
    void lines_data();
    void lines()
    {
        QFETCH(QString, line);
        QFETCH(QString, expected);
        QCOMPARE(line, expected);
    }
    void buttonConfig_data();
    void buttonConfig();
    void degreeSignIsOneLatin1Byte();
};

void tst_formatters::lines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    // The create... family decides 0, then 2 (no line), then 18 (N/A), then error.
    for (int code : { 0, 2, 18, 1, 34 }) {
        const eErr e = eErr(code);
        const auto row
            = [code](const char* what) -> QTestData& { return QTest::addRow("%s %d", what, code); };
        const auto pick = [code](const QString& ok, const QString& prefix) {
            return code == 0 ? ok
                : code == 2  ? QString()
                : code == 18 ? prefix + "N/A\n"
                             : prefix + err(code) + "\n";
        };
        row("text") << createString(e, "Unit serial number", "ZU-4711", QString())
                    << pick("Unit serial number: ZU-4711 \n", "Unit serial number: ");
        row("numberOf") << createStringNumberOf(e, "CAN", 2)
                        << pick("Number of CAN connections: 2\n", "Number of CAN connections: ");
        row("numberOf2") << createStringNumberOf2(e, "PWM outputs", 255)
                         << pick("Number of PWM outputs: 255\n", "Number of PWM outputs: ");
        row("mounted") << createStringMounted(e, "GPS", true)
                       << pick("GPS device mounted: Yes\n", "GPS device mounted: ");
        row("time") << createStringTime(e, "Total run time", 1505)
                    << pick("Total run time: 1505 min (1 days, 1h, 5min) \n", "Total run time: ");
        // The Print... family has no empty and no N/A line.
        const auto printed = [code](const QString& label, const QString& ok) {
            return code == 0 ? label + ": " + ok + "\n" : label + ": " + err(code) + "\n";
        };
        row("version") << PrintVersion("FPGA", 1, 20, 3, 255, e) << printed("FPGA", "v1.20.3.255");
        row("trigger") << PrintSettingTriggerConfig("T", TRIGGER_BOTH, e)
                       << printed("T", "Both Front button and OnOff signal");
        row("action") << PrintSettingAction("A", POWER_ACTION_SHUTDOWN, e) << printed("A", "ShutDown");
        row("frame") << PrintSettingCanFrameType("F", CAN_FRAME_STANDARD_EXTENDED, e)
                     << printed("F", "Standard, Extended");
        row("double") << PrintSettingDouble("D", 9.0, e) << printed("D", "9");
        row("int") << PrintSettingInt("I", -25, e) << printed("I", "-25");
        row("status") << PrintSettingStatus("S", ZU_ENABLED, e) << printed("S", "Enabled");
    }

    QTest::newRow("time 0") << createStringTime(ERR_SUCCESS, "T", 0) << "T: 0 min (0 days, 0h, 0min) \n";
    QTest::newRow("time 59") << createStringTime(ERR_SUCCESS, "T", 59) << "T: 59 min (0 days, 0h, 59min) \n";
    QTest::newRow("time 1440") << createStringTime(ERR_SUCCESS, "T", 1440)
                               << "T: 1440 min (1 days, 0h, 0min) \n";
    QTest::newRow("time max") << createStringTime(ERR_SUCCESS, "T", 4294967295UL)
                              << "T: 4294967295 min (2982616 days, 4h, 15min) \n";
    QTest::newRow("double 3.3") << createString(ERR_SUCCESS, "V", 3.3, "V") << "V: 3.3 V\n";
    QTest::newRow("double 12.0") << createString(ERR_SUCCESS, "V", 12.0, "V") << "V: 12 V\n";
    QTest::newRow("double 6 digits") << createString(ERR_SUCCESS, "V", 0.0001234567, "V")
                                     << "V: 0.000123457 V\n";
    QTest::newRow("setting 6 digits")
        << PrintSettingDouble("D", 1234567.0, ERR_SUCCESS) << "D: 1.23457e+06\n";
    QTest::newRow("short") << createString(ERR_SUCCESS, "Min", short(-40), degC) << "Min: -40 " + degC + "\n";
    QTest::newRow("ushort") << createString(ERR_SUCCESS, "N", (unsigned short)65535, QString())
                            << "N: 65535 \n";
    QTest::newRow("Latin-1 text") << createString(ERR_SUCCESS, "S", "A\xE9", QString())
                                  << "S: A" + QString(QChar(0xE9)) + " \n";
    QTest::newRow("mounted no") << createStringMounted(ERR_SUCCESS, "WLAN", false)
                                << "WLAN device mounted: No\n";
    QTest::newRow("trigger 1") << PrintSettingTriggerConfig("T", TRIGGER_FRONT_BUTTON, ERR_SUCCESS)
                               << "T: Front button\n";
    QTest::newRow("trigger 2") << PrintSettingTriggerConfig("T", TRIGGER_ONOFF_SIGNAL, ERR_SUCCESS)
                               << "T: OnOff Signal\n";
    QTest::newRow("trigger 15") << PrintSettingTriggerConfig("T", TRIGGER_ALL, ERR_SUCCESS)
                                << "T: Undefined value\n";
    QTest::newRow("action 0") << PrintSettingAction("A", POWER_ACTION_NONE, ERR_SUCCESS) << "A: NoAction\n";
    QTest::newRow("action 1") << PrintSettingAction("A", POWER_ACTION_SUSPEND, ERR_SUCCESS) << "A: Suspend\n";
    QTest::newRow("action 3") << PrintSettingAction("A", PowerAction(3), ERR_SUCCESS)
                              << "A: Undefined value\n";
    QTest::newRow("frame 0") << PrintSettingCanFrameType("F", CAN_FRAME_STANDARD, ERR_SUCCESS)
                             << "F: Standard\n";
    QTest::newRow("frame 1") << PrintSettingCanFrameType("F", CAN_FRAME_EXTENDED, ERR_SUCCESS)
                             << "F: Extended\n";
    QTest::newRow("frame 3") << PrintSettingCanFrameType("F", CanFrameType(3), ERR_SUCCESS)
                             << "F: Undefined value\n";
    QTest::newRow("status 0") << PrintSettingStatus("S", ZU_DISABLED, ERR_SUCCESS) << "S: Disabled\n";
    QTest::newRow("status 2") << PrintSettingStatus("S", ZuStatus(2), ERR_SUCCESS) << "S: Disabled\n";
}

void tst_formatters::buttonConfig_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");

    const char* const names[] = { "ONLY_MP_ACTION", "AS_STARTUP_TRIG", "AS_ACTION_TRIG",
        "AS_ACTION_STARTUP_TRIG", "AS_BACKLIGHT_DECREASE", "AS_BACKLIGHT_DECR_STARTUP_TRIG",
        "AS_BACKLIGHT_INCREASE", "AS_BACKLIGHT_INCR_STARTUP_TRIG" };
    for (int value = 0; value <= 15; ++value)
        QTest::addRow("value %d", value) << value << 0
                                         << "B3: "
                + (value % 2 == 0 && value <= 14 ? QStringLiteral("BUTTON_") + names[value / 2]
                                                 : QStringLiteral("%1 - Incorrect setting").arg(value))
                + "\n";
    QTest::newRow("value 255") << 255 << 0 << "B3: 255 - Incorrect setting\n";
    QTest::newRow("code 2") << 4 << 2 << QString();
    QTest::newRow("code 18") << 4 << 18 << "B3: " + err(18) + "\n";
    QTest::newRow("code 6") << 4 << 6 << "B3: " + err(6) + "\n";
}

void tst_formatters::buttonConfig()
{
    QFETCH(int, value);
    QFETCH(int, code);
    QFETCH(QString, expected);
    QCOMPARE(PrintSettingButtonConfig("B3", ButtonConfigEnum(value), eErr(code)), expected);
}

void tst_formatters::degreeSignIsOneLatin1Byte()
{
    QCOMPARE(createString(ERR_SUCCESS, "SS temp", short(41), degC).toLatin1(),
        QByteArray("SS temp: 41 \xB0"
                   "C\n"));
}

QTEST_GUILESS_MAIN(tst_formatters)
#include "tst_formatters.moc"
