// The Power page's battery monitor: a real thread with its own battery
// handle, reporting to the page's labels by queued signals, and stopped by
// the page's destruction.
#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabPowerDlg.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>

#include <memory>

class tst_batterymonitor : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }

    void cycle_data()
    {
        QTest::addColumn<QStringList>("unit");
        QTest::addColumn<QString>("charge");
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("level");

        QTest::newRow("readings") << QStringList { "Battery/BatteryChargingStatus=1", "Battery/PowerSource=0",
            "Battery/BatteryVoltageStatus=55" }
                                  << "Battery is being charged\n"
                                  << "Power source: Battery" << 55;
        QTest::newRow("failing reads") << QStringList { "Battery_getBatteryChargingStatus=7",
            "Battery_getPowerSource=6", "Battery_getBatteryVoltageStatus=19" }
                                       << "Could not get battery charging status\n"
                                       << "Power source: Unknown" << 0;
    }

    // After 3 s the charging status, 1 s later the power source, 1 s later the
    // level; the page is never shown, so only the monitor fills the labels.
    void cycle()
    {
        QFETCH(QStringList, unit);
        QFETCH(QString, charge);
        QFETCH(QString, source);
        QFETCH(int, level);

        resetUnit();
        for (const QString& setting : unit)
            change(setting);
        Dialogs::Recorder recorder;
        QElapsedTimer clock;
        clock.start();
        const auto page = std::make_unique<tabPowerDlg>();
        auto* chargeLabel = page->findChild<QLabel*>(QStringLiteral("label_3"));
        auto* sourceLabel = page->findChild<QLabel*>(QStringLiteral("label_4"));
        auto* bar = page->findChild<QProgressBar*>(QStringLiteral("progressBar"));

        QTRY_COMPARE_WITH_TIMEOUT(chargeLabel->text(), charge, 4500);
        QVERIFY2(clock.elapsed() >= 2900, "the charging status came before the long wait was over");
        QCOMPARE(sourceLabel->text(), QStringLiteral("Powersource: "));
        QTRY_COMPARE_WITH_TIMEOUT(sourceLabel->text(), source, 1500);
        QCOMPARE(bar->value(), 24);
        QTRY_COMPARE_WITH_TIMEOUT(bar->value(), level, 1500);
        QCOMPARE(recorder.texts(), QStringList());
    }

    // In its long wait the monitor ends within about 100 ms, without another read.
    void stopsInLongWait()
    {
        resetUnit();
        auto page = std::make_unique<tabPowerDlg>();
        QTRY_VERIFY_WITH_TIMEOUT(callsTo(QStringLiteral("Battery_isBatteryPresent")).size() == 1, 1000);
        QTest::qWait(500);
        ZuAuxSim::clearTrace();
        QElapsedTimer clock;
        clock.start();
        page.reset();
        QVERIFY2(clock.elapsed() < 250, qPrintable(QString::number(clock.elapsed()) + " ms"));
        QCOMPARE(
            callsTo(QStringLiteral("Battery")), QStringList({ "Battery_release()", "Battery_release()" }));
        QVERIFY(!MyThread::runThread);
    }

    // Without a battery the monitor gives up its handle at once.
    void noBattery()
    {
        resetUnit();
        change(QStringLiteral("Unit/HasBattery=0"));
        const auto page = std::make_unique<tabPowerDlg>();
        QTRY_COMPARE_WITH_TIMEOUT(ZuAuxSim::trace().filter(QStringLiteral("Battery")),
            QStringList(
                { "GetBattery()", "GetBattery()", "Battery_isBatteryPresent() -> 0", "Battery_release()" }),
            1000);
        QVERIFY(!MyThread::runThread);
    }
};

QTEST_MAIN(tst_batterymonitor)
#include "tst_batterymonitor.moc"
