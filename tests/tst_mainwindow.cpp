#include "app/PageCatalogue.h"
#include "app/PageRegistry.h"
#include "app/TitleLabel.h"
#include "app/ZuSettings.h"
#include "dialogs/Dialogs.h"
#include "hwsupport/HwHandle.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/PictureLabel.h"

#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include <memory>

using Tab = tabMenuDlg::eTab;
// A greyed button: its page number, grey icon file (empty: icon unchanged) and tool tip.
using Grey = std::pair<int, QPair<QString, QString>>;
using Greyed = QMap<int, QPair<QString, QString>>;

namespace
{

// Captions and page titles on a unit with every feature.
const QStringList captions = { "", "Version", "Temperature", "Display", "Power", "Heater", "About",
    "Btn backlight", "Buzzer", "CAN", "Advanced", "I/O", "Light sensor", "Touch", "On/Off", "Buttons" };
const QStringList titles = { "Menu", "Version", "Temperature", "Display", "", "Heater", "About",
    "Button backlight", "Buzzer", "CAN", "Advanced", "Configurable Inputs - PWM Outputs", "Light sensor", "",
    "On/Off Settings", "Buttons" };
// Icons put on buttons of features that are present; the others keep the form's.
const QMap<int, QString> presentIcons = { { Tab::DIGIO, "IO.png" }, { Tab::TELEMATICS, "Buttons.png" } };

const Grey power { Tab::POWER, { "energyGrey.png", "Power is not available" } };
const Grey calibrate { Tab::TOUCH, { "tabletGrey.png", "Touch Screen calibration from start menu" } };
const Grey noTouch { Tab::TOUCH, { "tabletGrey.png", "Touch Screen is not available" } };
const Grey noHeater { Tab::SYSCONFIG, { "heaterGrey.png", "Heater is not available" } };
const Grey noCan { Tab::CAN, { "", "Can is not available" } };

QImage image(const QIcon& icon)
{
    return icon.pixmap(QSize(60, 60)).toImage().convertToFormat(QImage::Format_ARGB32);
}

double opacity(QWidget* w)
{
    auto* effect = qobject_cast<QGraphicsOpacityEffect*>(w->graphicsEffect());
    return effect ? effect->opacity() : 1.0;
}

} // namespace

class tst_mainwindow : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void discovery_data();
    void discovery();
    void navigation_data();
    void navigation();
    void titleFits_data();
    void titleFits();
    void steadyControls_data();
    void steadyControls();
    void polishedWhenShown();
};

void tst_mainwindow::discovery_data()
{
    // The profile, then "Operation=code" or "Family/Key=value".
    QTest::addColumn<QStringList>("setup");
    QTest::addColumn<Greyed>("greyed");

    QTest::newRow("full unit") << QStringList { "full" } << Greyed { power, calibrate };
    QTest::newRow("box without display, CAN or heater")
        << QStringList { "headless" }
        << Greyed { { Tab::DISPLAY, { "backgroundGrey.png", "Display is not available" } }, power, noHeater,
               { Tab::BUZZER, { "", "Buzzer is not available" } }, noCan,
               { Tab::LIGHTSENSOR, { "FullGrey.png", "Light sensor is not available" } }, noTouch };
    // Every query answers 2: the About answers count as present, the heater
    // probe's 2 means no heater.
    QTest::newRow("library that supports nothing")
        << QStringList { "unsupported" } << Greyed { power, noHeater, calibrate };
    // A headless box whose queries fail otherwise than with 2.
    QTest::newRow("other failures count as present")
        << QStringList { "headless", "About_getIsDisplayAvailable=7", "About_getIsTouchScreenAvailable=19",
               "About_getNrOfCANConnections=6", "Config_getHeatingTempLimit=7" }
        << Greyed { power, calibrate };
    QTest::newRow("display without touch, CAN or I/O") << QStringList {
        "full", "About/IsTouchScreenAvailable=0", "About/NrOfCANConnections=0", "About/NrOfDigIOConnections=0"
    } << Greyed { power, noCan, { Tab::DIGIO, { "", "Digital Input is not available" } }, noTouch };
}

void tst_mainwindow::discovery()
{
    QFETCH(QStringList, setup);
    QFETCH(Greyed, greyed);

    resetUnit(setup.takeFirst());
    for (const QString& entry : setup)
        change(entry);
    {
        // Without a display the touch screen is not even asked for.
        const AboutRef about;
        discoverFeatures(about);
        QCOMPARE(callsTo("About_getIsTouchScreenAvailable").size(), greyed.contains(Tab::DISPLAY) ? 0 : 1);
    }
    // Pages built on a unit that fails their reads report it.
    Dialogs::Recorder recorder;
    const tabMenuDlg form;
    auto window = std::make_unique<ZuSettings>();

    // Every widget is made with the application's font: none measures its
    // text with another one before it is polished.
    QWidgetList widgets { window.get() };
    widgets << window->findChildren<QWidget*>();
    for (int i = 0; i < tabMenuDlg::tabCount; ++i) {
        if (window->page(i))
            widgets << window->page(i) << window->page(i)->findChildren<QWidget*>();
    }
    for (const QWidget* widget : widgets) {
        const QFont font = widget->font();
        QVERIFY2(font.family() == "Arial" && font.bold(),
            qPrintable(widget->objectName() + ": " + font.toString()));
    }

    for (int i = 1; i < tabMenuDlg::tabCount; ++i) {
        QPushButton* button = window->menu()->button(Tab(i));
        QLabel* caption = window->menu()->caption(Tab(i));
        const bool grey = greyed.contains(i);
        QCOMPARE(button->isEnabled(), !grey);
        QCOMPARE(opacity(button), grey ? 0.5 : 1.0);
        QCOMPARE(opacity(caption), grey ? 0.5 : 1.0);
        QCOMPARE(button->toolTip(), greyed.value(i).second);
        const QString file = grey ? greyed.value(i).first : presentIcons.value(i);
        const QIcon icon
            = file.isEmpty() ? form.button(Tab(i))->icon() : QIcon(":/ZuSettings/Resources/" + file);
        QVERIFY2(image(button->icon()) == image(icon), qPrintable(captions[i]));
        QCOMPARE(caption->text(), grey && i == Tab::DIGIO ? "Digital I/O" : captions[i]);
        // Screen readers and UI automation find the icon-only button by its caption.
        QCOMPARE(button->accessibleName(), caption->text());
        if (grey)
            QCOMPARE(button->iconSize(), QSize(60, 60));
        // An offered button leads to its page.
        const int before = window->currentTab();
        button->click();
        QCOMPARE(window->currentTab(), grey ? before : i);
    }

    QWidget* area = window->findChild<QWidget*>("tabWidget");
    for (int i = 0; i < tabMenuDlg::tabCount; ++i) {
        tabDlg* page = window->page(i);
        // A missing feature gets a plain page, except the buzzer: its
        // placeholder takes the Display number and leaves its own empty.
        if (greyed.contains(i))
            QVERIFY(i == Tab::BUZZER ? !page : page && page->metaObject() == &tabDlg::staticMetaObject);
        else
            QCOMPARE(page ? page->windowTitle() : "none", titles[i]);
        // Only the pages shown so far, each offered one, are in the window.
        if (page)
            QCOMPARE(page->parentWidget() == area, !greyed.contains(i));
    }
    if (greyed.contains(Tab::BUZZER)) {
        // Its empty number changes nothing.
        window->showTab(Tab::VERSION);
        emit window->menu()->tabSelectionChanged(Tab::BUZZER);
        QCOMPARE(window->currentTab(), int(Tab::VERSION));
        QCOMPARE(window->findChild<QLabel*>("tabTitle")->text(), QString("Version"));
    }

    // The window keeps one About handle for its life.
    ZuAuxSim::clearTrace();
    window.reset();
    QCOMPARE(callsTo("About_release").size(), 1);
}

void tst_mainwindow::navigation_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QStringList>("setup"); // "Operation=code", once `from` is on show
    QTest::addColumn<QStringList>("actions"); // keys (below), or buttons to click
    QTest::addColumn<int>("to"); // -1: the window closed

    QTest::newRow("Escape on the menu") << 0 << QStringList() << QStringList { "Escape" } << -1;
    QTest::newRow("Escape on a page")
        << int(Tab::TELEMATICS) << QStringList() << QStringList { "Escape" } << 0;
    // Auto-repeat gives releases and presses while the key is down: one step back.
    QTest::newRow("Escape held on a page")
        << int(Tab::ABOUT) << QStringList() << QStringList { "Escape held" } << 0;
    // The press closes a box (each box is closed so); its release then
    // reaches the window.
    QTest::newRow("Escape closing a box")
        << int(Tab::VERSION) << QStringList() << QStringList { "open a box", "release" } << int(Tab::VERSION);
    QTest::newRow("Escape closing a box on the menu")
        << 0 << QStringList() << QStringList { "open a box", "release" } << 0;
    // Leaving the page fails to stop the sensor: the box that says so is
    // closed with Escape, and that does not end the program.
    QTest::newRow("Escape closing the box of leaving a page")
        << int(Tab::LIGHTSENSOR) << QStringList { "Lightsensor_stopAverageCalc=7" }
        << QStringList { "Escape", "release" } << 0;
    QTest::newRow("other keys pass on")
        << int(Tab::VERSION) << QStringList() << QStringList { "Return" } << int(Tab::VERSION);
    QTest::newRow("Menu") << int(Tab::ONOFF) << QStringList() << QStringList { "buttonMenu" } << 0;
    QTest::newRow("Exit") << int(Tab::VERSION) << QStringList() << QStringList { "buttonExit" } << -1;
}

void tst_mainwindow::navigation()
{
    QFETCH(int, from);
    QFETCH(QStringList, setup);
    QFETCH(QStringList, actions);
    QFETCH(int, to);

    // Every message box that opens is closed by pressing Escape into it.
    QTimer boxCloser;
    connect(&boxCloser, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            qt_handleKeyEvent(box->windowHandle(), QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    });
    boxCloser.start(0);

    resetUnit("full");
    ZuSettings window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.showTab(from);
    // As after a touch: a control of the page has the keyboard focus.
    const QList<QWidget*> controls = window.page(from)->findChildren<QWidget*>();
    const auto focusable = std::find_if(
        controls.begin(), controls.end(), [](QWidget* w) { return w->focusPolicy() & Qt::TabFocus; });
    if (focusable != controls.end())
        (*focusable)->setFocus();
    for (const QString& entry : setup)
        change(entry);

    // Real key events, through the window system as the keyboard gives them.
    QWindow* handle = window.windowHandle();
    const auto key = [handle](QEvent::Type type, bool autoRepeat = false) {
        qt_handleKeyEvent(handle, type, Qt::Key_Escape, Qt::NoModifier, QString(), autoRepeat);
    };

    for (const QString& action : actions) {
        if (action == "Escape") {
            key(QEvent::KeyPress);
            key(QEvent::KeyRelease);
        } else if (action == "Escape held") {
            key(QEvent::KeyPress);
            for (int i = 0; i < 3; ++i) {
                key(QEvent::KeyRelease, true);
                key(QEvent::KeyPress, true);
            }
            key(QEvent::KeyRelease);
        } else if (action == "release") {
            key(QEvent::KeyRelease);
        } else if (action == "open a box") {
            Dialogs::message(window.page(from), QMessageBox::Critical, "Zusettings", "A failure");
        } else if (action == "Return") {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, {});
            QKeyEvent release(QEvent::KeyRelease, Qt::Key_Return, {});
            QApplication::sendEvent(&window, &press);
            QApplication::sendEvent(&window, &release);
            QVERIFY(!press.isAccepted() && !release.isAccepted());
        } else {
            QTest::mouseClick(window.findChild<QPushButton*>(action), Qt::LeftButton);
        }
    }

    QCOMPARE(window.isVisible(), to >= 0);
    if (to < 0)
        return;
    QCOMPARE(window.currentTab(), to);
    QCOMPARE(window.findChild<QLabel*>("tabTitle")->text(), window.page(to)->windowTitle());
    for (int i = 0; i < tabMenuDlg::tabCount; ++i)
        QVERIFY(!window.page(i) || window.page(i)->isVisible() == (i == to));
}

void tst_mainwindow::titleFits_data()
{
    QTest::addColumn<QString>("title");
    resetUnit("full");
    Dialogs::Recorder recorder;
    for (const PageClass& pageClass : pageClasses()) {
        const std::unique_ptr<tabDlg> page(pageClass.create(nullptr));
        QTest::newRow(pageClass.name) << page->windowTitle();
    }
}

// Every page's title shows whole in the title bar, beside the logo and the
// buttons, not under them.
void tst_mainwindow::titleFits()
{
    QFETCH(QString, title);
    resetUnit("full");
    ZuSettings window;
    window.show();
    auto* label = window.findChild<TitleLabel*>("tabTitle");
    label->setText(title);

    QFont font;
    QCOMPARE(label->shownText(font), title);
    QVERIFY(QFontMetrics(font).horizontalAdvance(title) <= label->contentsRect().width());
    for (const char* neighbour : { "label", "buttonMenu", "buttonExit" })
        QVERIFY2(!label->geometry().intersects(window.findChild<QWidget*>(neighbour)->geometry()), neighbour);
}

void tst_mainwindow::steadyControls_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("slider");

    QTest::newRow("backlight level") << int(Tab::DISPLAY) << "sliderBacklightLevel";
    QTest::newRow("sensitivity") << int(Tab::DISPLAY) << "sliderSensitivity";
    QTest::newRow("LED frequency") << int(Tab::LED) << "sliderFreq";
    QTest::newRow("LED duty cycle") << int(Tab::LED) << "sliderDutyC";
    QTest::newRow("buzzer frequency") << int(Tab::BUZZER) << "sliderFreq";
    QTest::newRow("buzzer volume") << int(Tab::BUZZER) << "sliderVol";
    QTest::newRow("PWM duty cycle") << int(Tab::DIGIO) << "sliderDC";
    QTest::newRow("PWM frequency") << int(Tab::DIGIO) << "sliderHZ";
}

// A slider moved from end to end changes the numbers beside it; no slider or
// button of its page moves.
void tst_mainwindow::steadyControls()
{
    QFETCH(int, page);
    QFETCH(QString, slider);
    resetUnit("full");
    Dialogs::Recorder recorder;
    ZuSettings window;
    window.show();
    window.showTab(page);
    auto* control = window.page(page)->findChild<QSlider*>(slider);
    QVERIFY(control);

    const auto places = [&] {
        QCoreApplication::processEvents();
        QList<QRect> found;
        for (QWidget* w : window.page(page)->findChildren<QWidget*>()) {
            if (qobject_cast<QAbstractSlider*>(w) || qobject_cast<QAbstractButton*>(w))
                found << QRect(w->mapTo(&window, QPoint()), w->size());
        }
        return found;
    };
    control->setValue(control->minimum());
    const QList<QRect> before = places();
    control->setValue(control->maximum());
    QCOMPARE(places(), before);
}

// Showing the window polishes the menu, not the widgets of the hidden pages;
// each page is polished, every widget of it, when it is first shown, and
// only then reads its pictures. A popup is polished when it pops up.
void tst_mainwindow::polishedWhenShown()
{
    resetUnit("full");
    Dialogs::Recorder recorder;
    ZuSettings window;
    const auto polished = [&window](int tab) {
        tabDlg* page = window.page(tab);
        QList<QWidget*> widgets = page->findChildren<QWidget*>();
        widgets.removeIf([page](const QWidget* w) { return w->window() != page->window(); });
        widgets << page;
        QStringList found;
        for (QWidget* w : widgets) {
            if (w->testAttribute(Qt::WA_WState_Polished))
                found << w->objectName();
        }
        return found.size() == widgets.size() ? QStringList { "all" } : found;
    };
    QList<QStringList> before;
    for (int tab = Tab::MENU; tab < tabMenuDlg::tabCount; ++tab)
        before << (window.page(tab) ? polished(tab) : QStringList());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QCOMPARE(polished(Tab::MENU), QStringList { "all" });
    for (int tab = Tab::VERSION; tab < tabMenuDlg::tabCount; ++tab) {
        if (!window.page(tab))
            continue;
        const QList<PictureLabel*> pictures = window.page(tab)->findChildren<PictureLabel*>();
        const auto shown = [&pictures] {
            return std::count_if(
                pictures.begin(), pictures.end(), [](QLabel* l) { return !l->pixmap().isNull(); });
        };
        QCOMPARE(polished(tab), before[tab]);
        QCOMPARE(shown(), 0);
        window.showTab(tab);
        QCOMPARE(polished(tab), QStringList { "all" });
        QCOMPARE(shown(), pictures.size());
    }
}

QTEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
