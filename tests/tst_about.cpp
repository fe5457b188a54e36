#include "Dialogs.h"
#include "Sections.h"
#include "simunit.h"
#include "tabAboutDlg.h"

#include <QComboBox>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace
{

QComboBox* selection(tabAboutDlg& page)
{
    return page.findChild<QComboBox*>("comboBoxSelection");
}

QString shownText(tabAboutDlg& page)
{
    return page.findChild<QPlainTextEdit*>("textEditInfo")->toPlainText();
}

QStringList entries(tabAboutDlg& page)
{
    QStringList texts;
    for (int index = 0; index < selection(page)->count(); ++index)
        texts << selection(page)->itemText(index);
    return texts;
}

} // namespace

class tst_about : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void entriesDependOnBattery_data();
    void entriesDependOnBattery();
    void opensOnEepromDataOnly();
    void views_data();
    void views();
    void reportRebuiltOnlyWhenChosen();
    void showingDoesNotRefresh();
    void saveCancelled();
    void saveWritesLatin1();
    void saveToUnwritablePlace();
};

void tst_about::entriesDependOnBattery_data()
{
    QTest::addColumn<int>("fitted");
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("withBattery");

    QTest::newRow("battery") << 1 << 0 << true;
    QTest::newRow("no battery") << 0 << 0 << false;
    QTest::newRow("presence query fails") << 1 << 7 << false;
    QTest::newRow("presence query unsupported") << 1 << 2 << false;
}

void tst_about::entriesDependOnBattery()
{
    QFETCH(int, fitted);
    QFETCH(int, code);
    QFETCH(bool, withBattery);

    ZuAuxSim::setValue("Unit/HasBattery", fitted);
    if (code != 0)
        ZuAuxSim::forceCode("Battery_isBatteryPresent", code);
    tabAboutDlg page(nullptr);
    QStringList expected
        = { "EEPROM data", "Diagnostic data", "ADC values", "CPU board data", "System report" };
    if (withBattery)
        expected << "Battery data";
    QCOMPARE(entries(page), expected);
    QCOMPARE(callsTo("GetBattery(").size(), 1);
    QCOMPARE(callsTo("Battery_release(").size(), 1);
}

// Filling the combo box builds no views; the constructor builds exactly one.
void tst_about::opensOnEepromDataOnly()
{
    tabAboutDlg page(nullptr);
    QCOMPARE(selection(page)->currentIndex(), 0);
    QCOMPARE(callsTo("GetAbout(").size(), 1);
    for (const char* family : { "GetDiagnostic(", "GetAdc(", "GetAuxVersion(", "GetConfig(" })
        QVERIFY2(callsTo(family).isEmpty(), family);
    QVERIFY(shownText(page).startsWith("Mainboard:\n"));
    QCOMPARE(shownText(page), readEeprom());
}

void tst_about::views_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("start");

    QTest::newRow("EEPROM data") << 0 << "Mainboard:\n";
    QTest::newRow("Diagnostic data") << 1 << "Diagnostic data:\n";
    QTest::newRow("ADC values") << 2 << "ADC values\n";
    QTest::newRow("CPU board data") << 3 << "";
    QTest::newRow("System report") << 4 << "\nSystem report generated on: ";
    QTest::newRow("Battery data") << 5 << "Battery reports no HW errors\n";
}

void tst_about::views()
{
    QFETCH(int, index);
    QFETCH(QString, start);

    ZuAuxSim::setValue("Unit/HasBattery", 1);
    ZuAuxSim::setValue("Battery/HwErrorStatus", 0);
    tabAboutDlg page(nullptr);
    // Away first, so that every entry, 0 included, is a change.
    selection(page)->setCurrentIndex(index == 3 ? 2 : 3);
    selection(page)->setCurrentIndex(index);
    const QString text = shownText(page);
    QVERIFY2(text.startsWith(start), qPrintable(text.left(80)));
    if (index == 3)
        QVERIFY(text.isEmpty());
    if (index == 4)
        QVERIFY(text.endsWith("------------------  End of report  ------------------\n"));

    // An index outside the table leaves the area empty.
    page.selectionIndexChanged(6);
    QVERIFY(shownText(page).isEmpty());
}

void tst_about::reportRebuiltOnlyWhenChosen()
{
    tabAboutDlg page(nullptr);
    QCOMPARE(callsTo("GetAuxVersion(").size(), 0);
    selection(page)->setCurrentIndex(4);
    QCOMPARE(callsTo("GetAuxVersion(").size(), 1);
    selection(page)->setCurrentIndex(4);
    QCOMPARE(callsTo("GetAuxVersion(").size(), 1);
    selection(page)->setCurrentIndex(0);
    selection(page)->setCurrentIndex(4);
    QCOMPARE(callsTo("GetAuxVersion(").size(), 2);
}

void tst_about::showingDoesNotRefresh()
{
    tabAboutDlg page(nullptr);
    ZuAuxSim::clearTrace();
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    page.hide();
    page.show();
    QVERIFY(ZuAuxSim::trace().isEmpty());
}

void tst_about::saveCancelled()
{
    QTemporaryDir dir;
    tabAboutDlg page(nullptr);
    Dialogs::Recorder recorder;
    page.findChild<QPushButton*>("pushButtonSaveAs")->click();
    QCOMPARE(recorder.fileRequests, QStringList { "Save Data" });
    QVERIFY(recorder.shown.isEmpty());
    QVERIFY(QDir(dir.path()).entryList(QDir::Files).isEmpty());
}

void tst_about::saveWritesLatin1()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("diagnostics");
    {
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(20000, 'x'));
    }
    tabAboutDlg page(nullptr);
    selection(page)->setCurrentIndex(1);
    Dialogs::Recorder recorder;
    recorder.answerFileName(path);
    page.findChild<QPushButton*>("pushButtonSaveAs")->click();
    QVERIFY(recorder.shown.isEmpty());

    // No extension is added, an old file is replaced, and the degree sign is
    // one byte.
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QCOMPARE(bytes, shownText(page).toLatin1());
    QVERIFY(bytes.startsWith("Diagnostic data:\n"));
    QVERIFY(bytes.contains("Total run time 40-60\xB0"
                           "C: "));
    QVERIFY(!bytes.contains("\xC2\xB0"));
}

void tst_about::saveToUnwritablePlace()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("missing/report.txt");
    QFile probe(path);
    QVERIFY(!probe.open(QIODevice::WriteOnly));

    tabAboutDlg page(nullptr);
    Dialogs::Recorder recorder;
    recorder.answerFileName(path);
    page.SaveFileAs();
    QCOMPARE(recorder.shown.size(), 1);
    QCOMPARE(recorder.shown[0].title, QStringLiteral("Unable to open file"));
    QCOMPARE(recorder.shown[0].text, probe.errorString());
    QCOMPARE(recorder.shown[0].icon, QMessageBox::Information);
    QCOMPARE(recorder.shown[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(!QFile::exists(path));
}

QTEST_MAIN(tst_about)
#include "tst_about.moc"
