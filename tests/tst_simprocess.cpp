// The simulated unit across processes: saved state seen by a second process,
// the environment that chooses profile, state file and trace file, and what
// happens to a damaged state file. The second process is tools/zuaux-sim.
#include "simunit.h"
#include "zuaux2.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace Korvane;

namespace
{

struct Run {
    QStringList out;
    QStringList err;
};

QStringList lines(const QByteArray& data)
{
    return QString::fromLatin1(data).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class TestSimProcess : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void stateSharedBetweenProcesses();
    void profileFromEnvironment();
    void damagedStateFile_data();
    void damagedStateFile();

private:
    Run client(const QStringList& args) const
    {
        QProcess process;
        process.setProcessEnvironment(m_env);
        process.start(QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/zuaux-sim"), args);
        process.waitForFinished(30000);
        return Run { lines(process.readAllStandardOutput()), lines(process.readAllStandardError()) };
    }

    QTemporaryDir m_dir;
    QString m_state;
    QProcessEnvironment m_env;
};

void TestSimProcess::init()
{
    resetUnit(QStringLiteral("full"));
    // Each row starts without state and without files kept aside.
    QDir dir(m_dir.filePath(QString::fromLatin1(QTest::currentTestFunction())));
    dir.removeRecursively();
    dir.mkpath(dir.path());
    m_state = dir.filePath(QStringLiteral("state.ini"));
    m_env = QProcessEnvironment::systemEnvironment();
    m_env.remove(QStringLiteral("ZUAUX_SIM_TRACE"));
    m_env.insert(QStringLiteral("ZUAUX_SIM_STATE"), m_state);
    m_env.insert(QStringLiteral("ZUAUX_SIM_PROFILE"), QStringLiteral("full"));
}

void TestSimProcess::stateSharedBetweenProcesses()
{
    const QStringList ok { QStringLiteral("0 Success") };
    const QString trace = m_dir.filePath(QStringLiteral("trace.log"));
    m_env.insert(QStringLiteral("ZUAUX_SIM_TRACE"), trace);
    ZuAuxSim::reset(QStringLiteral("full"), m_state);
    QCOMPARE(Config_setButtonFunction(GetConfig(), 4, BUTTON_AS_ACTION_STARTUP_TRIG), ERR_SUCCESS);
    QCOMPARE(client({ "call", "CanSetting_setBaudrate", "2", "250" }).out, ok);
    QCOMPARE(client({ "call", "ZuAuxPrivate_setFileSetting", "ZusettingsGpsPort", "/dev/ttyS4" }).out, ok);
    // A write here keeps what the other process saved in the meantime.
    QCOMPARE(Config_setStartupVoltageConfig(GetConfig(), 10.7), ERR_SUCCESS);
    QCOMPARE(client({ "call", "Config_getButtonFunction", "4" }).out, (QStringList { "0 Success", "6" }));
    // A refused write leaves the saved value alone.
    QCOMPARE(
        client({ "call", "CanSetting_setBaudrate", "2", "5000" }).out, QStringList { "4 Invalid parameter" });
    // Each client appended its calls to the trace file.
    const QStringList traced = lines(fileContents(trace));
    QCOMPARE(traced.size(), 8);
    QCOMPARE(traced.last(), QStringLiteral("CanSetting_setBaudrate(2, 5000) -> 4"));

    ZuAuxSim::reset(QStringLiteral("full"), m_state);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("CanSetting/Baudrate_2")).toInt(), 250);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("Config/StartupVoltageConfig")).toDouble(), 10.7);
    QCOMPARE(ZuAuxSim::value(QStringLiteral("File/ZusettingsGpsPort")), QVariant("/dev/ttyS4"));
    // The file holds the four values written and nothing of the profile.
    QCOMPARE(QSettings(m_state, QSettings::IniFormat).allKeys().size(), 4);
}

void TestSimProcess::profileFromEnvironment()
{
    const QStringList baudRate { "call", "CanSetting_getBaudrate", "1" };
    m_env.insert(QStringLiteral("ZUAUX_SIM_PROFILE"), QStringLiteral("headless"));
    QCOMPARE(client(baudRate).out, QStringList { "2 Not supported by this unit" });
    // An unknown name is reported once, and the full unit stands in.
    m_env.insert(QStringLiteral("ZUAUX_SIM_PROFILE"), QStringLiteral("no-such-unit"));
    const Run run = client(baudRate);
    QCOMPARE(run.out, (QStringList { "0 Success", "125" }));
    QVERIFY2(run.err.size() == 1 && run.err.first().contains(QLatin1String("no-such-unit")),
        qPrintable(run.err.join(QLatin1Char('\n'))));
}

void TestSimProcess::damagedStateFile_data()
{
    QTest::addColumn<QByteArray>("damage");

    QTest::newRow("binary") << QByteArray("[Backlight]\nIntensity=12\n\0\x01\x02\xff", 26);
    QTest::newRow("not an INI file") << QByteArray("[Backlight]\nIntensity=12\nthis is no setting\n");
}

void TestSimProcess::damagedStateFile()
{
    QFETCH(QByteArray, damage);

    QFile file(m_state);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(damage) == damage.size());
    file.close();
    // The profile's value, and one line that names the damaged file and where it went.
    const Run run = client({ "get", "Backlight/Intensity" });
    QCOMPARE(run.out, QStringList { "255" });
    const QFileInfoList aside = QFileInfo(m_state).dir().entryInfoList({ "state.ini.corrupt-*" });
    QCOMPARE(aside.size(), 1);
    const QString asidePath = aside.first().filePath();
    QVERIFY2(run.err.size() == 1 && run.err.first().contains(m_state) && run.err.first().contains(asidePath),
        qPrintable(run.err.join(QLatin1Char('\n'))));

    // Later writes go to a fresh file and leave the kept one alone.
    QCOMPARE(client({ "call", "Backlight_setIntensity", "90" }).err, QStringList());
    QCOMPARE(client({ "get", "Backlight/Intensity" }).out, QStringList { "90" });
    QCOMPARE(fileContents(asidePath), damage);
}

QTEST_GUILESS_MAIN(TestSimProcess)
#include "tst_simprocess.moc"
