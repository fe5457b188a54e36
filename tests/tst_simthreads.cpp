// The simulated unit under concurrent use: a battery monitor and a GPS thread
// poll while other threads write settings and the test thread drives the
// control API. Every call must answer sensibly and leave exactly one trace line.
#include "simunit.h"
#include "zuaux2.h"

#include <QAtomicInt>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <functional>

using namespace Korvane;

namespace
{

// Each worker counts the trace lines it causes and the answers it did not expect.
struct Tally {
    QAtomicInt lines;
    QAtomicInt faults;
};

QThread* worker(Tally& tally, int rounds, std::function<bool()> step, int linesPerStep)
{
    return QThread::create([&tally, rounds, step, linesPerStep] {
        for (int i = 0; i < rounds; ++i) {
            if (!step())
                tally.faults.ref();
            tally.lines.fetchAndAddRelaxed(linesPerStep);
        }
    });
}

} // namespace

class TestSimThreads : public QObject
{
    Q_OBJECT
private slots:
    void concurrentCalls_data();
    void concurrentCalls();
};

void TestSimThreads::concurrentCalls_data()
{
    QTest::addColumn<bool>("withStateFile");
    QTest::addColumn<int>("rounds");

    QTest::newRow("in memory") << false << 400;
    QTest::newRow("saved to a state file") << true << 40;
}

void TestSimThreads::concurrentCalls()
{
    QFETCH(bool, withStateFile);
    QFETCH(int, rounds);

    QTemporaryDir dir;
    ZuAuxSim::reset(
        QStringLiteral("full"), withStateFile ? dir.filePath(QStringLiteral("state.ini")) : QString());
    Tally tally;

    QList<QThread*> threads;
    // Two writers with values of their own; readers must only ever see one of them.
    for (int writer = 0; writer < 2; ++writer) {
        threads << worker(
            tally, rounds,
            [writer] {
                const uint16_t rate = writer == 0 ? 250 : 500;
                return Backlight_setIntensity(GetBacklight(), uint8_t(100 + writer)) == ERR_SUCCESS
                    && CanSetting_setBaudrate(GetCanSetting(), uint8_t(writer + 1), rate) == ERR_SUCCESS;
            },
            4);
    }
    threads << worker(
        tally, rounds,
        [] {
            uint8_t intensity = 0;
            uint16_t rate = 0;
            return Backlight_getIntensity(GetBacklight(), &intensity) == ERR_SUCCESS
                && (intensity == 255 || intensity == 100 || intensity == 101)
                && CanSetting_getBaudrate(GetCanSetting(), 2, &rate) == ERR_SUCCESS
                && (rate == 125 || rate == 500);
        },
        4);
    // The battery monitor.
    threads << worker(
        tally, rounds,
        [] {
            BatteryHandle h = GetBattery();
            uint8_t level = 0, source = 0;
            int16_t temp = 0;
            const bool ok = Battery_getBatteryVoltageStatus(h, &level) == ERR_SUCCESS && level <= 100
                && Battery_getPowerSource(h, &source) == ERR_SUCCESS
                && Battery_getBatteryTemp(h, &temp) == ERR_SUCCESS;
            Battery_release(h);
            return ok;
        },
        5);
    // The GPS reader.
    threads << worker(
        tally, rounds,
        [] {
            TelematicsHandle h = GetTelematics();
            ZuStatus antenna = ZU_DISABLED;
            char port[64];
            const bool ok = Telematics_getGPSAntennaStatus(h, &antenna) == ERR_SUCCESS
                && ZuAuxPrivate_getFileSetting(GetZuAuxPrivate(), "Screen_Rotation", port, sizeof port)
                    == ERR_SUCCESS
                && QByteArray(port) == "0";
            Telematics_release(h);
            return ok;
        },
        5);

    for (QThread* thread : threads)
        thread->start();
    // Meanwhile the test thread injects and withdraws a code on an operation
    // nobody above uses, and reads the trace.
    int ownLines = 0;
    while (std::any_of(threads.cbegin(), threads.cend(), [](QThread* t) { return !t->isFinished(); })) {
        ZuAuxSim::forceCode(QStringLiteral("Buzzer_getVolume"), 13);
        uint16_t volume = 0;
        QCOMPARE(Buzzer_getVolume(GetBuzzer(), &volume), ERR_BUSY);
        ZuAuxSim::clearCodes();
        QCOMPARE(Buzzer_getVolume(GetBuzzer(), &volume), ERR_SUCCESS);
        ownLines += 4;
        QVERIFY(!ZuAuxSim::trace().isEmpty());
        QThread::yieldCurrentThread();
    }
    for (QThread* thread : threads) {
        QVERIFY(thread->wait(60000));
        delete thread;
    }

    QCOMPARE(tally.faults.loadRelaxed(), 0);
    const QStringList trace = ZuAuxSim::trace();
    QCOMPARE(trace.size(), tally.lines.loadRelaxed() + ownLines);
    // Lines are whole: each is a handle call or ends with its code.
    for (const QString& line : trace)
        QVERIFY2(
            line.endsWith(QLatin1String("()")) || line.contains(QLatin1String(") -> ")), qPrintable(line));

    uint8_t intensity = 0;
    QCOMPARE(Backlight_getIntensity(GetBacklight(), &intensity), ERR_SUCCESS);
    QVERIFY(intensity == 100 || intensity == 101);
}

QTEST_GUILESS_MAIN(TestSimThreads)
#include "tst_simthreads.moc"
