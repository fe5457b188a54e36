#include "pagecheck.h"
#include "report/Formatters.h"

using namespace Korvane;

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
};

void tst_formatters::lines_data()
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

QTEST_GUILESS_MAIN(tst_formatters)
#include "tst_formatters.moc"
