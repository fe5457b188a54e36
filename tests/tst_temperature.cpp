// The "Temperature" page on the simulated unit: the sensor list the unit
// answers for when the page is built, and the readings on every showing,
// Refresh and choice.
#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabTempDlg.h"

#include <QComboBox>
#include <QLineEdit>

#include <memory>

class tst_temperature : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void page_data();
    void page();
    void rereads();
};

// unit: settings before the page is built; shown: settings before it is shown;
// fields: "<field>=<text>", or "<field>" for a field whose row is gone.
void tst_temperature::page_data()
{
    QTest::addColumn<QStringList>("unit");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("sensors");
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QStringList>("boxes");

    const QStringList full { "System supervisor", "PCB", "CPU", "CPU board", "Processor module box" };
    const struct {
        const char* name;
        QStringList unit {}, shown {}, sensors {}, fields {}, boxes {};
    } rows[] = {
        { "full unit", {}, {}, full,
            { "editTemp_SS=39°C (102.2°F)", "editTemp_PCB=42°C (107.6°F)", "editTemp_CPU=51°C (123.8°F)",
                "editTemp_CPUBoard=38°C (100.4°F)", "editTemp=39°C (102.2°F)" } },
        { "-57, -56 and 255", {},
            { "Diagnostic/SSTemp=-57", "Diagnostic/PCBTemp=-56", "Diagnostic/PMTemp_0=255" }, full,
            { "editTemp_SS=N/A", "editTemp_PCB=-56°C (-68.8°F)", "editTemp_CPU=255°C (491°F)",
                "editTemp=N/A" } },
        { "21 sensors", { "Diagnostic/PMSensorCount=19" }, {}, full + QStringList(15, "CPU"),
            { "editTemp_CPU=0°C (32°F)" }, { "Error, SensorIndex array out of range." } },
        { "no processor-module sensor", { "Diagnostic/PMSensorCount=0" }, {}, { "System supervisor", "PCB" },
            { "editTemp_CPU", "editTemp_CPUBoard", "editTemp_PCB=42°C (107.6°F)" } },
        { "one processor-module sensor", { "Diagnostic/PMSensorCount=1" }, {},
            { "System supervisor", "PCB", "CPU" }, { "editTemp_CPU=51°C (123.8°F)", "editTemp_CPUBoard" } },
        { "every type",
            { "Diagnostic/PMSensorCount=4", "Diagnostic/PMTempType_0=2", "Diagnostic/PMTempType_1=4",
                "Diagnostic/PMTempType_2=7", "Diagnostic/PMTempType_3=9" },
            {},
            { "System supervisor", "PCB", "Processor module env", "Processor module backplane",
                "Processor module other", "Unknown sensor: 9" },
            { "editTemp_CPU=", "editTemp_CPUBoard=" } },
        // Without a supervisor the first entry is the PCB; the failing PCB is not listed.
        { "supervisor missing, PCB failing", { "Diagnostic_getSSTemp=2", "Diagnostic_getPCBTemp=7" }, {},
            { "CPU", "CPU board", "Processor module box" },
            { "editTemp_SS", "editTemp_PCB=Error(7) in getPCBTemp: Communication with the controller failed",
                "editTemp=51°C (123.8°F)" } },
        { "supervisor failing when built", { "Diagnostic_getSSTemp=18" }, {},
            { "PCB", "CPU", "CPU board", "Processor module box" },
            { "editTemp_SS=Error(18) in getSSTemp: Value not available" } },
        { "reads failing when shown", {},
            { "Diagnostic_getSSTemp=2", "Diagnostic_getPCBTemp=6", "Diagnostic_getPMTemp=19" }, full,
            { "editTemp_SS=", "editTemp_PCB=getPCBTemp: Error:  Timeout, the controller did not answer",
                "editTemp_CPU=getPMTemp: Error:  Hardware fault",
                "editTemp_CPUBoard=getPMTemp: Error:  Hardware fault", "editTemp=" } },
    };
    for (const auto& row : rows)
        QTest::newRow(row.name) << row.unit << row.shown << row.sensors << row.fields << row.boxes;
}

void tst_temperature::page()
{
    QFETCH(QStringList, unit);
    QFETCH(QStringList, shown);

    resetUnit();
    Dialogs::Recorder recorder;
    for (const QString& setting : unit)
        change(setting);
    const auto page = std::make_unique<tabTempDlg>();
    ZuAuxSim::clearCodes();
    for (const QString& setting : shown)
        change(setting);
    page->show();

    auto* chooser = page->findChild<QComboBox*>(QStringLiteral("comboBoxSensor"));
    QStringList sensors;
    for (int i = 0; i < chooser->count(); ++i)
        sensors << chooser->itemText(i);
    QTEST(sensors, "sensors");

    QFETCH(QStringList, fields);
    QStringList actual;
    for (const QString& field : fields) {
        const QString name = field.section(QLatin1Char('='), 0, 0);
        const auto* edit = page->findChild<QLineEdit*>(name);
        actual << (edit ? name + QLatin1Char('=') + edit->text() : name);
    }
    QCOMPARE(actual, fields);
    QTEST(recorder.texts(), "boxes");
}

// Every listed sensor is read again on Refresh and on a new choice, whose
// reading shows beside the chooser.
void tst_temperature::rereads()
{
    resetUnit();
    tabTempDlg page;
    page.show();
    const QStringList once { "Diagnostic_getSSTemp() -> 0", "Diagnostic_getPCBTemp() -> 0",
        "Diagnostic_getPMTemp(0) -> 0", "Diagnostic_getPMTemp(1) -> 0", "Diagnostic_getPMTemp(2) -> 0" };
    ZuAuxSim::clearTrace();
    change(QStringLiteral("Diagnostic/PMTemp_1=-20"));
    QMetaObject::invokeMethod(&page, "refreshClicked");
    page.findChild<QComboBox*>(QStringLiteral("comboBoxSensor"))->setCurrentIndex(3);
    QCOMPARE(callsTo(QStringLiteral("Diagnostic_")), once + once);
    QCOMPARE(page.findChild<QLineEdit*>(QStringLiteral("editTemp"))->text(), QStringLiteral("-20°C (-4°F)"));
}

QTEST_MAIN(tst_temperature)
#include "tst_temperature.moc"
