#include "ZuSettings.h"
#include "simunit.h"

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using Tab = tabMenuDlg::eTab;
using Overrides = QMap<int, QString>;
using IndexList = QList<int>;

namespace
{

const QString res = QStringLiteral(":/ZuSettings/Resources/");

// The menu as the form has it: button, icon file and caption per page number.
struct MenuEntry {
    const char* button;
    const char* icon;
    const char* caption;
};
const MenuEntry formMenu[tabMenuDlg::tabCount] = {
    { nullptr, nullptr, nullptr },
    { "pushButtonVersion", "hwinfo.png", "Version" },
    { "pushButtonTemp", "thermometer.png", "Temperature" },
    { "pushButtonDisplay", "background.png", "Display" },
    { "pushButtonPower", "energy.png", "Power" },
    { "pushButtonSysConfig", "heater.png", "Heater" },
    { "pushButtonAbout", "kblackbox.png", "About" },
    { "pushButtonLed", "ksame.png", "Led" },
    { "pushButtonBuzzer", "arts.png", "Buzzer" },
    { "pushButtonCAN", "input_device.png", "CAN" },
    { "pushButtonAdvanced", "chip.png", "Advanced" },
    { "pushButtonDigIO", "package_settings.png", "Digital I/O" },
    { "pushButton", "Full.png", "Light sensor" },
    { "pushButtonTouch", "tablet.png", "Touch" },
    { "pushButtonOnOffSettings", "exit.png", "On/Off" },
    { "pushButtonTelematics", "Globe.png", "Telematics" },
};

// Window titles of the pages when every feature is present.
const QStringList fullTitles = { "Menu", "Version", "Temperature", "Display", "", "Heater", "About",
    "Button backlight", "Buzzer", "CAN", "Advanced", "Configurable Inputs - PWM Outputs", "Light sensor", "",
    "On/Off Settings", "Buttons" };

QImage iconImage(const QIcon& icon)
{
    return icon.pixmap(QSize(60, 60)).toImage().convertToFormat(QImage::Format_ARGB32);
}

double opacity(QWidget* w)
{
    auto* effect = qobject_cast<QGraphicsOpacityEffect*>(w->graphicsEffect());
    return effect ? effect->opacity() : 1.0;
}

// Applies "Operation=code" and "Family/Key=value" entries to the simulated unit.
void configure(const QStringList& entries)
{
    for (const QString& entry : entries) {
        const QString name = entry.section('=', 0, 0);
        const QString value = entry.section('=', 1);
        if (name.contains('/'))
            ZuAuxSim::setValue(name, value);
        else
            ZuAuxSim::forceCode(name, value.toInt());
    }
}

// A page that counts how often it has been shown.
class CountingPage : public tabDlg
{
public:
    using tabDlg::tabDlg;
    int shows = 0;

protected:
    void showEvent(QShowEvent* event) override
    {
        ++shows;
        tabDlg::showEvent(event);
    }
};

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { ZuAuxSim::clearCodes(); }

    void discovery_data();
    void discovery();
    void discoveryQueries_data();
    void discoveryQueries();
    void pagesLiveInsideTheWindow();
    void buzzerPlaceholderTakesTheDisplayNumber();
    void menuButtonsEmitTheirNumber_data();
    void menuButtonsEmitTheirNumber();
    void switching();
    void emptyNumberChangesNothing();
    void showingTheCurrentPageAgainRunsItsShowHandler();
    void escape_data();
    void escape();
    void otherKeysPassOn();
};

void TestMainWindow::discovery_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QStringList>("setup");
    QTest::addColumn<IndexList>("greyed");
    QTest::addColumn<Overrides>("tips");
    QTest::addColumn<Overrides>("icons");
    QTest::addColumn<QString>("ioCaption");
    QTest::addColumn<QStringList>("titles"); // "-" for an empty number

    const Overrides fixedIcons = { { Tab::POWER, "energyGrey.png" }, { Tab::TOUCH, "tabletGrey.png" },
        { Tab::TELEMATICS, "Buttons.png" } };
    Overrides presentIcons = fixedIcons;
    presentIcons.insert(Tab::DIGIO, "IO.png");
    const QString calibrate = "Touch Screen calibration from start menu";

    QTest::newRow("full unit") << "full" << QStringList() << IndexList { Tab::POWER, Tab::TOUCH }
                               << Overrides { { Tab::POWER, "Power is not available" },
                                      { Tab::TOUCH, calibrate } }
                               << presentIcons << "I/O" << fullTitles;

    Overrides headlessIcons = presentIcons;
    headlessIcons.insert(Tab::DISPLAY, "backgroundGrey.png");
    headlessIcons.insert(Tab::SYSCONFIG, "heaterGrey.png");
    headlessIcons.insert(Tab::LIGHTSENSOR, "FullGrey.png");
    QStringList headlessTitles = fullTitles;
    for (int i : { int(Tab::DISPLAY), int(Tab::SYSCONFIG), int(Tab::CAN), int(Tab::LIGHTSENSOR) })
        headlessTitles[i] = "";
    headlessTitles[Tab::BUZZER] = "-";
    QTest::newRow("box without display, CAN or heater")
        << "headless" << QStringList()
        << IndexList { Tab::DISPLAY, Tab::POWER, Tab::SYSCONFIG, Tab::BUZZER, Tab::CAN, Tab::LIGHTSENSOR,
               Tab::TOUCH }
        << Overrides { { Tab::DISPLAY, "Display is not available" }, { Tab::POWER, "Power is not available" },
               { Tab::SYSCONFIG, "Heater is not available" }, { Tab::BUZZER, "Buzzer is not available" },
               { Tab::CAN, "Can is not available" }, { Tab::LIGHTSENSOR, "Light sensor is not available" },
               { Tab::TOUCH, "Touch Screen is not available" } }
        << headlessIcons << "I/O" << headlessTitles;

    // Every query fails with 2: the About answers count as present, the
    // heater probe's 2 means no heater.
    Overrides noHeaterIcons = presentIcons;
    noHeaterIcons.insert(Tab::SYSCONFIG, "heaterGrey.png");
    QStringList noHeaterTitles = fullTitles;
    noHeaterTitles[Tab::SYSCONFIG] = "";
    QTest::newRow("library that supports nothing")
        << "unsupported" << QStringList() << IndexList { Tab::POWER, Tab::SYSCONFIG, Tab::TOUCH }
        << Overrides { { Tab::SYSCONFIG, "Heater is not available" }, { Tab::TOUCH, calibrate } }
        << noHeaterIcons << "I/O" << noHeaterTitles;

    QTest::newRow("failing About answers count as present")
        << "full"
        << QStringList { "About/IsDisplayAvailable=0", "About_getIsDisplayAvailable=7",
               "About/IsTouchScreenAvailable=0", "About_getIsTouchScreenAvailable=19",
               "About/NrOfCANConnections=0", "About_getNrOfCANConnections=6", "About/NrOfDigIOConnections=0",
               "About_getNrOfDigIOConnections=1" }
        << IndexList { Tab::POWER, Tab::TOUCH } << Overrides { { Tab::TOUCH, calibrate } } << presentIcons
        << "I/O" << fullTitles;

    QTest::newRow("heater probe failing otherwise than with 2")
        << "full" << QStringList { "Config_getHeatingTempLimit=7" } << IndexList { Tab::POWER, Tab::TOUCH }
        << Overrides { { Tab::TOUCH, calibrate } } << presentIcons << "I/O" << fullTitles;

    QTest::newRow("heater probe answering 2")
        << "full" << QStringList { "Config_getHeatingTempLimit=2" }
        << IndexList { Tab::POWER, Tab::SYSCONFIG, Tab::TOUCH }
        << Overrides { { Tab::SYSCONFIG, "Heater is not available" }, { Tab::TOUCH, calibrate } }
        << noHeaterIcons << "I/O" << noHeaterTitles;

    QTest::newRow("display without touch")
        << "full" << QStringList { "About/IsTouchScreenAvailable=0" } << IndexList { Tab::POWER, Tab::TOUCH }
        << Overrides { { Tab::TOUCH, "Touch Screen is not available" } } << presentIcons << "I/O"
        << fullTitles;

    QStringList noIOTitles = fullTitles;
    noIOTitles[Tab::DIGIO] = "";
    QTest::newRow("no digital I/O") << "full" << QStringList { "About/NrOfDigIOConnections=0" }
                                    << IndexList { Tab::POWER, Tab::DIGIO, Tab::TOUCH }
                                    << Overrides { { Tab::DIGIO, "Digital Input is not available" },
                                           { Tab::TOUCH, calibrate } }
                                    << fixedIcons << "Digital I/O" << noIOTitles;

    QStringList noCanTitles = fullTitles;
    noCanTitles[Tab::CAN] = "";
    QTest::newRow("no CAN") << "full" << QStringList { "About/NrOfCANConnections=0" }
                            << IndexList { Tab::POWER, Tab::CAN, Tab::TOUCH }
                            << Overrides { { Tab::CAN, "Can is not available" }, { Tab::TOUCH, calibrate } }
                            << presentIcons << "I/O" << noCanTitles;
}

void TestMainWindow::discovery()
{
    QFETCH(QString, profile);
    QFETCH(QStringList, setup);
    QFETCH(IndexList, greyed);
    QFETCH(Overrides, tips);
    QFETCH(Overrides, icons);
    QFETCH(QString, ioCaption);
    QFETCH(QStringList, titles);

    // Power is never offered by this window.
    tips.insert(Tab::POWER, "Power is not available");

    resetUnit(profile);
    configure(setup);
    ZuSettings window;

    for (int i = 1; i < tabMenuDlg::tabCount; ++i) {
        const MenuEntry& entry = formMenu[i];
        auto* button = window.findChild<QPushButton*>(entry.button);
        QVERIFY2(button, entry.button);
        QCOMPARE(window.menu()->button(Tab(i)), button);
        QLabel* caption = window.menu()->caption(Tab(i));

        const bool grey = greyed.contains(i);
        QVERIFY2(button->isEnabled() != grey, entry.button);
        QCOMPARE(opacity(button), grey ? 0.5 : 1.0);
        QCOMPARE(opacity(caption), grey ? 0.5 : 1.0);
        QCOMPARE(button->iconSize(), QSize(60, 60));
        QCOMPARE(button->toolTip(), tips.value(i));
        const QString icon = icons.value(i, QString::fromLatin1(entry.icon));
        QVERIFY2(iconImage(button->icon()) == iconImage(QIcon(res + icon)),
            qPrintable(QStringLiteral("%1 should show %2").arg(entry.button, icon)));

        QString text = QString::fromLatin1(entry.caption);
        if (i == Tab::LED)
            text = "Btn backlight";
        else if (i == Tab::DIGIO)
            text = ioCaption;
        else if (i == Tab::TELEMATICS)
            text = "Buttons";
        QCOMPARE(caption->text(), text);
        // The button shows only an icon: screen readers take its name from the caption.
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(button);
        QVERIFY(accessible);
        QCOMPARE(accessible->text(QAccessible::Name), text);
    }

    for (int i = 0; i < tabMenuDlg::tabCount; ++i) {
        if (titles[i] == "-") {
            QVERIFY2(!window.page(i), qPrintable(QString::number(i)));
            continue;
        }
        QVERIFY2(window.page(i), qPrintable(QString::number(i)));
        QCOMPARE(window.page(i)->windowTitle(), titles[i]);
    }
    QCOMPARE(window.findChild<QPushButton*>("buttonExit")->text(), QString("Exit"));
    QCOMPARE(window.findChild<QPushButton*>("buttonMenu")->text(), QString("Menu"));
}

void TestMainWindow::discoveryQueries_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QStringList>("queries");

    const QStringList common = { "About_getIsGPRSMounted", "About_getNrOfCANConnections",
        "About_getNrOfDigIOConnections", "About_getIsDisplayAvailable" };
    QTest::newRow("display: touch asked")
        << "full" << (common + QStringList { "About_getIsTouchScreenAvailable" });
    QTest::newRow("no display: touch not asked") << "headless" << common;
}

void TestMainWindow::discoveryQueries()
{
    QFETCH(QString, profile);
    QFETCH(QStringList, queries);
    resetUnit(profile);
    ZuSettings window;

    // Discovery happens before any page exists: everything up to the heater probe.
    QStringList asked;
    int handles = 0;
    for (const QString& line : ZuAuxSim::trace()) {
        if (line.startsWith("Config_getHeatingTempLimit"))
            break;
        if (line.startsWith("About_"))
            asked.append(line.section('(', 0, 0));
        if (line == "GetAbout()")
            ++handles;
    }
    QCOMPARE(asked, queries);
    QCOMPARE(handles, 1);
    // Pages open and release About handles of their own; the window keeps its one.
    QCOMPARE(callsTo("About_release").size(), callsTo("GetAbout").size() - 1);
}

void TestMainWindow::pagesLiveInsideTheWindow()
{
    resetUnit("full");
    auto* window = new ZuSettings;
    auto* area = window->findChild<QWidget*>("tabWidget");
    QVERIFY(area);
    for (int i = 0; i < tabMenuDlg::tabCount; ++i) {
        QVERIFY(window->page(i));
        QVERIFY2(!window->page(i)->isWindow(), qPrintable(QString::number(i)));
        QCOMPARE(window->page(i)->parentWidget(), area);
    }
    ZuAuxSim::clearTrace();
    delete window;
    QCOMPARE(callsTo("About_release").size(), 1);
}

void TestMainWindow::buzzerPlaceholderTakesTheDisplayNumber()
{
    resetUnit("headless");
    ZuSettings window;
    QLayout* layout = window.findChild<QWidget*>("tabWidget")->layout();
    // Added in this order: menu, version, temperature, display, power, heater,
    // advanced, LED, buzzer, ... The ninth page added holds number 3.
    QCOMPARE(layout->count(), 16);
    QCOMPARE(layout->indexOf(window.page(Tab::DISPLAY)), 8);
    QCOMPARE(window.page(Tab::DISPLAY)->metaObject(), &tabDlg::staticMetaObject);
    QVERIFY(!window.page(Tab::BUZZER));
}

void TestMainWindow::menuButtonsEmitTheirNumber_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("number");
    for (int i = 1; i < tabMenuDlg::tabCount; ++i)
        QTest::newRow(formMenu[i].button) << QString::fromLatin1(formMenu[i].button) << i;
}

void TestMainWindow::menuButtonsEmitTheirNumber()
{
    QFETCH(QString, button);
    QFETCH(int, number);
    tabMenuDlg menu;
    QCOMPARE(menu.windowTitle(), QString("Menu"));
    QCOMPARE(menu.objectName(), QString("tabMenu"));
    QSignalSpy spy(&menu, &tabMenuDlg::tabSelectionChanged);
    QTest::mouseClick(menu.findChild<QPushButton*>(button), Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), number);
}

void TestMainWindow::switching()
{
    resetUnit("full");
    ZuSettings window;
    window.show();
    auto* title = window.findChild<QLabel*>("tabTitle");
    QCOMPARE(window.currentTab(), 0);
    QCOMPARE(title->text(), QString("Menu"));
    QVERIFY(window.page(0)->isVisible());

    QTest::mouseClick(window.findChild<QPushButton*>("pushButtonVersion"), Qt::LeftButton);
    QCOMPARE(window.currentTab(), 1);
    QCOMPARE(title->text(), QString("Version"));
    QVERIFY(window.page(1)->isVisible());
    QVERIFY(!window.page(0)->isVisible());

    window.showTab(Tab::ONOFF);
    QCOMPARE(title->text(), QString("On/Off Settings"));
    QVERIFY(!window.page(1)->isVisible());

    QTest::mouseClick(window.findChild<QPushButton*>("buttonMenu"), Qt::LeftButton);
    QCOMPARE(window.currentTab(), 0);
    QCOMPARE(title->text(), QString("Menu"));
    QVERIFY(window.page(0)->isVisible());
    QVERIFY(!window.page(Tab::ONOFF)->isVisible());

    QTest::mouseClick(window.findChild<QPushButton*>("buttonExit"), Qt::LeftButton);
    QVERIFY(!window.isVisible());
}

void TestMainWindow::emptyNumberChangesNothing()
{
    resetUnit("headless");
    ZuSettings window;
    window.show();
    window.showTab(Tab::VERSION);
    emit window.menu()->tabSelectionChanged(Tab::BUZZER);
    QCOMPARE(window.currentTab(), int(Tab::VERSION));
    QCOMPARE(window.findChild<QLabel*>("tabTitle")->text(), QString("Version"));
    QVERIFY(window.page(Tab::VERSION)->isVisible());
}

void TestMainWindow::showingTheCurrentPageAgainRunsItsShowHandler()
{
    resetUnit("full");
    ZuSettings window;
    window.show();
    auto* page = new CountingPage(&window);
    page->setWindowTitle("Counting");
    window.addTab(page, Tab::POWER);
    QVERIFY(!page->isWindow());
    QCOMPARE(page->shows, 0);
    window.showTab(Tab::POWER);
    window.showTab(Tab::POWER);
    QCOMPARE(page->shows, 2);
    QCOMPARE(window.findChild<QLabel*>("tabTitle")->text(), QString("Counting"));
}

void TestMainWindow::escape_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("closes");
    QTest::newRow("menu") << 0 << true;
    QTest::newRow("version") << int(Tab::VERSION) << false;
    QTest::newRow("buttons page") << int(Tab::TELEMATICS) << false;
}

void TestMainWindow::escape()
{
    QFETCH(int, from);
    QFETCH(bool, closes);
    resetUnit("full");
    ZuSettings window;
    window.show();
    window.showTab(from);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&window, &release);
    QVERIFY(release.isAccepted());
    QCOMPARE(window.isVisible(), !closes);
    QCOMPARE(window.currentTab(), 0);
}

void TestMainWindow::otherKeysPassOn()
{
    resetUnit("full");
    ZuSettings window;
    window.show();
    window.showTab(Tab::VERSION);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&window, &release);
    QVERIFY(!release.isAccepted());
    QCOMPARE(window.currentTab(), int(Tab::VERSION));
    QVERIFY(window.isVisible());
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
