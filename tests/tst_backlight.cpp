// The "Display" page on the simulated unit: polling, echo, automatic
// backlight and dimming, as the user drives them.
#include "pagecheck.h"
#include "simunit.h"
#include "tabBacklightDlg.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QtTest>

class TestBacklight : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void refreshIntensity_data();
    void refreshIntensity();
    void hardwareStatus_data();
    void hardwareStatus();
    void pollingOnlyWhileShown();
    void showFillsControls_data();
    void showFillsControls();
    void userSetsIntensity_data();
    void userSetsIntensity();
    void automaticBacklight_data();
    void automaticBacklight();
    void ledDimming_data();
    void ledDimming();
    void formTexts_data();
    void formTexts();
};

void TestBacklight::init()
{
    resetUnit(QStringLiteral("full"));
    ZuAuxSim::setValue(QStringLiteral("Backlight/AutomaticBLStatus"), 0);
    ZuAuxSim::setValue(QStringLiteral("Backlight/HWStatus"), 1);
}

void TestBacklight::refreshIntensity_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("intensity");
    QTest::addColumn<bool>("sliderVisible");
    QTest::addColumn<int>("sliderValue");
    QTest::addColumn<QString>("level");
    QTest::addColumn<QStringList>("writes");
    QTest::addColumn<QStringList>("errors");
    QTest::addColumn<bool>("polling");

    QTest::newRow("new reading is shown and echoed")
        << 0 << 120 << true << 120 << "120" << QStringList { "Backlight_setIntensity(120) -> 0" }
        << QStringList() << true;
    QTest::newRow("full intensity") << 0 << 255 << true << 255 << "255"
                                    << QStringList { "Backlight_setIntensity(255) -> 0" } << QStringList()
                                    << true;
    QTest::newRow("zero equals the start value")
        << 0 << 0 << true << 0 << "0" << QStringList() << QStringList() << true;
    QTest::newRow("unsupported hides the slider silently")
        << 2 << 120 << false << 0 << "0" << QStringList() << QStringList() << true;
    QTest::newRow("failure reports and stops polling")
        << 7 << 120 << true << 0 << "0" << QStringList() << QStringList { errorBox(7, "getIntensity") }
        << false;
}

void TestBacklight::refreshIntensity()
{
    QFETCH(int, code);
    QFETCH(int, intensity);
    QFETCH(bool, sliderVisible);
    QFETCH(int, sliderValue);
    QFETCH(QString, level);
    QFETCH(QStringList, writes);
    QFETCH(QStringList, errors);
    QFETCH(bool, polling);

    ZuAuxSim::setValue(QStringLiteral("Backlight/Intensity"), intensity);
    ZuAuxSim::setValue(QStringLiteral("Backlight/RejectWindowSize"), 11);
    if (code)
        ZuAuxSim::forceCode(QStringLiteral("Backlight_getIntensity"), code);
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    page.show();
    auto* levelLabel = control<QLabel>(page, "labelBLLevel");
    auto* kLabel = control<QLabel>(page, "labelKLevel");
    kLabel->clear();
    ZuAuxSim::clearTrace();

    page.refresh();

    auto* slider = control<QSlider>(page, "sliderBacklightLevel");
    QCOMPARE(slider->isVisibleTo(&page), sliderVisible);
    QCOMPARE(slider->value(), sliderValue);
    QCOMPARE(levelLabel->text(), level);
    QCOMPARE(kLabel->text(), QStringLiteral("11"));
    QCOMPARE(callsTo(QStringLiteral("Backlight_setIntensity")), writes);
    QCOMPARE(shownErrors(recorder), errors);
    QCOMPARE(pageTimer(page)->isActive(), polling);

    if (polling) {
        // An unchanged reading touches nothing and writes nothing.
        page.refresh();
        QCOMPARE(callsTo(QStringLiteral("Backlight_setIntensity")), writes);
        QCOMPARE(shownErrors(recorder), errors);
    }
}

void TestBacklight::hardwareStatus_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("healthy");
    QTest::addColumn<QString>("status");

    QTest::newRow("healthy") << 0 << 1 << "status: OK";
    QTest::newRow("faulty") << 0 << 0 << "status: ERROR";
    QTest::newRow("unsupported leaves the form text") << 2 << 1 << "status:   ";
    QTest::newRow("failure shown in the label") << 19 << 1 << "Error: 19";
}

void TestBacklight::hardwareStatus()
{
    QFETCH(int, code);
    QFETCH(int, healthy);
    QFETCH(QString, status);

    ZuAuxSim::setValue(QStringLiteral("Backlight/HWStatus"), healthy);
    if (code)
        ZuAuxSim::forceCode(QStringLiteral("Backlight_getHWStatus"), code);
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    page.show();
    page.refresh();

    QCOMPARE(control<QLabel>(page, "label_hwstatus1")->text(), status);
    QCOMPARE(shownErrors(recorder), QStringList());
    QVERIFY(pageTimer(page)->isActive());
}

void TestBacklight::pollingOnlyWhileShown()
{
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    QTimer* timer = pageTimer(page);
    QVERIFY(!timer->isActive());

    page.show();
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 500);
    page.hide();
    QVERIFY(!timer->isActive());

    // A failed reading stops polling until the page is shown again.
    ZuAuxSim::forceCode(QStringLiteral("Backlight_getIntensity"), 7);
    page.show();
    page.refresh();
    QVERIFY(!timer->isActive());
    ZuAuxSim::clearCodes();
    page.hide();
    QVERIFY(!timer->isActive());
    page.show();
    QVERIFY(timer->isActive());
    QCOMPARE(recorder.shown.size(), 1);
}

void TestBacklight::showFillsControls_data()
{
    QTest::addColumn<int>("soft");
    QTest::addColumn<int>("rejectWindow");
    QTest::addColumn<int>("running");
    QTest::addColumn<int>("dimming");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<bool>("softChecked");
    QTest::addColumn<int>("sensitivity");
    QTest::addColumn<bool>("enableChecked");
    QTest::addColumn<bool>("parametersEnabled");
    QTest::addColumn<bool>("dimChecked");
    QTest::addColumn<QString>("error");

    QTest::newRow("stopped") << 1 << 9 << 0 << 1 << "" << true << 9 << false << true << true << "";
    QTest::newRow("running greys the parameters")
        << 0 << 12 << 1 << 0 << "" << false << 12 << true << false << false << "";
    QTest::newRow("reject window beyond the slider")
        << 0 << 40 << 0 << 0 << "" << false << 17 << false << true << false << "";
    QTest::newRow("parameters unreadable") << 1 << 9 << 0 << 1 << "getAutomaticBLParams" << false << 9
                                           << false << true << true << "getAutomaticBLParams";
    QTest::newRow("filter unreadable") << 1 << 9 << 0 << 1 << "getAutomaticBLFilter" << true << 2 << false
                                       << true << true << "getAutomaticBLFilter";
    QTest::newRow("status unreadable leaves the controls enabled")
        << 1 << 9 << 1 << 1 << "getAutomaticBLStatus" << true << 9 << false << true << true
        << "getAutomaticBLStatus";
    QTest::newRow("dimming unreadable")
        << 1 << 9 << 0 << 1 << "getLedDimming" << true << 9 << false << true << false << "getLedDimming";
}

void TestBacklight::showFillsControls()
{
    QFETCH(int, soft);
    QFETCH(int, rejectWindow);
    QFETCH(int, running);
    QFETCH(int, dimming);
    QFETCH(QString, failing);
    QFETCH(bool, softChecked);
    QFETCH(int, sensitivity);
    QFETCH(bool, enableChecked);
    QFETCH(bool, parametersEnabled);
    QFETCH(bool, dimChecked);
    QFETCH(QString, error);

    ZuAuxSim::setValue(QStringLiteral("Backlight/SoftTransitions"), soft);
    ZuAuxSim::setValue(QStringLiteral("Backlight/RejectWindowSize"), rejectWindow);
    ZuAuxSim::setValue(QStringLiteral("Backlight/AutomaticBLStatus"), running);
    ZuAuxSim::setValue(QStringLiteral("Backlight/LedDimming"), dimming);
    if (!failing.isEmpty())
        ZuAuxSim::forceCode(QStringLiteral("Backlight_") + failing, 13);
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    ZuAuxSim::clearTrace();
    page.show();

    auto* softBox = control<QCheckBox>(page, "checkBoxABLSoftTransitions");
    auto* slider = control<QSlider>(page, "sliderSensitivity");
    QCOMPARE(softBox->isChecked(), softChecked);
    QCOMPARE(slider->value(), sensitivity);
    // The number follows the slider when it moves, else on the first tick.
    QCOMPARE(control<QLabel>(page, "labelKLevel")->text(),
        failing == QLatin1String("getAutomaticBLFilter") ? QStringLiteral("0")
                                                         : QString::number(sensitivity));
    QCOMPARE(control<QCheckBox>(page, "checkBoxABLEnable")->isChecked(), enableChecked);
    QCOMPARE(softBox->isEnabled(), parametersEnabled);
    QCOMPARE(slider->isEnabled(), parametersEnabled);
    QCOMPARE(control<QCheckBox>(page, "checkBoxLedDim")->isChecked(), dimChecked);
    QCOMPARE(shownErrors(recorder), error.isEmpty() ? QStringList() : QStringList { errorBox(13, error) });
    // Showing the page only reads: no setter, no start or stop.
    QCOMPARE(callsTo(QStringLiteral("Backlight_s")), QStringList());
}

void TestBacklight::userSetsIntensity_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("accepted") << 0 << QStringList();
    QTest::newRow("refused") << 4 << QStringList { errorBox(4, "setIntensity") };
}

void TestBacklight::userSetsIntensity()
{
    QFETCH(int, code);
    QFETCH(QStringList, errors);

    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    page.show();
    if (code)
        ZuAuxSim::forceCode(QStringLiteral("Backlight_setIntensity"), code);
    ZuAuxSim::clearTrace();

    control<QSlider>(page, "sliderBacklightLevel")->setValue(200);

    QCOMPARE(callsTo(QStringLiteral("Backlight_setIntensity")),
        QStringList { QStringLiteral("Backlight_setIntensity(200) -> %1").arg(code) });
    QCOMPARE(control<QLabel>(page, "labelBLLevel")->text(), QStringLiteral("200"));
    QCOMPARE(shownErrors(recorder), errors);
}

void TestBacklight::automaticBacklight_data()
{
    QTest::addColumn<int>("sensitivity");
    QTest::addColumn<bool>("soft");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("sensitivity 17, soft")
        << 17 << true << "" << 0
        << QStringList { "Backlight_setAutomaticBLParams(1) -> 0",
               "Backlight_setAutomaticBLFilter(4, 17, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 0" }
        << QStringList();
    QTest::newRow("sensitivity 2, hard")
        << 2 << false << "" << 0
        << QStringList { "Backlight_setAutomaticBLParams(0) -> 0",
               "Backlight_setAutomaticBLFilter(4, 2, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 0" }
        << QStringList();
    QTest::newRow("failing start still greys")
        << 9 << false << "Backlight_startAutomaticBL" << 19
        << QStringList { "Backlight_setAutomaticBLParams(0) -> 0",
               "Backlight_setAutomaticBLFilter(4, 9, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 19" }
        << QStringList { errorBox(19, "startAutomaticBL") };
    QTest::newRow("failing parameters, filter still sent")
        << 5 << true << "Backlight_setAutomaticBLParams" << 4
        << QStringList { "Backlight_setAutomaticBLParams(1) -> 4",
               "Backlight_setAutomaticBLFilter(4, 5, 80, 2) -> 0", "Backlight_startAutomaticBL() -> 0" }
        << QStringList { errorBox(4, "setAutomaticBLParams") };
    QTest::newRow("failing filter") << 5 << false << "Backlight_setAutomaticBLFilter" << 4
                                    << QStringList { "Backlight_setAutomaticBLParams(0) -> 0",
                                           "Backlight_setAutomaticBLFilter(4, 5, 80, 2) -> 4",
                                           "Backlight_startAutomaticBL() -> 0" }
                                    << QStringList { errorBox(4, "setAutomaticBLFilter") };
}

void TestBacklight::automaticBacklight()
{
    QFETCH(int, sensitivity);
    QFETCH(bool, soft);
    QFETCH(QString, failing);
    QFETCH(int, code);
    QFETCH(QStringList, calls);
    QFETCH(QStringList, errors);

    ZuAuxSim::setValue(QStringLiteral("Backlight/SoftTransitions"), 0);
    ZuAuxSim::setValue(QStringLiteral("Backlight/RejectWindowSize"), 10);
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    page.show();
    auto* enable = control<QCheckBox>(page, "checkBoxABLEnable");
    auto* softBox = control<QCheckBox>(page, "checkBoxABLSoftTransitions");
    auto* slider = control<QSlider>(page, "sliderSensitivity");
    if (!failing.isEmpty())
        ZuAuxSim::forceCode(failing, code);
    ZuAuxSim::clearTrace();

    // Sensitivity and soft transitions reach the unit only with the start.
    slider->setValue(sensitivity);
    QCOMPARE(control<QLabel>(page, "labelKLevel")->text(), QString::number(sensitivity));
    if (soft)
        softBox->click();
    QCOMPARE(ZuAuxSim::trace(), QStringList());

    enable->click();
    QCOMPARE(callsTo(QStringLiteral("Backlight_s")), calls);
    QCOMPARE(shownErrors(recorder), errors);
    QVERIFY(enable->isChecked());
    QVERIFY(!softBox->isEnabled());
    QVERIFY(!slider->isEnabled());

    ZuAuxSim::clearCodes();
    ZuAuxSim::clearTrace();
    enable->click();
    QCOMPARE(callsTo(QStringLiteral("Backlight_s")), QStringList { "Backlight_stopAutomaticBL() -> 0" });
    QVERIFY(softBox->isEnabled());
    QVERIFY(slider->isEnabled());
    QCOMPARE(shownErrors(recorder), errors);
}

void TestBacklight::ledDimming_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("accepted") << 0 << QStringList();
    QTest::newRow("refused") << 15
                             << QStringList { errorBox(15, "setLedDimming"), errorBox(15, "setLedDimming") };
}

void TestBacklight::ledDimming()
{
    QFETCH(int, code);
    QFETCH(QStringList, errors);

    ZuAuxSim::setValue(QStringLiteral("Backlight/LedDimming"), 0);
    Dialogs::Recorder recorder;
    tabBacklightDlg page(nullptr);
    page.show();
    if (code)
        ZuAuxSim::forceCode(QStringLiteral("Backlight_setLedDimming"), code);
    ZuAuxSim::clearTrace();

    auto* dim = control<QCheckBox>(page, "checkBoxLedDim");
    dim->click();
    dim->click();
    QCOMPARE(callsTo(QStringLiteral("Backlight_setLedDimming")),
        (QStringList { QStringLiteral("Backlight_setLedDimming(1) -> %1").arg(code),
            QStringLiteral("Backlight_setLedDimming(0) -> %1").arg(code) }));
    QCOMPARE(shownErrors(recorder), errors);
}

void TestBacklight::formTexts_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("expected");

    const QString rejectTip = QStringLiteral("Change the reject window size");
    QTest::newRow("page title") << "tabBacklight" << QByteArray("windowTitle") << "Display";
    QTest::newRow("dimming group") << "groupBox_3" << QByteArray("title") << "Button backlight dimming";
    QTest::newRow("level group") << "groupBox" << QByteArray("title") << "Backlight level";
    QTest::newRow("automatic group") << "groupBox_2" << QByteArray("title") << "Automatic backlight";
    QTest::newRow("sensitivity tip") << "sliderSensitivity" << QByteArray("toolTip") << rejectTip;
    QTest::newRow("sensitivity label tip") << "label_3" << QByteArray("toolTip") << rejectTip;
    QTest::newRow("status caption tip") << "label_hwstatus0" << QByteArray("toolTip") << rejectTip;
    QTest::newRow("status tip") << "label_hwstatus1" << QByteArray("toolTip") << rejectTip;
    QTest::newRow("status before polling") << "label_hwstatus1" << QByteArray("text") << "status:   ";
}

void TestBacklight::formTexts()
{
    QFETCH(QString, object);
    QFETCH(QByteArray, property);
    QFETCH(QString, expected);

    tabBacklightDlg page(nullptr);
    QObject* target
        = object == page.objectName() ? static_cast<QObject*>(&page) : page.findChild<QObject*>(object);
    QVERIFY(target);
    QCOMPARE(target->property(property.constData()).toString(), expected);
}

QTEST_MAIN(TestBacklight)
#include "tst_backlight.moc"
