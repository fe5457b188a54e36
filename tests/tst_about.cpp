#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabAboutDlg.h"

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
    void cleanup() { checkNoWindowLeft(); }
    void init() { resetUnit(); }

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

void tst_about::views_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("start");

    const QStringList battery { "Unit/HasBattery=1", "Battery/HwErrorStatus=0" };
    QTest::newRow("no battery") << QStringList { "Unit/HasBattery=0" } << 5 << 0 << "Mainboard:\n";
    QTest::newRow("presence query fails")
        << QStringList { "Unit/HasBattery=1", "Battery_isBatteryPresent=7" } << 5 << 0 << "Mainboard:\n";
    QTest::newRow("Diagnostic data") << battery << 6 << 1 << "Diagnostic data:\n";
    QTest::newRow("ADC values") << battery << 6 << 2 << "ADC values\n";
    QTest::newRow("System report") << battery << 6 << 4 << "\nSystem report generated on: ";
    QTest::newRow("Battery data") << battery << 6 << 5 << "Battery reports no HW errors\n";
}

// The page opens on the EEPROM data, the only view built before a choice;
// showing the page builds nothing.
void tst_about::views()
{
    QFETCH(QStringList, settings);
    QFETCH(int, entries);
    QFETCH(int, index);
    QFETCH(QString, start);

    for (const QString& setting : settings)
        change(setting);
    tabAboutDlg page(nullptr);
    QStringList texts;
    for (int entry = 0; entry < selection(page)->count(); ++entry)
        texts << selection(page)->itemText(entry);
    QCOMPARE(texts,
        QStringList({ "EEPROM data", "Diagnostic data", "ADC values", "CPU board data", "System report",
                        "Battery data" })
            .mid(0, entries));
    QCOMPARE(callsTo("Battery_release(").size(), 1);
    QVERIFY(callsTo("GetDiagnostic(").isEmpty() && callsTo("GetAdc(").isEmpty());
    selection(page)->setCurrentIndex(index);
    QVERIFY(shown(page).startsWith(start));
    const int calls = ZuAuxSim::trace().size();
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(ZuAuxSim::trace().size(), calls);
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
    QCOMPARE(bytes.contains('\xB0'), written); // the degree signs, one byte each
    if (answer.isEmpty() || written) {
        QVERIFY(recorder.shown.isEmpty());
        return;
    }
    QFile probe(dir.filePath(answer));
    QVERIFY(!probe.open(QIODevice::WriteOnly));
    QCOMPARE(recorder.texts(), QStringList { probe.errorString() });
    QCOMPARE(recorder.shown[0].title, QStringLiteral("Unable to open file"));
    QCOMPARE(recorder.shown[0].icon, QMessageBox::Information);
}

QTEST_MAIN(tst_about)
#include "tst_about.moc"
