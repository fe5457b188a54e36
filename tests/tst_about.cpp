#include "Dialogs.h"
#include "reportcheck.h"
#include "simunit.h"
#include "tabAboutDlg.h"

#include <QComboBox>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

class tst_about : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void entries_data();
    void entries();
    void views_data();
    void views();
    void save_data();
    void save();

private:
    static QComboBox* selection(tabAboutDlg& page) { return page.findChild<QComboBox*>("comboBoxSelection"); }
    static QString shown(tabAboutDlg& page)
    {
        return page.findChild<QPlainTextEdit*>("textEditInfo")->toPlainText();
    }
};

void tst_about::entries_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<bool>("withBattery");

    QTest::newRow("battery") << QStringList { "Unit/HasBattery=1" } << true;
    QTest::newRow("no battery") << QStringList { "Unit/HasBattery=0" } << false;
    QTest::newRow("presence query fails")
        << QStringList { "Unit/HasBattery=1", "Battery_isBatteryPresent=7" } << false;
}

// Filling the combo box builds no views; the page opens on the EEPROM data.
void tst_about::entries()
{
    QFETCH(QStringList, settings);
    QFETCH(bool, withBattery);

    for (const QString& setting : settings)
        change(setting);
    tabAboutDlg page(nullptr);
    QStringList expected
        = { "EEPROM data", "Diagnostic data", "ADC values", "CPU board data", "System report" };
    if (withBattery)
        expected << "Battery data";
    QStringList texts;
    for (int index = 0; index < selection(page)->count(); ++index)
        texts << selection(page)->itemText(index);
    QCOMPARE(texts, expected);
    QCOMPARE(callsTo("Battery_release(").size(), 1);
    QVERIFY(callsTo("GetDiagnostic(").isEmpty() && callsTo("GetAdc(").isEmpty());
    QVERIFY(shown(page).startsWith("Mainboard:\n"));
}

void tst_about::views_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("start");

    QTest::newRow("Diagnostic data") << 1 << "Diagnostic data:\n";
    QTest::newRow("ADC values") << 2 << "ADC values\n";
    QTest::newRow("System report") << 4 << "\nSystem report generated on: ";
    QTest::newRow("Battery data") << 5 << "Battery reports no HW errors\n";
}

// Each choice builds its view; showing the page builds nothing, and an index
// outside the table leaves the area empty.
void tst_about::views()
{
    QFETCH(int, index);
    QFETCH(QString, start);

    change("Unit/HasBattery=1");
    change("Battery/HwErrorStatus=0");
    tabAboutDlg page(nullptr);
    selection(page)->setCurrentIndex(index);
    QVERIFY2(shown(page).startsWith(start), qPrintable(shown(page).left(80)));
    QCOMPARE(shown(page).isEmpty(), start.isEmpty());
    const int calls = ZuAuxSim::trace().size();
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(ZuAuxSim::trace().size(), calls);
    page.selectionIndexChanged(6);
    QVERIFY(shown(page).isEmpty());
}

void tst_about::save_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("written");

    QTest::newRow("cancelled") << "" << false;
    QTest::newRow("replaces a longer file") << "diagnostics" << true;
    QTest::newRow("unwritable") << "missing/report.txt" << false;
}

// The file gets the shown text in Latin-1 under the very name chosen.
void tst_about::save()
{
    QFETCH(QString, answer);
    QFETCH(bool, written);

    QTemporaryDir dir;
    QFile file(dir.filePath("diagnostics"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(20000, 'x')) == 20000);
    file.close();
    tabAboutDlg page(nullptr);
    selection(page)->setCurrentIndex(1);
    Dialogs::Recorder recorder;
    if (!answer.isEmpty())
        recorder.answerFileName(dir.filePath(answer));
    page.findChild<QPushButton*>("pushButtonSaveAs")->click();
    QCOMPARE(recorder.fileRequests, QStringList { "Save Data" });

    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QCOMPARE(bytes == shown(page).toLatin1(), written);
    QCOMPARE(bytes.contains("Total run time 40-60\xB0"
                            "C: "),
        written);
    if (answer.isEmpty() || written) {
        QVERIFY(recorder.shown.isEmpty());
        return;
    }
    QFile probe(dir.filePath(answer));
    QVERIFY(!probe.open(QIODevice::WriteOnly));
    QCOMPARE(recorder.texts(), QStringList { probe.errorString() });
    const Dialogs::Shown& box = recorder.shown[0];
    QCOMPARE(box.title, QStringLiteral("Unable to open file"));
    QVERIFY(box.icon == QMessageBox::Information && box.buttons == QMessageBox::Ok);
}

QTEST_MAIN(tst_about)
#include "tst_about.moc"
