// Counts the unit reports are not trusted to end a loop: a unit that claims
// far more sensors or buttons than any unit has still gives a report and a
// defaults run that end, with the limits a real unit has.
#include "report/Sections.h"
#include "report/WriteDefaultValues.h"
#include "simunit.h"

#include <QtTest>

class tst_simcounts : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void sensorLoop_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("lines");

        QTest::newRow("3 sensors") << 3 << 3;
        QTest::newRow("20 sensors") << 20 << 20;
        // Every 8-bit index answers: the list stops at 20 instead of wrapping.
        QTest::newRow("256 sensors") << 256 << 20;
    }

    void sensorLoop()
    {
        QFETCH(int, count);
        QFETCH(int, lines);

        ZuAuxSim::setValue(QStringLiteral("Diagnostic/PMSensorCount"), count);
        for (int i = 0; i < count; ++i) {
            ZuAuxSim::setValue(QStringLiteral("Diagnostic/PMTemp_%1").arg(i), 40);
            ZuAuxSim::setValue(QStringLiteral("Diagnostic/PMTempType_%1").arg(i), 7);
        }
        const QString diag = readDiag();
        QCOMPARE(diag.count(QStringLiteral("JIDA other temp")), lines);
        QCOMPARE(callsTo(QStringLiteral("Diagnostic_getPMTemp")).size(), qMin(count + 1, 20));
    }

    void buttonLoop()
    {
        // The largest count an int holds: buttons 10 down to 1 are written, no more.
        ZuAuxSim::setValue(QStringLiteral("About/NrOfButtons"), 2147483647);
        WriteDefaultValues();
        QStringList expected;
        for (int button = 10; button >= 1; --button)
            expected << QStringLiteral("Config_setButtonFunction(%1, 0) -> 0").arg(button);
        QCOMPARE(callsTo(QStringLiteral("Config_setButtonFunction")), expected);
    }
};

QTEST_GUILESS_MAIN(tst_simcounts)
#include "tst_simcounts.moc"
