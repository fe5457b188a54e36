// The "Buzzer" page on the simulated unit: clamped readings that write back,
// and the writes of the user's changes.
#include "pagecheck.h"
#include "simunit.h"
#include "tabBuzzerDlg.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QtTest>

class TestBuzzer : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void firstShowing_data();
    void firstShowing();
    void readFailures_data();
    void readFailures();
    void userChanges_data();
    void userChanges();
    void trigger_data();
    void trigger();
};

void TestBuzzer::init()
{
    resetUnit(QStringLiteral("full"));
    ZuAuxSim::setValue(QStringLiteral("Buzzer/Frequency"), 2000);
    ZuAuxSim::setValue(QStringLiteral("Buzzer/Volume"), 30);
    ZuAuxSim::setValue(QStringLiteral("Buzzer/Trigger"), 0);
}

void TestBuzzer::firstShowing_data()
{
    QTest::addColumn<int>("frequency");
    QTest::addColumn<int>("volume");
    QTest::addColumn<int>("trigger");
    QTest::addColumn<int>("sliderFreq");
    QTest::addColumn<int>("sliderVol");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("writes");

    QTest::newRow("in range") << 2000 << 30 << 0 << 2000 << 30 << "Off"
                              << QStringList { "Buzzer_setFrequency(2000) -> 0",
                                     "Buzzer_setVolume(30) -> 0" };
    QTest::newRow("volume 60 shows and writes 51")
        << 2000 << 60 << 0 << 2000 << 51 << "Off"
        << QStringList { "Buzzer_setFrequency(2000) -> 0", "Buzzer_setVolume(51) -> 0" };
    QTest::newRow("frequency 500 shows 700, writes nothing")
        << 500 << 0 << 0 << 700 << 0 << "Off" << QStringList();
    QTest::newRow("frequency 12000 is set to 10000")
        << 12000 << 0 << 0 << 10000 << 0 << "Off" << QStringList { "Buzzer_setFrequency(10000) -> 0" };
    QTest::newRow("sounding buzzer") << 700 << 51 << 1 << 700 << 51 << "On"
                                     << QStringList { "Buzzer_setVolume(51) -> 0",
                                            "Buzzer_setTrigger(1) -> 0" };
}

void TestBuzzer::firstShowing()
{
    QFETCH(int, frequency);
    QFETCH(int, volume);
    QFETCH(int, trigger);
    QFETCH(int, sliderFreq);
    QFETCH(int, sliderVol);
    QFETCH(QString, button);
    QFETCH(QStringList, writes);

    ZuAuxSim::setValue(QStringLiteral("Buzzer/Frequency"), frequency);
    ZuAuxSim::setValue(QStringLiteral("Buzzer/Volume"), volume);
    ZuAuxSim::setValue(QStringLiteral("Buzzer/Trigger"), trigger);
    Dialogs::Recorder recorder;
    tabBuzzerDlg page(nullptr);
    auto* onButton = control<QPushButton>(page, "buttonOn");
    QCOMPARE(onButton->text(), QStringLiteral("Off"));
    ZuAuxSim::clearTrace();

    page.show();

    QCOMPARE(control<QSlider>(page, "sliderFreq")->value(), sliderFreq);
    QCOMPARE(control<QSlider>(page, "sliderVol")->value(), sliderVol);
    QCOMPARE(control<QLabel>(page, "labelFreq")->text(), QStringLiteral("Freq\n %1 Hz").arg(sliderFreq));
    QCOMPARE(control<QLabel>(page, "labelVolume")->text(), QStringLiteral("Volume\n %1").arg(sliderVol));
    QCOMPARE(onButton->text(), button);
    QCOMPARE(onButton->isChecked(), trigger == 1);
    QCOMPARE(callsTo(QStringLiteral("Buzzer_set")), writes);
    QCOMPARE(shownErrors(recorder), QStringList());

    // Once shown, the controls match the unit: a second showing writes nothing.
    page.hide();
    ZuAuxSim::clearTrace();
    page.show();
    QCOMPARE(callsTo(QStringLiteral("Buzzer_set")), QStringList());
}

void TestBuzzer::readFailures_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("hidden");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("no frequency") << "Buzzer_getFrequency" << 2 << "sliderFreq" << QStringList();
    QTest::newRow("frequency failure")
        << "Buzzer_getFrequency" << 6 << "" << QStringList { errorBox(6, "getFrequency") };
    QTest::newRow("no volume") << "Buzzer_getVolume" << 2 << "sliderVol" << QStringList();
    QTest::newRow("volume failure") << "Buzzer_getVolume" << 6 << ""
                                    << QStringList { errorBox(6, "getVolume") };
    QTest::newRow("no trigger") << "Buzzer_getTrigger" << 2 << "buttonOn" << QStringList();
    QTest::newRow("trigger failure") << "Buzzer_getTrigger" << 6 << ""
                                     << QStringList { errorBox(6, "getTrigger") };
}

void TestBuzzer::readFailures()
{
    QFETCH(QString, operation);
    QFETCH(int, code);
    QFETCH(QString, hidden);
    QFETCH(QStringList, errors);

    ZuAuxSim::forceCode(operation, code);
    Dialogs::Recorder recorder;
    tabBuzzerDlg page(nullptr);
    page.show();

    for (const char* name : { "sliderFreq", "sliderVol", "buttonOn" })
        QCOMPARE(control<QWidget>(page, name)->isHidden(), hidden == QLatin1String(name));
    QCOMPARE(shownErrors(recorder), errors);
}

void TestBuzzer::userChanges_data()
{
    QTest::addColumn<QString>("slider");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("labelText");
    QTest::addColumn<QString>("write");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("frequency") << "sliderFreq" << 4510 << 0 << "labelFreq"
                               << "Freq\n 4510 Hz"
                               << "Buzzer_setFrequency(4510) -> 0" << QStringList();
    QTest::newRow("frequency refused")
        << "sliderFreq" << 10000 << 4 << "labelFreq"
        << "Freq\n 10000 Hz"
        << "Buzzer_setFrequency(10000) -> 4" << QStringList { errorBox(4, "setFrequency") };
    QTest::newRow("volume") << "sliderVol" << 0 << 0 << "labelVolume"
                            << "Volume\n 0"
                            << "Buzzer_setVolume(0) -> 0" << QStringList();
    QTest::newRow("volume refused") << "sliderVol" << 44 << 7 << "labelVolume"
                                    << "Volume\n 44"
                                    << "Buzzer_setVolume(44) -> 7"
                                    << QStringList { errorBox(7, "setVolume") };
}

void TestBuzzer::userChanges()
{
    QFETCH(QString, slider);
    QFETCH(int, value);
    QFETCH(int, code);
    QFETCH(QString, label);
    QFETCH(QString, labelText);
    QFETCH(QString, write);
    QFETCH(QStringList, errors);

    Dialogs::Recorder recorder;
    tabBuzzerDlg page(nullptr);
    page.show();
    if (code)
        ZuAuxSim::forceCode(write.section(QLatin1Char('('), 0, 0), code);
    ZuAuxSim::clearTrace();

    page.findChild<QSlider*>(slider)->setValue(value);

    QCOMPARE(callsTo(QStringLiteral("Buzzer_")), QStringList { write });
    QCOMPARE(page.findChild<QLabel*>(label)->text(), labelText);
    QCOMPARE(shownErrors(recorder), errors);
}

void TestBuzzer::trigger_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("switched on") << 0 << "On" << QStringList();
    QTest::newRow("refused keeps the caption") << 15 << "Off" << QStringList { errorBox(15, "setTrigger") };
}

void TestBuzzer::trigger()
{
    QFETCH(int, code);
    QFETCH(QString, caption);
    QFETCH(QStringList, errors);

    Dialogs::Recorder recorder;
    tabBuzzerDlg page(nullptr);
    page.show();
    if (code)
        ZuAuxSim::forceCode(QStringLiteral("Buzzer_setTrigger"), code);
    ZuAuxSim::clearTrace();

    auto* button = control<QPushButton>(page, "buttonOn");
    button->click();

    QCOMPARE(callsTo(QStringLiteral("Buzzer_")),
        QStringList { QStringLiteral("Buzzer_setTrigger(1) -> %1").arg(code) });
    // The button stays where the user put it, whatever the unit said.
    QVERIFY(button->isChecked());
    QCOMPARE(button->text(), caption);
    QCOMPARE(shownErrors(recorder), errors);
}

QTEST_MAIN(TestBuzzer)
#include "tst_buzzer.moc"
