// Idle polling: while nothing on the unit changes, a tick of a page that polls
// makes only its reads, writes nothing to the unit's state file and allocates
// nothing, whatever the reads answer.
#include "allocations.h"
#include "app/PageCatalogue.h"
#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabDlg.h"

#include <QTemporaryDir>
#include <QTimer>
#include <QTimerEvent>
#include <QtTest>

#include <memory>

namespace
{

// The timers of `page` that run.
QList<QTimer*> runningTimers(QObject* page)
{
    QList<QTimer*> timers = page->findChildren<QTimer*>();
    timers.removeIf([](const QTimer* timer) { return !timer->isActive(); });
    return timers;
}

// One tick of each timer, delivered as the event loop delivers it.
void tick(const QList<QTimer*>& timers)
{
    for (QTimer* timer : timers) {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

} // namespace

class tst_polling : public QObject
{
    Q_OBJECT
private slots:
    void idleTick_data();
    void idleTick();

private:
    QTemporaryDir m_dir;
};

void tst_polling::idleTick_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QStringList>("unit"); // "Family/Key=value" or "Operation=code"
    QTest::addColumn<QStringList>("calls");

    // The automatic backlight sets the intensity: the first tick echoes it,
    // the later ones find it unchanged.
    QTest::newRow("display, automatic backlight")
        << "display" << QStringList { "Backlight/AutomaticBLStatus=1" }
        << QStringList { "Backlight_getIntensity() -> 0", "Backlight_getHWStatus() -> 0" };
    // A status that fails each time is shown as the same text each time.
    QTest::newRow("display, status failing")
        << "display" << QStringList { "Backlight/Intensity=77", "Backlight_getHWStatus=19" }
        << QStringList { "Backlight_getIntensity() -> 0", "Backlight_getHWStatus() -> 19" };
    QTest::newRow("light sensor") << "lightsensor" << QStringList { "Lightsensor/OperatingRange=1" }
                                  << QStringList { "Lightsensor_getAverageIlluminance() -> 0",
                                         "Lightsensor_getOperatingRange() -> 0" };
    QTest::newRow("light sensor, no illuminance")
        << "lightsensor" << QStringList { "Lightsensor_getAverageIlluminance=2" }
        << QStringList { "Lightsensor_getAverageIlluminance() -> 2", "Lightsensor_getOperatingRange() -> 0" };
    // Both kinds of reading, a voltage and a frequency, on an output that
    // runs: every text stays as it is.
    QTest::newRow("io") << "io"
                        << QStringList { "CfgIn/CfgInMode_1=4", "CfgIn/Value_1=25000", "CfgIn/CfgInMode_2=7",
                               "PWMOut/PWMOutputChannelDutyCycle_1=40" }
                        << QStringList { "PWMOut_getPWMOutputStatus() -> 0",
                               "PWMOut_getPWMOutputChannelDutyCycle(1) -> 0",
                               "PWMOut_getPWMOutputChannelFrequency(1) -> 0", "CfgIn_getCfgInMode(1) -> 0",
                               "CfgIn_getValue(1) -> 0", "CfgIn_getCfgInMode(2) -> 0",
                               "CfgIn_getPwmValue(2) -> 0" };
}

void tst_polling::idleTick()
{
    QFETCH(QString, page);
    QFETCH(QStringList, unit);
    QFETCH(QStringList, calls);
    if (!installAllocationHooks())
        QSKIP("allocations are counted through the sanitizers' allocator hooks");

    const QString state
        = m_dir.filePath(QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(".ini"));
    ZuAuxSim::reset(QStringLiteral("full"), state);
    ZuAuxSim::freezeLive(true);
    for (const QString& setting : unit)
        change(setting);

    const PageClass* pageClass = findPageClass(page);
    QVERIFY(pageClass);
    Dialogs::Recorder dialogs;
    const std::unique_ptr<tabDlg> shown(pageClass->create(nullptr));
    shown->show();
    QVERIFY(QTest::qWaitForWindowExposed(shown.get()));
    const QList<QTimer*> timers = runningTimers(shown.get());
    QCOMPARE(timers.size(), 1);
    tick(timers);
    ZuAuxSim::clearTrace();
    tick(timers);
    QCOMPARE(ZuAuxSim::trace(), calls);

    ZuAuxSim::traceCalls(false);
    const QString saved = fileStamp(state);
    QCOMPARE(allocationsOf([&timers] {
        for (int i = 0; i < 20; ++i)
            tick(timers);
    }),
        0L);
    QCOMPARE(fileStamp(state), saved);
    QCOMPARE(dialogs.shown.size(), 0);
}

QTEST_MAIN(tst_polling)
#include "tst_polling.moc"
