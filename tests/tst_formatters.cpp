#include "Formatters.h"

#include <QTest>

using namespace Korvane;

namespace
{

QString libraryText(int code)
{
    return QString::fromLatin1(GetErrorStringA(static_cast<eErr>(code)));
}

QString degreeLabel(const char* prefix)
{
    return QString::fromLatin1(prefix) + QChar(0xB0) + QLatin1Char('C');
}

} // namespace

class tst_formatters : public QObject
{
    Q_OBJECT
private slots:
    void createStringFamily_data();
    void createStringFamily();
    void valueForms_data();
    void valueForms();
    void time_data();
    void time();
    void printFamily_data();
    void printFamily();
    void settingTables_data();
    void settingTables();
    void buttonConfig_data();
    void buttonConfig();
    void degreeSignIsOneLatin1Byte();
};

// The four decisions of each create... formatter, for codes 0, 2, 18 and others.
void tst_formatters::createStringFamily_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");

    const struct {
        const char* kind;
        const char* success;
        const char* prefix;
    } kinds[] = {
        { "text", "Unit serial number: ZU-4711 \n", "Unit serial number: " },
        { "numberOf", "Number of CAN connections: 2\n", "Number of CAN connections: " },
        { "numberOf2", "Number of PWM outputs: 2\n", "Number of PWM outputs: " },
        { "mounted", "GPS device mounted: Yes\n", "GPS device mounted: " },
    };
    for (const auto& kind : kinds) {
        QTest::addRow("%s success", kind.kind) << kind.kind << 0 << QString::fromLatin1(kind.success);
        QTest::addRow("%s not supported", kind.kind) << kind.kind << 2 << QString();
        QTest::addRow("%s not available", kind.kind)
            << kind.kind << 18 << QString::fromLatin1(kind.prefix) + "N/A\n";
        for (int code : { 1, 3, 17, 19, 34 })
            QTest::addRow("%s code %d", kind.kind, code) << kind.kind << code
                                                         << QString::fromLatin1(kind.prefix)
                    + QStringLiteral("Error(%1) ").arg(code) + libraryText(code) + "\n";
    }
}

void tst_formatters::createStringFamily()
{
    QFETCH(QString, kind);
    QFETCH(int, code);
    QFETCH(QString, expected);

    const eErr err = static_cast<eErr>(code);
    QString line;
    if (kind == "text")
        line = createString(err, QStringLiteral("Unit serial number"), "ZU-4711", QString());
    else if (kind == "numberOf")
        line = createStringNumberOf(err, QStringLiteral("CAN"), 2);
    else if (kind == "numberOf2")
        line = createStringNumberOf2(err, QStringLiteral("PWM outputs"), 2);
    else
        line = createStringMounted(err, QStringLiteral("GPS"), true);
    QCOMPARE(line, expected);
}

// The value forms of createString, and the remaining success texts.
void tst_formatters::valueForms_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    QTest::newRow("double 3.3") << createString(ERR_SUCCESS, "Voltage 3.3V", 3.3, "V")
                                << "Voltage 3.3V: 3.3 V\n";
    QTest::newRow("double 12.0") << createString(ERR_SUCCESS, "Voltage 12V", 12.0, "V")
                                 << "Voltage 12V: 12 V\n";
    QTest::newRow("double six digits")
        << createString(ERR_SUCCESS, "Voltage 1.0V", 0.0001234567, "V") << "Voltage 1.0V: 0.000123457 V\n";
    QTest::newRow("double large") << createString(ERR_SUCCESS, "x", 1234567.0, "V") << "x: 1.23457e+06 V\n";
    QTest::newRow("short negative") << createString(ERR_SUCCESS, "Minimum temp", short(-40), degreeLabel(""))
                                    << QStringLiteral("Minimum temp: -40 ") + degreeLabel("") + "\n";
    QTest::newRow("unsigned short max")
        << createString(ERR_SUCCESS, "Number of power cycles", static_cast<unsigned short>(65535), QString())
        << "Number of power cycles: 65535 \n";
    QTest::newRow("text is Latin-1") << createString(ERR_SUCCESS, "Unit serial number",
        "A\xE9"
        "B",
        QString()) << QStringLiteral("Unit serial number: A") + QChar(0xE9) + "B \n";
    QTest::newRow("empty text keeps both blanks")
        << createString(ERR_SUCCESS, "Main PCB Serial", "", QString()) << "Main PCB Serial:  \n";
    QTest::newRow("mounted no") << createStringMounted(ERR_SUCCESS, "WLAN", false)
                                << "WLAN device mounted: No\n";
    QTest::newRow("count 255") << createStringNumberOf(ERR_SUCCESS, "USB", 255)
                               << "Number of USB connections: 255\n";
    QTest::newRow("count 0") << createStringNumberOf2(ERR_SUCCESS, "Configurable buttons", 0)
                             << "Number of Configurable buttons: 0\n";
}

void tst_formatters::valueForms()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    QCOMPARE(line, expected);
}

void tst_formatters::time_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<qulonglong>("minutes");
    QTest::addColumn<QString>("expected");

    QTest::newRow("0") << 0 << 0ULL << "Total run time: 0 min (0 days, 0h, 0min) \n";
    QTest::newRow("59") << 0 << 59ULL << "Total run time: 59 min (0 days, 0h, 59min) \n";
    QTest::newRow("60") << 0 << 60ULL << "Total run time: 60 min (0 days, 1h, 0min) \n";
    QTest::newRow("1440") << 0 << 1440ULL << "Total run time: 1440 min (1 days, 0h, 0min) \n";
    QTest::newRow("1505") << 0 << 1505ULL << "Total run time: 1505 min (1 days, 1h, 5min) \n";
    QTest::newRow("large") << 0 << 4294967295ULL
                           << "Total run time: 4294967295 min (2982616 days, 4h, 15min) \n";
    QTest::newRow("not supported") << 2 << 1505ULL << QString();
    QTest::newRow("not available") << 18 << 1505ULL << "Total run time: N/A\n";
    QTest::newRow("error") << 7 << 1505ULL << "Total run time: Error(7) " + libraryText(7) + "\n";
}

void tst_formatters::time()
{
    QFETCH(int, code);
    QFETCH(qulonglong, minutes);
    QFETCH(QString, expected);
    QCOMPARE(createStringTime(static_cast<eErr>(code), QStringLiteral("Total run time"),
                 static_cast<unsigned long>(minutes)),
        expected);
}

// The Print... family has no empty and no N/A form: 2 and 18 are errors too.
void tst_formatters::printFamily_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");

    const struct {
        const char* kind;
        const char* label;
        const char* success;
    } kinds[] = {
        { "version", "FPGA", "FPGA: v1.20.3.255\n" },
        { "trigger", "StartupTrigger", "StartupTrigger: Front button\n" },
        { "action", "LongButtonPressAction", "LongButtonPressAction: ShutDown\n" },
        { "frame", "Frame", "Frame: Extended\n" },
        { "double", "StartupVoltage", "StartupVoltage: 9\n" },
        { "int", "HeatingTempLimit", "HeatingTempLimit: -25\n" },
        { "status", "PowerOnStartup", "PowerOnStartup: Enabled\n" },
    };
    for (const auto& kind : kinds) {
        QTest::addRow("%s success", kind.kind) << kind.kind << 0 << QString::fromLatin1(kind.success);
        for (int code : { 2, 18, 1, 34 })
            QTest::addRow("%s code %d", kind.kind, code) << kind.kind << code
                                                         << QStringLiteral("%1: Error(%2) %3\n")
                                                                .arg(QLatin1String(kind.label))
                                                                .arg(code)
                                                                .arg(libraryText(code));
    }
}

void tst_formatters::printFamily()
{
    QFETCH(QString, kind);
    QFETCH(int, code);
    QFETCH(QString, expected);

    const eErr err = static_cast<eErr>(code);
    QString line;
    if (kind == "version")
        line = PrintVersion("FPGA", 1, 20, 3, 255, err);
    else if (kind == "trigger")
        line = PrintSettingTriggerConfig("StartupTrigger", TRIGGER_FRONT_BUTTON, err);
    else if (kind == "action")
        line = PrintSettingAction("LongButtonPressAction", POWER_ACTION_SHUTDOWN, err);
    else if (kind == "frame")
        line = PrintSettingCanFrameType("Frame", CAN_FRAME_EXTENDED, err);
    else if (kind == "double")
        line = PrintSettingDouble("StartupVoltage", 9.0, err);
    else if (kind == "int")
        line = PrintSettingInt("HeatingTempLimit", -25, err);
    else
        line = PrintSettingStatus("PowerOnStartup", ZU_ENABLED, err);
    QCOMPARE(line, expected);
}

void tst_formatters::settingTables_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    const QStringList triggers = { "Undefined value", "Front button", "OnOff Signal",
        "Both Front button and OnOff signal", "Undefined value" };
    for (int value = 0; value < triggers.size(); ++value)
        QTest::addRow("trigger %d", value) << PrintSettingTriggerConfig("T", static_cast<TriggerConf>(value),
            ERR_SUCCESS) << "T: " + triggers[value] + "\n";
    QTest::newRow("trigger 15") << PrintSettingTriggerConfig("T", TRIGGER_ALL, ERR_SUCCESS)
                                << "T: Undefined value\n";

    const QStringList actions = { "NoAction", "Suspend", "ShutDown", "Undefined value" };
    for (int value = 0; value < actions.size(); ++value)
        QTest::addRow("action %d", value) << PrintSettingAction("A", static_cast<PowerAction>(value),
            ERR_SUCCESS) << "A: " + actions[value] + "\n";
    QTest::newRow("action -1") << PrintSettingAction("A", static_cast<PowerAction>(-1), ERR_SUCCESS)
                               << "A: Undefined value\n";

    const QStringList frames = { "Standard", "Extended", "Standard, Extended", "Undefined value" };
    for (int value = 0; value < frames.size(); ++value)
        QTest::addRow("frame %d", value) << PrintSettingCanFrameType("F", static_cast<CanFrameType>(value),
            ERR_SUCCESS) << "F: " + frames[value] + "\n";

    QTest::newRow("status 0") << PrintSettingStatus("S", ZU_DISABLED, ERR_SUCCESS) << "S: Disabled\n";
    QTest::newRow("status 2") << PrintSettingStatus("S", static_cast<ZuStatus>(2), ERR_SUCCESS)
                              << "S: Disabled\n";
    QTest::newRow("status -1") << PrintSettingStatus("S", static_cast<ZuStatus>(-1), ERR_SUCCESS)
                               << "S: Disabled\n";

    QTest::newRow("double 3.3") << PrintSettingDouble("D", 3.3, ERR_SUCCESS) << "D: 3.3\n";
    QTest::newRow("double 12") << PrintSettingDouble("D", 12.0, ERR_SUCCESS) << "D: 12\n";
    QTest::newRow("double six digits")
        << PrintSettingDouble("D", 0.0001234567, ERR_SUCCESS) << "D: 0.000123457\n";
    QTest::newRow("int negative") << PrintSettingInt("I", -32768, ERR_SUCCESS) << "I: -32768\n";
}

void tst_formatters::settingTables()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    QCOMPARE(line, expected);
}

void tst_formatters::buttonConfig_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");

    const char* const names[] = { "BUTTON_ONLY_MP_ACTION", "BUTTON_AS_STARTUP_TRIG", "BUTTON_AS_ACTION_TRIG",
        "BUTTON_AS_ACTION_STARTUP_TRIG", "BUTTON_AS_BACKLIGHT_DECREASE",
        "BUTTON_AS_BACKLIGHT_DECR_STARTUP_TRIG", "BUTTON_AS_BACKLIGHT_INCREASE",
        "BUTTON_AS_BACKLIGHT_INCR_STARTUP_TRIG" };
    for (int value = 0; value <= 15; ++value) {
        const QString text = value % 2 == 0 && value <= 14
            ? QString::fromLatin1(names[value / 2])
            : QStringLiteral("%1 - Incorrect setting").arg(value);
        QTest::addRow("value %d", value) << value << 0 << "ButtonFunction 3: " + text + "\n";
    }
    QTest::newRow("value 255") << 255 << 0 << "ButtonFunction 3: 255 - Incorrect setting\n";
    QTest::newRow("not supported") << 4 << 2 << QString();
    QTest::newRow("not available") << 4 << 18 << "ButtonFunction 3: Error(18) " + libraryText(18) + "\n";
    QTest::newRow("error") << 4 << 6 << "ButtonFunction 3: Error(6) " + libraryText(6) + "\n";
}

void tst_formatters::buttonConfig()
{
    QFETCH(int, value);
    QFETCH(int, code);
    QFETCH(QString, expected);
    QCOMPARE(PrintSettingButtonConfig(
                 "ButtonFunction 3", static_cast<ButtonConfigEnum>(value), static_cast<eErr>(code)),
        expected);
}

void tst_formatters::degreeSignIsOneLatin1Byte()
{
    const QString line = createString(ERR_SUCCESS, "SS temp", short(41),
        QString::fromLatin1("\xB0"
                            "C"));
    QCOMPARE(line.toLatin1(),
        QByteArray("SS temp: 41 \xB0"
                   "C\n"));
}

QTEST_GUILESS_MAIN(tst_formatters)
#include "tst_formatters.moc"
