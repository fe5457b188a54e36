// What the simulated unit costs: a write costs what it changes, not what the
// state file holds; an unchanged value is not written at all; and a polling
// page's calls allocate nothing while no trace is taken.
#include "allocations.h"
#include "simunit.h"
#include "zuaux2.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Korvane;

namespace
{

// One tick of the polling pages: the display page with its echo write of the
// intensity, the light sensor page, and readings other pages poll.
void pollingTick()
{
    const BacklightHandle backlight = GetBacklight();
    uint8_t intensity = 0;
    bool hardwareOk = false;
    Backlight_getIntensity(backlight, &intensity);
    Backlight_setIntensity(backlight, intensity);
    Backlight_getHWStatus(backlight, &hardwareOk);
    Backlight_release(backlight);
    const LightsensorHandle sensor = GetLightsensor();
    uint16_t lux = 0;
    uint8_t range = 0;
    Lightsensor_getAverageIlluminance(sensor, &lux);
    Lightsensor_getOperatingRange(sensor, &range);
    Lightsensor_release(sensor);
    int16_t celsius = 0;
    PMTempSensorType type = PM_SENSOR_CPU;
    Diagnostic_getPCBTemp(GetDiagnostic(), &celsius);
    Diagnostic_getPMTemp(GetDiagnostic(), 1, &celsius, &type);
    double volts = 0;
    Adc_getVoltage(GetAdc(), 4, &volts);
    uint16_t value = 0;
    CfgIn_getValue(GetCfgIn(), 2, &value);
    uint8_t inputs = 0;
    DigIO_getDigIO(GetDigIO(), &inputs);
}

} // namespace

class tst_simcost : public QObject
{
    Q_OBJECT
private slots:
    void init() { resetUnit(); }

    void idlePolling_data()
    {
        QTest::addColumn<QString>("profile");

        QTest::newRow("full, automatic backlight") << "full";
        // Injected codes are looked up on every call.
        QTest::newRow("faulty") << "faulty";
    }

    void idlePolling()
    {
        QFETCH(QString, profile);
        if (!installAllocationHooks())
            QSKIP("allocations are counted through the sanitizers' allocator hooks");

        const QString state = m_dir.filePath(profile + QStringLiteral(".ini"));
        ZuAuxSim::reset(profile, state);
        ZuAuxSim::freezeLive(true);
        ZuAuxSim::setValue(QStringLiteral("Backlight/AutomaticBLStatus"), 1);
        // The first tick saves the intensity the automatic backlight set.
        pollingTick();
        QVERIFY(allocationsOf(pollingTick) > 0);

        ZuAuxSim::traceCalls(false);
        ZuAuxSim::clearTrace();
        const QString saved = fileStamp(state);
        QCOMPARE(allocationsOf([] {
            for (int tick = 0; tick < 20; ++tick)
                pollingTick();
        }),
            0L);
        QCOMPARE(fileStamp(state), saved);
        QCOMPARE(ZuAuxSim::trace(), QStringList());
    }

    // A write appends what changed; the file is neither rewritten nor read again.
    void writesToABigFile()
    {
        const QString state = m_dir.filePath(QStringLiteral("big.ini"));
        QByteArray big = "[File]\n";
        for (int i = 0; big.size() < 8 * 1024 * 1024; ++i)
            big += "Setting_" + QByteArray::number(i) + "=a value that takes some room "
                + QByteArray::number(i) + '\n';
        QVERIFY(writeFile(state, big));
        const QString inode = fileStamp(state).section(QLatin1Char(' '), 0, 0);

        ZuAuxSim::reset(QStringLiteral("full"), state);
        for (int i = 0; i < 200; ++i)
            QCOMPARE(Buzzer_setVolume(GetBuzzer(), uint16_t(i % 50)), ERR_SUCCESS);

        const QByteArray after = fileContents(state);
        QVERIFY(after.startsWith(big));
        QVERIFY2(
            after.size() - big.size() < 200 * 16, qPrintable(QString::number(after.size() - big.size())));
        QCOMPARE(fileStamp(state).section(QLatin1Char(' '), 0, 0), inode);
    }

    // Lines that later ones override are dropped now and then, so the file stays
    // small; comments and lines the unit could not read stay.
    void oldLinesDropped()
    {
        const QString state = m_dir.filePath(QStringLiteral("often.ini"));
        const QByteArray mine = "; my notes\n[Buzzer]\nVolume=3\nnot a setting\n";
        QVERIFY(writeFile(state, mine));

        ZuAuxSim::reset(QStringLiteral("full"), state);
        for (int i = 0; i < 3000; ++i)
            QCOMPARE(Backlight_setIntensity(GetBacklight(), uint8_t(i % 7)), ERR_SUCCESS);
        const QByteArray after = fileContents(state);
        QVERIFY2(after.size() < 8000, qPrintable(QString::number(after.size())));
        QVERIFY(after.startsWith(mine));

        ZuAuxSim::reset(QStringLiteral("full"), state);
        QCOMPARE(ZuAuxSim::value(QStringLiteral("Backlight/Intensity")).toInt(), 2999 % 7);
        QCOMPARE(ZuAuxSim::value(QStringLiteral("Buzzer/Volume")).toInt(), 3);
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_simcost)
#include "tst_simcost.moc"
