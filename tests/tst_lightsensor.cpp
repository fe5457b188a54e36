// The "Light sensor" page on the simulated unit: the trial start on showing,
// the busy sensor, the reading and its stop rules.
#include "pagecheck.h"
#include "simunit.h"
#include "tabLightSensorDlg.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

namespace
{
const QString notRunning = QStringLiteral("Light Sensor is not running");
}

class TestLightSensor : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void showing_data();
    void showing();
    void reading_data();
    void reading();
    void unchangedReadingRewritesNothing();
    void hideStopsOnce();
    void switchUsesSettings_data();
    void switchUsesSettings();
    void refusedStartByButton();
};

void TestLightSensor::init()
{
    resetUnit(QStringLiteral("full"));
    ZuAuxSim::setValue(QStringLiteral("Backlight/AutomaticBLStatus"), 0);
    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), 350);
    ZuAuxSim::setValue(QStringLiteral("Lightsensor/OperatingRange"), 0);
}

void TestLightSensor::showing_data()
{
    QTest::addColumn<bool>("automaticBacklight");
    QTest::addColumn<int>("forced");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<bool>("running");
    QTest::addColumn<bool>("buttonEnabled");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QStringList>("errors");

    const QString start = QStringLiteral("Lightsensor_startAverageCalc(1, 0, 100, 0) -> %1");
    QTest::newRow("free sensor starts at once")
        << false << 0 << QStringList { start.arg(0), "Lightsensor_stopAverageCalc() -> 0", start.arg(0) }
        << true << true << "" << QStringList();
    QTest::newRow("held by the automatic backlight")
        << true << 0 << QStringList { start.arg(20) } << false << false
        << "Cannot be started when automatic backlight is running"
        << QStringList { QStringLiteral(
                             "Error(20) in startAverageCalc.\r\nThe light sensor cannot be started when "
                             "automatic backlight is running.\r\nError: ")
               + QString::fromLatin1(Korvane::GetErrorStringA(Korvane::ERR_SENSOR_BUSY)) };
    QTest::newRow("other start failure")
        << false << 7 << QStringList { start.arg(7) } << false << false << "Error: startAverageCalc"
        << QStringList { errorBox(7, "startAverageCalc") };
}

void TestLightSensor::showing()
{
    QFETCH(bool, automaticBacklight);
    QFETCH(int, forced);
    QFETCH(QStringList, calls);
    QFETCH(bool, running);
    QFETCH(bool, buttonEnabled);
    QFETCH(QString, toolTip);
    QFETCH(QStringList, errors);

    if (automaticBacklight)
        ZuAuxSim::setValue(QStringLiteral("Backlight/AutomaticBLStatus"), 1);
    if (forced)
        ZuAuxSim::forceCode(QStringLiteral("Lightsensor_startAverageCalc"), forced);
    Dialogs::Recorder recorder;
    tabLightSensorDlg page(nullptr);
    QCOMPARE(control<QLineEdit>(page, "editIlumination")->text(), notRunning);
    QVERIFY(!pageTimer(page)->isActive());
    ZuAuxSim::clearTrace();

    page.show();

    auto* button = control<QPushButton>(page, "pushButtonOn");
    QCOMPARE(callsTo(QStringLiteral("Lightsensor_")), calls);
    QCOMPARE(pageTimer(page)->isActive(), running);
    QCOMPARE(button->isChecked(), running);
    QCOMPARE(button->text(), running ? QStringLiteral("On") : QStringLiteral("Off"));
    QCOMPARE(button->isEnabled(), buttonEnabled);
    QCOMPARE(button->toolTip(), toolTip);
    QCOMPARE(shownErrors(recorder), errors);
    QCOMPARE(control<QLineEdit>(page, "editIlumination")->text(), notRunning);

    // The next showing tries again: the sensor is free now.
    page.hide();
    ZuAuxSim::setValue(QStringLiteral("Backlight/AutomaticBLStatus"), 0);
    ZuAuxSim::clearCodes();
    recorder.shown.clear();
    page.show();
    QVERIFY(button->isEnabled());
    QCOMPARE(button->toolTip(), QString());
    QCOMPARE(button->text(), QStringLiteral("On"));
    QVERIFY(pageTimer(page)->isActive());
    QCOMPARE(shownErrors(recorder), QStringList());
}

void TestLightSensor::reading_data()
{
    QTest::addColumn<int>("lux");
    QTest::addColumn<int>("range");
    QTest::addColumn<int>("luxCode");
    QTest::addColumn<int>("rangeCode");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("readingVisible");
    QTest::addColumn<bool>("running");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("standard range") << 350 << 0 << 0 << 0 << "350 Lux, Range standard" << true << true
                                    << QStringList();
    QTest::newRow("extended range") << 41000 << 1 << 0 << 0 << "41000 Lux, Range extended" << true << true
                                    << QStringList();
    QTest::newRow("unknown range") << 0 << 5 << 0 << 0 << "0 Lux, Unknown range" << true << true
                                   << QStringList();
    QTest::newRow("no illuminance hides the reading")
        << 350 << 1 << 2 << 0 << "Range extended" << false << true << QStringList();
    QTest::newRow("no range") << 350 << 0 << 0 << 2 << "350 Lux, " << true << true << QStringList();
    QTest::newRow("illuminance failure stops")
        << 350 << 0 << 6 << 0 << notRunning << true << false << QStringList { errorBox(6, "getIlluminance") };
    QTest::newRow("range failure stops") << 350 << 0 << 0 << 7 << notRunning << true << false
                                         << QStringList { errorBox(7, "getOperatingRange") };
}

void TestLightSensor::reading()
{
    QFETCH(int, lux);
    QFETCH(int, range);
    QFETCH(int, luxCode);
    QFETCH(int, rangeCode);
    QFETCH(QString, text);
    QFETCH(bool, readingVisible);
    QFETCH(bool, running);
    QFETCH(QStringList, errors);

    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), lux);
    ZuAuxSim::setValue(QStringLiteral("Lightsensor/OperatingRange"), range);
    Dialogs::Recorder recorder;
    tabLightSensorDlg page(nullptr);
    page.show();
    if (luxCode)
        ZuAuxSim::forceCode(QStringLiteral("Lightsensor_getAverageIlluminance"), luxCode);
    if (rangeCode)
        ZuAuxSim::forceCode(QStringLiteral("Lightsensor_getOperatingRange"), rangeCode);
    ZuAuxSim::clearTrace();

    page.updateIlluminance();

    auto* button = control<QPushButton>(page, "pushButtonOn");
    QCOMPARE(control<QLineEdit>(page, "editIlumination")->text(), text);
    QCOMPARE(control<QGroupBox>(page, "groupBoxLightsensor")->isVisibleTo(&page), readingVisible);
    QCOMPARE(pageTimer(page)->isActive(), running);
    QCOMPARE(button->isChecked(), running);
    QCOMPARE(button->text(), running ? QStringLiteral("On") : QStringLiteral("Off"));
    QCOMPARE(callsTo(QStringLiteral("Lightsensor_stopAverageCalc")).size(), running ? 0 : 1);
    QCOMPARE(shownErrors(recorder), errors);
}

void TestLightSensor::unchangedReadingRewritesNothing()
{
    tabLightSensorDlg page(nullptr);
    page.show();
    auto* edit = control<QLineEdit>(page, "editIlumination");
    page.updateIlluminance();
    QCOMPARE(edit->text(), QStringLiteral("350 Lux, Range standard"));

    // Writing the text would move the cursor to its end.
    edit->setCursorPosition(2);
    page.updateIlluminance();
    QCOMPARE(edit->cursorPosition(), 2);

    ZuAuxSim::hold(QStringLiteral("Lightsensor/AverageIlluminance"), 351);
    page.updateIlluminance();
    QCOMPARE(edit->text(), QStringLiteral("351 Lux, Range standard"));
}

void TestLightSensor::hideStopsOnce()
{
    Dialogs::Recorder recorder;
    tabLightSensorDlg page(nullptr);
    page.show();
    page.updateIlluminance();
    ZuAuxSim::clearTrace();

    page.hide();

    auto* button = control<QPushButton>(page, "pushButtonOn");
    QCOMPARE(callsTo(QStringLiteral("Lightsensor_")), QStringList { "Lightsensor_stopAverageCalc() -> 0" });
    QVERIFY(!pageTimer(page)->isActive());
    QVERIFY(!button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("Off"));
    QCOMPARE(control<QLineEdit>(page, "editIlumination")->text(), notRunning);
    QCOMPARE(shownErrors(recorder), QStringList());
}

void TestLightSensor::switchUsesSettings_data()
{
    QTest::addColumn<int>("modeIndex");
    QTest::addColumn<int>("average");
    QTest::addColumn<int>("reject");
    QTest::addColumn<int>("delta");
    QTest::addColumn<QString>("start");

    QTest::newRow("standard") << 0 << 1 << 0 << 1 << "Lightsensor_startAverageCalc(1, 0, 1, 0) -> 0";
    QTest::newRow("extended") << 1 << 8 << 3 << 500 << "Lightsensor_startAverageCalc(8, 3, 500, 1) -> 0";
    QTest::newRow("auto") << 2 << 99 << 99 << 65000 << "Lightsensor_startAverageCalc(99, 99, 65000, 2) -> 0";
}

void TestLightSensor::switchUsesSettings()
{
    QFETCH(int, modeIndex);
    QFETCH(int, average);
    QFETCH(int, reject);
    QFETCH(int, delta);
    QFETCH(QString, start);

    Dialogs::Recorder recorder;
    tabLightSensorDlg page(nullptr);
    page.show();
    auto* button = control<QPushButton>(page, "pushButtonOn");
    QVERIFY(button->isChecked());

    // Settings changed while running wait for the next start.
    ZuAuxSim::clearTrace();
    control<QComboBox>(page, "comboBoxSamplingsMode")->setCurrentIndex(modeIndex);
    control<QSpinBox>(page, "spinBoxAverageWndSize")->setValue(average);
    control<QSpinBox>(page, "spinBoxRejectWndSize")->setValue(reject);
    control<QSpinBox>(page, "spinBoxRejectDelta")->setValue(delta);
    QCOMPARE(callsTo(QStringLiteral("Lightsensor_")), QStringList());

    button->click();
    QVERIFY(!pageTimer(page)->isActive());
    QCOMPARE(button->text(), QStringLiteral("Off"));
    button->click();
    QVERIFY(pageTimer(page)->isActive());
    QVERIFY(button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("On"));
    QCOMPARE(callsTo(QStringLiteral("Lightsensor_")),
        (QStringList { "Lightsensor_stopAverageCalc() -> 0", start }));
    QCOMPARE(shownErrors(recorder), QStringList());
}

void TestLightSensor::refusedStartByButton()
{
    Dialogs::Recorder recorder;
    tabLightSensorDlg page(nullptr);
    page.show();
    auto* button = control<QPushButton>(page, "pushButtonOn");
    button->click();
    ZuAuxSim::forceCode(QStringLiteral("Lightsensor_startAverageCalc"), 6);

    button->click();

    QVERIFY(!button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("Off"));
    QVERIFY(!pageTimer(page)->isActive());
    QCOMPARE(shownErrors(recorder), QStringList { errorBox(6, "startAverageCalc") });
}

QTEST_MAIN(TestLightSensor)
#include "tst_lightsensor.moc"
