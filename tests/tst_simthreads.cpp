// The simulated unit under concurrent use: monitor threads poll while others
// write settings and the test thread drives the control API. Every call must
// answer sensibly and leave exactly one trace line.
#include "simunit.h"
#include "zuaux2.h"

#include <QAtomicInt>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <functional>

using namespace Korvane;

class tst_simthreads : public QObject
{
    Q_OBJECT
private slots:
    void concurrentCalls()
    {
        // Writers save to a state file, the slowest path, so the calls overlap.
        const int rounds = 60;
        QTemporaryDir dir;
        ZuAuxSim::reset(QStringLiteral("full"), dir.filePath(QStringLiteral("state.ini")));

        // Each step makes four trace lines per round: two writers with values of
        // their own, and a monitor that must only ever see one of them while it
        // also reads a live value.
        QList<std::function<bool()>> steps;
        for (int writer : { 1, 2 }) {
            steps << [writer] {
                return Backlight_setIntensity(GetBacklight(), uint8_t(99 + writer)) == ERR_SUCCESS
                    && CanSetting_setBaudrate(GetCanSetting(), uint8_t(writer), uint16_t(250 * writer))
                    == ERR_SUCCESS;
            };
        }
        steps << [] {
            uint8_t intensity = 0;
            uint8_t level = 0;
            return Backlight_getIntensity(GetBacklight(), &intensity) == ERR_SUCCESS
                && (intensity == 255 || intensity == 100 || intensity == 101)
                && Battery_getBatteryVoltageStatus(GetBattery(), &level) == ERR_SUCCESS && level <= 100;
        };
        QAtomicInt faults;
        QList<QThread*> threads;
        for (const auto& step : steps) {
            threads << QThread::create([&faults, step, rounds] {
                for (int i = 0; i < rounds; ++i) {
                    if (!step())
                        faults.ref();
                }
            });
            threads.last()->start();
        }

        // Meanwhile the test thread injects and withdraws a code on an operation
        // nobody above uses, and reads the trace.
        int ownLines = 0;
        while (std::any_of(threads.cbegin(), threads.cend(), [](QThread* t) { return !t->isFinished(); })) {
            ZuAuxSim::forceCode(QStringLiteral("Buzzer_getVolume"), 13);
            if (Buzzer_getVolume(GetBuzzer(), nullptr) != ERR_BUSY || ZuAuxSim::trace().isEmpty())
                faults.ref();
            ZuAuxSim::clearCodes();
            ownLines += 2;
            QThread::yieldCurrentThread();
        }
        for (QThread* thread : threads) {
            QVERIFY(thread->wait(60000));
            delete thread;
        }

        QCOMPARE(faults.loadRelaxed(), 0);
        const QStringList trace = ZuAuxSim::trace();
        QCOMPARE(trace.size(), steps.size() * rounds * 4 + ownLines);
        // Lines are whole: each is a handle call or ends with its code.
        for (const QString& line : trace)
            QVERIFY2(line.endsWith(QLatin1String("()")) || line.contains(QLatin1String(") -> ")),
                qPrintable(line));
    }
};

QTEST_GUILESS_MAIN(tst_simthreads)
#include "tst_simthreads.moc"
