// Modal dialogs and impatient hands: a press on a control whose write fails
// gives one write and one box however long the box stays open; boxes do not
// stack; leaving the program with a box open leaves nothing behind.
#include "app/PageCatalogue.h"
#include "app/PageWindow.h"
#include "app/ZuSettings.h"
#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "simunit.h"

#include <QAbstractEventDispatcher>
#include <QProgressDialog>
#include <QSlider>
#include <QSpinBox>
#include <QStyleOptionSlider>
#include <QStyleOptionSpinBox>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace
{

// A point of `control` away from its handle: in the groove towards the
// maximum ("groove+") or the minimum ("groove-"), or on a spin box's arrow
// ("up", "down").
QPoint pointOn(QWidget* control, const QString& part)
{
    if (auto* slider = qobject_cast<QSlider*>(control)) {
        QStyleOptionSlider option;
        option.initFrom(slider);
        option.orientation = slider->orientation();
        option.minimum = slider->minimum();
        option.maximum = slider->maximum();
        option.sliderPosition = option.sliderValue = slider->value();
        option.subControls = QStyle::SC_All;
        const QRect handle
            = slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
        const int x = part == "groove+" ? (handle.right() + slider->width()) / 2 : handle.left() / 2;
        return QPoint(x, slider->height() / 2);
    }
    auto* spinBox = qobject_cast<QAbstractSpinBox*>(control);
    QStyleOptionSpinBox option;
    option.initFrom(spinBox);
    option.subControls = QStyle::SC_All;
    option.buttonSymbols = spinBox->buttonSymbols();
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    option.frame = spinBox->hasFrame();
    return spinBox->style()
        ->subControlRect(QStyle::CC_SpinBox, &option,
            part == "up" ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown, spinBox)
        .center();
}

// The time going by while a box is open: every timer `control` still runs
// goes off, a few times over.
void letTimersRun(QWidget* control)
{
    for (int round = 0; round < 3; ++round) {
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(control);
        for (const QAbstractEventDispatcher::TimerInfo& timer : timers) {
            QTimerEvent tick(timer.timerId);
            QCoreApplication::sendEvent(control, &tick);
        }
    }
}

void pressOn(QWidget* window, QWidget* control, const QString& part)
{
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
        control->mapTo(window, pointOn(control, part)));
}

} // namespace

class tst_dialogstorms : public QObject
{
    Q_OBJECT
private slots:
    void onePressOneBox_data();
    void onePressOneBox();
    void boxesDoNotStack();
    void exitWithBoxOpen_data();
    void exitWithBoxOpen();
    void progressStaysUntilReset();
};

void tst_dialogstorms::onePressOneBox_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("failing"); // "Operation=code"
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("part");

    // A slider's groove both ways and a spin box's arrow: the press auto-repeats.
    const auto add = [](const char* name, const char* page, const char* failing, const char* control,
                         const char* part) { QTest::newRow(name) << page << failing << control << part; };
    add("buzzer frequency groove", "buzzer", "Buzzer_setFrequency=7", "sliderFreq", "groove+");
    add("display intensity groove, downwards", "display", "Backlight_setIntensity=6", "sliderBacklightLevel",
        "groove-");
    add("led pulses up arrow", "led", "FrontLED_setNrOfPulses=7", "spinBoxPulses", "up");
}

void tst_dialogstorms::onePressOneBox()
{
    QFETCH(QString, page);
    QFETCH(QString, failing);
    QFETCH(QString, control);
    QFETCH(QString, part);

    resetUnit("full");
    change("Buzzer/Frequency=2000"); // room to go up
    change(failing);
    Dialogs::Recorder recorder;
    PageWindow window(findPageClass(page)->create(nullptr));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* pressed = window.findChild<QWidget*>(control);
    QVERIFY(pressed && pressed->isVisible());
    ZuAuxSim::clearTrace();
    recorder.shown.clear();

    pressOn(&window, pressed, part);
    QCoreApplication::processEvents();
    letTimersRun(pressed);

    const QString operation = failing.section('=', 0, 0);
    QCOMPARE(callsTo(operation + '(').size(), 1);
    QCOMPARE(recorder.shown.size(), 1);
    QVERIFY(recorder.shown.first().text.startsWith("Error(" + failing.section('=', 1) + ") in "));
    QVERIFY(QAbstractEventDispatcher::instance()->registeredTimers(pressed).isEmpty());
}

// A polling timer that fails while a box is open does not stack a second one.
void tst_dialogstorms::boxesDoNotStack()
{
    int boxesSeen = 0;
    QMessageBox::StandardButton nested = QMessageBox::Ok;
    QTimer second;
    second.setSingleShot(true);
    connect(&second, &QTimer::timeout, [&] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        boxesSeen = std::count_if(windows.begin(), windows.end(),
            [](QWidget* w) { return qobject_cast<QMessageBox*>(w) && w->isVisible(); });
        nested = Dialogs::message(nullptr, QMessageBox::Critical, "Zusettings", "second");
        if (QWidget* box = QApplication::activeModalWidget())
            box->close();
    });
    second.start(0);
    QCOMPARE(Dialogs::message(nullptr, QMessageBox::Critical, "Zusettings", "first"), QMessageBox::Ok);
    QCOMPARE(boxesSeen, 1);
    QCOMPARE(nested, QMessageBox::NoButton);
}

void tst_dialogstorms::exitWithBoxOpen_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("failing");
    // What opens the box: a slider pressed, the page's polling, or nothing
    // (the program ends at once).
    QTest::addColumn<QString>("opener");

    QTest::newRow("box of a slider open") << int(tabMenuDlg::BUZZER) << "Buzzer_setFrequency=7"
                                          << "sliderFreq";
    // Leaving the page fails too; no box says so while the program ends.
    QTest::newRow("box of a polling page open")
        << int(tabMenuDlg::LIGHTSENSOR) << "Lightsensor_getOperatingRange=7"
        << "polling";
    QTest::newRow("page failing to stop") << int(tabMenuDlg::LIGHTSENSOR) << "Lightsensor_stopAverageCalc=7"
                                          << "";
}

void tst_dialogstorms::exitWithBoxOpen()
{
    QFETCH(int, tab);
    QFETCH(QString, failing);
    QFETCH(QString, opener);

    resetUnit("full");
    auto window = std::make_unique<ZuSettings>();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    window->showTab(tab);
    QCoreApplication::processEvents();
    change(failing);
    if (failing.startsWith("Lightsensor_getOperatingRange"))
        change("Lightsensor_stopAverageCalc=7");

    // While the box is open, the program is told to end.
    int boxesOpen = 0;
    QTimer exit;
    connect(&exit, &QTimer::timeout, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (!box)
            return;
        // A box that outlives the exit is counted again and closed here.
        if (++boxesOpen == 1)
            window->exit();
        else
            box->close();
    });
    exit.start(0);
    if (opener.isEmpty())
        window->exit();
    else if (opener == "polling")
        QTRY_VERIFY(!window->isVisible());
    else
        pressOn(window.get(), window->page(tab)->findChild<QWidget*>(opener), "groove+");
    QCoreApplication::processEvents();

    QCOMPARE(boxesOpen, opener.isEmpty() ? 0 : 1);
    QVERIFY(!window->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(window->findChildren<QMessageBox*>().isEmpty());
    for (QTimer* timer : window->findChildren<QTimer*>())
        QVERIFY2(!timer->isActive(), qPrintable(timer->parent()->objectName()));
    for (QWidget* control : window->findChildren<QWidget*>())
        QVERIFY(QAbstractEventDispatcher::instance()->registeredTimers(control).isEmpty());
    // Everything taken is given back.
    window.reset();
    const QStringList trace = ZuAuxSim::trace();
    QCOMPARE(trace.filter(QRegularExpression("^Get")).size(), trace.filter("_release()").size());
}

// Work under a progress dialog lets events through: neither Escape nor a
// close request may take the dialog away and leave the page open to input.
void tst_dialogstorms::progressStaysUntilReset()
{
    QWidget window;
    window.show();
    Dialogs::Progress progress(&window, "Update progress", "Fetching data...", -1, 100);
    progress.setValue(0);
    QCoreApplication::processEvents(); // as the work does
    auto* dialog = window.findChild<QProgressDialog*>();
    QVERIFY(dialog && dialog->isVisible());
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!dialog->close());
    QVERIFY(dialog->isVisible());
    progress.reset();
    QVERIFY(!dialog->isVisible());
}

QTEST_MAIN(tst_dialogstorms)
#include "tst_dialogstorms.moc"
