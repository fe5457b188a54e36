// The "Button backlight" page on the simulated unit: reading the LED without
// writing back, and every change writing the signal and switching it on.
#include "pagecheck.h"
#include "simunit.h"
#include "tabLEDDlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

namespace
{
const QString dimmingMessage = QStringLiteral("Button backlight dimming is active. Changing intensity has no "
                                              "effect.\r\nYou can turn off dimming on the "
                                              "Display tab.");

void setSignal(const QVariant& hertz, int dutyCycle)
{
    ZuAuxSim::setValue(QStringLiteral("FrontLED/SignalFrequency"), hertz);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/SignalDutyCycle"), dutyCycle);
}
} // namespace

class TestLed : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void constructedTexts();
    void showSignal_data();
    void showSignal();
    void showOtherValues_data();
    void showOtherValues();
    void showReadFailures_data();
    void showReadFailures();
    void changesSwitchOn_data();
    void changesSwitchOn();
    void intensityWithDimming();
    void onOffButton_data();
    void onOffButton();
    void enabledDuringStartup_data();
    void enabledDuringStartup();
    void colourPicker();
    void colourPickerCancelled();
};

void TestLed::init()
{
    resetUnit(QStringLiteral("full"));
    setSignal(2.5, 50);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/ColorRed"), 0);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/ColorGreen"), 0);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/ColorBlue"), 12);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/NrOfPulses"), 3);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/IdleTime"), 5);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/EnabledDuringStartup"), 0);
    ZuAuxSim::setValue(QStringLiteral("Backlight/LedDimming"), 0);
}

void TestLed::constructedTexts()
{
    tabLEDDlg page(nullptr);
    QCOMPARE(page.windowTitle(), QStringLiteral("Button backlight"));
    QCOMPARE(control<QGroupBox>(page, "groupFrontLED")->title(), QStringLiteral("Backlight"));
    QCOMPARE(control<QLabel>(page, "label_8")->text(), QStringLiteral("Intensity"));
    QCOMPARE(control<QLabel>(page, "label_7")->text(), QStringLiteral("Enable during system start-up"));
    QVERIFY(control<QPushButton>(page, "buttonColorpick")->isHidden());
    QVERIFY(control<QLabel>(page, "label_customcolor")->isHidden());
    auto* combo = control<QComboBox>(page, "comboBoxColor");
    QCOMPARE(combo->count(), 16);
    QCOMPARE(combo->itemText(0), QStringLiteral("0"));
    QCOMPARE(combo->itemText(15), QStringLiteral("15"));
}

void TestLed::showSignal_data()
{
    QTest::addColumn<double>("hertz");
    QTest::addColumn<int>("dutyCycle");
    QTest::addColumn<int>("sliderFreq");
    QTest::addColumn<QString>("freqText");
    QTest::addColumn<QString>("dutyText");
    QTest::addColumn<bool>("on");

    QTest::newRow("below the range") << 0.15 << 50 << 4 << "Freq\n 0.2 Hz"
                                     << "Duty cycle\n 50% on" << true;
    QTest::newRow("above the range") << 45.0 << 50 << 300 << "Freq\n 30 Hz"
                                     << "Duty cycle\n 50% on" << true;
    QTest::newRow("rounded to two decimals") << 2.346 << 20 << 23 << "Freq\n 2.35 Hz"
                                             << "Duty cycle\n 20% on" << true;
    QTest::newRow("tenths land on their step") << 2.3 << 100 << 23 << "Freq\n 2.3 Hz"
                                               << "Duty cycle\n 100% on" << true;
    QTest::newRow("dark at duty cycle 0") << 12.5 << 0 << 125 << "Freq\n 12.5 Hz"
                                          << "Duty cycle\n 0% on" << false;
}

void TestLed::showSignal()
{
    QFETCH(double, hertz);
    QFETCH(int, dutyCycle);
    QFETCH(int, sliderFreq);
    QFETCH(QString, freqText);
    QFETCH(QString, dutyText);
    QFETCH(bool, on);

    setSignal(hertz, dutyCycle);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    ZuAuxSim::clearTrace();
    page.show();

    auto* button = control<QPushButton>(page, "buttonOff");
    QCOMPARE(control<QSlider>(page, "sliderFreq")->value(), sliderFreq);
    QCOMPARE(control<QSlider>(page, "sliderDutyC")->value(), dutyCycle);
    QCOMPARE(control<QLabel>(page, "labelFreq")->text(), freqText);
    QCOMPARE(control<QLabel>(page, "labelDutyC")->text(), dutyText);
    QCOMPARE(button->isChecked(), on);
    QCOMPARE(button->text(), on ? QStringLiteral("On") : QStringLiteral("Off"));
    QCOMPARE(callsTo(QStringLiteral("FrontLED_set")), QStringList());
    QCOMPARE(shownErrors(recorder), QStringList());
}

void TestLed::showOtherValues_data()
{
    QTest::addColumn<int>("blue");
    QTest::addColumn<int>("pulses");
    QTest::addColumn<int>("idleTime");
    QTest::addColumn<int>("startup");
    QTest::addColumn<int>("intensity");
    QTest::addColumn<int>("idleMs");

    QTest::newRow("typical") << 12 << 3 << 5 << 1 << 12 << 500;
    QTest::newRow("darkest, no pause") << 0 << 0 << 0 << 0 << 0 << 0;
    QTest::newRow("idle time beyond the spin box") << 15 << 99 << 200 << 1 << 15 << 10000;
}

void TestLed::showOtherValues()
{
    QFETCH(int, blue);
    QFETCH(int, pulses);
    QFETCH(int, idleTime);
    QFETCH(int, startup);
    QFETCH(int, intensity);
    QFETCH(int, idleMs);

    ZuAuxSim::setValue(QStringLiteral("FrontLED/ColorRed"), 15);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/ColorBlue"), blue);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/NrOfPulses"), pulses);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/IdleTime"), idleTime);
    ZuAuxSim::setValue(QStringLiteral("FrontLED/EnabledDuringStartup"), startup);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    ZuAuxSim::clearTrace();
    page.show();

    QCOMPARE(control<QComboBox>(page, "comboBoxColor")->currentIndex(), intensity);
    QCOMPARE(control<QSpinBox>(page, "spinBoxPulses")->value(), pulses);
    QCOMPARE(control<QSpinBox>(page, "spinBoxIdleTime")->value(), idleMs);
    QCOMPARE(control<QCheckBox>(page, "checkEnFrontLED")->isChecked(), startup == 1);
    QCOMPARE(callsTo(QStringLiteral("FrontLED_set")), QStringList());
    QCOMPARE(shownErrors(recorder), QStringList());
}

void TestLed::showReadFailures_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("hidden");
    QTest::addColumn<bool>("startupEnabled");
    QTest::addColumn<int>("intensity");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("no signal hides both sliders")
        << "FrontLED_getSignal" << 2 << QStringList { "sliderFreq", "sliderDutyC" } << true << 12 << false
        << QStringList();
    QTest::newRow("signal failure") << "FrontLED_getSignal" << 7 << QStringList() << true << 12 << false
                                    << QStringList { errorBox(7, "getSignal") };
    QTest::newRow("colour failure means full intensity")
        << "FrontLED_getColor" << 7 << QStringList() << true << 15 << true << QStringList();
    QTest::newRow("colour unsupported means full intensity")
        << "FrontLED_getColor" << 2 << QStringList() << true << 15 << true << QStringList();
    QTest::newRow("no pulses") << "FrontLED_getNrOfPulses" << 2 << QStringList { "spinBoxPulses" } << true
                               << 12 << true << QStringList();
    QTest::newRow("pulses failure") << "FrontLED_getNrOfPulses" << 6 << QStringList() << true << 12 << true
                                    << QStringList { errorBox(6, "getNrOfPulses") };
    QTest::newRow("no idle time") << "FrontLED_getIdleTime" << 2 << QStringList { "spinBoxIdleTime" } << true
                                  << 12 << true << QStringList();
    QTest::newRow("idle time failure") << "FrontLED_getIdleTime" << 6 << QStringList() << true << 12 << true
                                       << QStringList { errorBox(6, "getIdleTime") };
    QTest::newRow("no start-up setting")
        << "FrontLED_getEnabledDuringStartup" << 2 << QStringList { "groupFrontLED" } << true << 12 << true
        << QStringList();
    QTest::newRow("start-up failure greys the group")
        << "FrontLED_getEnabledDuringStartup" << 17 << QStringList() << false << 12 << true
        << QStringList { errorBox(17, "getEnabledDuringStartup") };
}

void TestLed::showReadFailures()
{
    QFETCH(QString, operation);
    QFETCH(int, code);
    QFETCH(QStringList, hidden);
    QFETCH(bool, startupEnabled);
    QFETCH(int, intensity);
    QFETCH(bool, on);
    QFETCH(QStringList, errors);

    ZuAuxSim::forceCode(operation, code);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();

    for (const char* name :
        { "sliderFreq", "sliderDutyC", "spinBoxPulses", "spinBoxIdleTime", "groupFrontLED" })
        QCOMPARE(control<QWidget>(page, name)->isHidden(), hidden.contains(QLatin1String(name)));
    QCOMPARE(control<QGroupBox>(page, "groupFrontLED")->isEnabled(), startupEnabled);
    QCOMPARE(control<QComboBox>(page, "comboBoxColor")->currentIndex(), intensity);
    QCOMPARE(
        control<QPushButton>(page, "buttonOff")->text(), on ? QStringLiteral("On") : QStringLiteral("Off"));
    QCOMPARE(shownErrors(recorder), errors);
}

void TestLed::changesSwitchOn_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("writes");
    QTest::addColumn<QString>("freqText");
    QTest::addColumn<QString>("dutyText");

    // The page starts dark (duty cycle 0) at 2.5 Hz.
    QTest::newRow("intensity 9") << "comboBoxColor" << 9
                                 << QStringList { "FrontLED_setColor(0, 0, 9) -> 0",
                                        "FrontLED_setSignal(2.5, 0) -> 0" }
                                 << "Freq\n 2.5 Hz"
                                 << "Duty cycle\n 0% on";
    QTest::newRow("frequency") << "sliderFreq" << 7 << QStringList { "FrontLED_setSignal(0.7, 0) -> 0" }
                               << "Freq\n 0.7 Hz"
                               << "Duty cycle\n 0% on";
    QTest::newRow("duty cycle") << "sliderDutyC" << 30 << QStringList { "FrontLED_setSignal(2.5, 30) -> 0" }
                                << "Freq\n 2.5 Hz"
                                << "Duty cycle\n 30% on";
    QTest::newRow("pulses") << "spinBoxPulses" << 7
                            << QStringList { "FrontLED_setSignal(2.5, 0) -> 0",
                                   "FrontLED_setNrOfPulses(7) -> 0" }
                            << "Freq\n 2.5 Hz"
                            << "Duty cycle\n 0% on";
    QTest::newRow("idle time 250 ms")
        << "spinBoxIdleTime" << 250
        << QStringList { "FrontLED_setSignal(2.5, 0) -> 0", "FrontLED_setIdleTime(2) -> 0" }
        << "Freq\n 2.5 Hz"
        << "Duty cycle\n 0% on";
    QTest::newRow("idle time 10 s") << "spinBoxIdleTime" << 10000
                                    << QStringList { "FrontLED_setSignal(2.5, 0) -> 0",
                                           "FrontLED_setIdleTime(100) -> 0" }
                                    << "Freq\n 2.5 Hz"
                                    << "Duty cycle\n 0% on";
}

void TestLed::changesSwitchOn()
{
    QFETCH(QString, object);
    QFETCH(int, value);
    QFETCH(QStringList, writes);
    QFETCH(QString, freqText);
    QFETCH(QString, dutyText);

    setSignal(2.5, 0);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();
    auto* button = control<QPushButton>(page, "buttonOff");
    QVERIFY(!button->isChecked());
    ZuAuxSim::clearTrace();

    QObject* target = page.findChild<QObject*>(object);
    if (auto* combo = qobject_cast<QComboBox*>(target))
        combo->setCurrentIndex(value);
    else
        QVERIFY(target->setProperty("value", value));

    QCOMPARE(callsTo(QStringLiteral("FrontLED_")), writes);
    QVERIFY(button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("On"));
    QCOMPARE(control<QLabel>(page, "labelFreq")->text(), freqText);
    QCOMPARE(control<QLabel>(page, "labelDutyC")->text(), dutyText);
    QCOMPARE(shownErrors(recorder), QStringList());
}

void TestLed::intensityWithDimming()
{
    ZuAuxSim::setValue(QStringLiteral("Backlight/LedDimming"), 1);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();
    ZuAuxSim::clearTrace();

    auto* combo = control<QComboBox>(page, "comboBoxColor");
    combo->setCurrentIndex(3);
    combo->setCurrentIndex(4);

    QCOMPARE(shownErrors(recorder), (QStringList { dimmingMessage, dimmingMessage }));
    QCOMPARE(callsTo(QStringLiteral("FrontLED_setColor")),
        (QStringList { "FrontLED_setColor(0, 0, 3) -> 0", "FrontLED_setColor(0, 0, 4) -> 0" }));
    QCOMPARE(callsTo(QStringLiteral("FrontLED_setSignal")).size(), 2);
    // The temporary handle is given back each time.
    QCOMPARE(callsTo(QStringLiteral("GetBacklight")).size(), 2);
    QCOMPARE(callsTo(QStringLiteral("Backlight_release")).size(), 2);
}

void TestLed::onOffButton_data()
{
    QTest::addColumn<int>("offCode");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("accepted") << 0 << QStringList();
    QTest::newRow("switching off refused") << 7 << QStringList { errorBox(7, "setOff") };
}

void TestLed::onOffButton()
{
    QFETCH(int, offCode);
    QFETCH(QStringList, errors);

    setSignal(4.0, 25);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();
    auto* button = control<QPushButton>(page, "buttonOff");
    QCOMPARE(button->text(), QStringLiteral("On"));
    if (offCode)
        ZuAuxSim::forceCode(QStringLiteral("FrontLED_setOff"), offCode);
    // Switching on writes the signal without checking it.
    ZuAuxSim::forceCode(QStringLiteral("FrontLED_setSignal"), 4);
    ZuAuxSim::clearTrace();

    button->click();
    QVERIFY(!button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("Off"));
    button->click();
    QVERIFY(button->isChecked());
    QCOMPARE(button->text(), QStringLiteral("On"));

    QCOMPARE(callsTo(QStringLiteral("FrontLED_")),
        (QStringList {
            QStringLiteral("FrontLED_setOff() -> %1").arg(offCode), "FrontLED_setSignal(4, 25) -> 4" }));
    QCOMPARE(shownErrors(recorder), errors);
}

void TestLed::enabledDuringStartup_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("groupEnabled");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("accepted") << 0 << true << QStringList();
    QTest::newRow("refused greys the group")
        << 13 << false << QStringList { errorBox(13, "setEnabledDuringStartup") };
}

void TestLed::enabledDuringStartup()
{
    QFETCH(int, code);
    QFETCH(bool, groupEnabled);
    QFETCH(QStringList, errors);

    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();
    if (code)
        ZuAuxSim::forceCode(QStringLiteral("FrontLED_setEnabledDuringStartup"), code);
    ZuAuxSim::clearTrace();

    control<QCheckBox>(page, "checkEnFrontLED")->click();

    QCOMPARE(callsTo(QStringLiteral("FrontLED_")),
        QStringList { QStringLiteral("FrontLED_setEnabledDuringStartup(1) -> %1").arg(code) });
    QCOMPARE(control<QGroupBox>(page, "groupFrontLED")->isEnabled(), groupEnabled);
    QCOMPARE(shownErrors(recorder), errors);
}

void TestLed::colourPicker()
{
    setSignal(1.0, 60);
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();
    auto* picker = control<QPushButton>(page, "buttonColorpick");
    auto* text = control<QLabel>(page, "label_customcolor");
    picker->show();
    text->show();
    ZuAuxSim::clearTrace();

    recorder.answerColor(QColor(255, 136, 50));
    picker->click();

    // Choosing the colour selects intensity 6, which writes its own colour.
    QCOMPARE(recorder.colorRequests, 1);
    QCOMPARE(callsTo(QStringLiteral("FrontLED_")),
        (QStringList { "FrontLED_setColor(15, 8, 2) -> 0", "FrontLED_setColor(0, 0, 6) -> 0",
            "FrontLED_setSignal(1, 60) -> 0", "FrontLED_getColor() -> 0" }));
    QCOMPARE(control<QComboBox>(page, "comboBoxColor")->currentIndex(), 6);
    QCOMPARE(text->text(), QStringLiteral("R:0 G:0 B:6"));
    QCOMPARE(picker->styleSheet(), QStringLiteral("* { background-color: rgb(0,0,102) }"));

    // A colour the unit cannot report.
    ZuAuxSim::forceCode(QStringLiteral("FrontLED_getColor"), 9);
    recorder.answerColor(QColor(0, 0, 255));
    picker->click();
    QCOMPARE(text->text(), QStringLiteral("Undefined"));
    QCOMPARE(shownErrors(recorder), QStringList { errorBox(9, "FrontLED_getColor") });

    ZuAuxSim::forceCode(QStringLiteral("FrontLED_getColor"), 2);
    recorder.answerColor(QColor(0, 0, 255));
    picker->click();
    QVERIFY(text->isHidden());
    QVERIFY(picker->styleSheet().startsWith(QStringLiteral("* { background-color: qlineargradient(")));
}

void TestLed::colourPickerCancelled()
{
    Dialogs::Recorder recorder;
    tabLEDDlg page(nullptr);
    page.show();
    auto* picker = control<QPushButton>(page, "buttonColorpick");
    picker->show();
    ZuAuxSim::clearTrace();

    picker->click();

    QCOMPARE(recorder.colorRequests, 1);
    QCOMPARE(callsTo(QStringLiteral("FrontLED_")), QStringList());
    QCOMPARE(control<QComboBox>(page, "comboBoxColor")->currentIndex(), 12);
}

QTEST_MAIN(TestLed)
#include "tst_led.moc"
