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

Run client(const QStringList& args, const QMap<QString, QString>& env)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("ZUAUX_SIM_TRACE"));
    for (auto it = env.cbegin(); it != env.cend(); ++it)
        environment.insert(it.key(), it.value());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/zuaux-sim"), args);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        qWarning("zuaux-sim %s failed: %s", qPrintable(args.join(' ')),
            process.readAllStandardError().constData());
    const auto lines = [](const QByteArray& data) {
        return QString::fromLatin1(data).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    };
    return Run { lines(process.readAllStandardOutput()), lines(process.readAllStandardError()) };
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSimProcess : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void stateSeenByAnotherProcess();
    void profileFromEnvironment_data();
    void profileFromEnvironment();
    void traceFileAppends();
    void damagedStateFile_data();
    void damagedStateFile();

private:
    QTemporaryDir m_dir;
    QString m_state;
    QMap<QString, QString> m_env;
};

void TestSimProcess::init()
{
    resetUnit(QStringLiteral("full"));
    m_state = m_dir.filePath(QStringLiteral("%1/state.ini").arg(QTest::currentTestFunction()));
    // Each row starts without state and without files kept aside.
    QDir(QFileInfo(m_state).absolutePath()).removeRecursively();
    QDir(m_dir.path()).mkpath(QTest::currentTestFunction());
    m_env
        = { { QStringLiteral("ZUAUX_SIM_STATE"), m_state }, { QStringLiteral("ZUAUX_SIM_PROFILE"), "full" } };
}

void TestSimProcess::stateSeenByAnotherProcess()
{
    // Written by the client, read here ...
    QCOMPARE(
        client({ "call", "CanSetting_setBaudrate", "2", "250" }, m_env).out, QStringList { "0 Success" });
    QCOMPARE(client({ "call", "ZuAuxPrivate_setFileSetting", "ZusettingsGpsPort", "/dev/ttyS4" }, m_env).out,
        QStringList { "0 Success" });
    ZuAuxSim::reset(QStringLiteral("full"), m_state);
    uint16_t rate = 0;
    QCOMPARE(CanSetting_getBaudrate(GetCanSetting(), 2, &rate), ERR_SUCCESS);
    QCOMPARE(rate, uint16_t(250));

    // ... written here, read by the client.
    QCOMPARE(Config_setButtonFunction(GetConfig(), 4, BUTTON_AS_ACTION_STARTUP_TRIG), ERR_SUCCESS);
    QCOMPARE(
        client({ "call", "Config_getButtonFunction", "4" }, m_env).out, (QStringList { "0 Success", "6" }));
    QCOMPARE(client({ "call", "ZuAuxPrivate_getFileSetting", "ZusettingsGpsPort" }, m_env).out,
        (QStringList { "0 Success", "/dev/ttyS4" }));
    // A refused write leaves the saved value alone.
    QCOMPARE(client({ "call", "CanSetting_setBaudrate", "2", "5000" }, m_env).out,
        QStringList { "4 Invalid parameter" });
    QCOMPARE(client({ "get", "CanSetting/Baudrate_2" }, m_env).out, QStringList { "250" });
}

void TestSimProcess::profileFromEnvironment_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QStringList>("out");
    QTest::addColumn<int>("errLines");

    // clang-format off
    QTest::newRow("full") << "full" << QStringList{"call", "CanSetting_getBaudrate", "1"} << QStringList{"0 Success", "125"} << 0;
    QTest::newRow("headless") << "headless" << QStringList{"call", "CanSetting_getBaudrate", "1"} << QStringList{"2 Not supported by this unit"} << 0;
    QTest::newRow("unsupported") << "unsupported" << QStringList{"call", "Backlight_getIntensity"} << QStringList{"2 Not supported by this unit"} << 0;
    QTest::newRow("faulty") << "faulty" << QStringList{"call", "Config_setStartupTriggerConfig", "3"} << QStringList{"34 Start-up trigger conflicts with the button functions"} << 0;
    QTest::newRow("unknown name") << "no-such-unit" << QStringList{"call", "CanSetting_getBaudrate", "1"} << QStringList{"0 Success", "125"} << 1;
    // clang-format on
}

void TestSimProcess::profileFromEnvironment()
{
    QFETCH(QString, profile);
    QFETCH(QStringList, args);
    QFETCH(QStringList, out);
    QFETCH(int, errLines);

    m_env.insert(QStringLiteral("ZUAUX_SIM_PROFILE"), profile);
    const Run run = client(args, m_env);
    QCOMPARE(run.out, out);
    QCOMPARE(run.err.size(), errLines);
    if (errLines)
        QVERIFY2(run.err.first().contains(profile), qPrintable(run.err.first()));
}

void TestSimProcess::traceFileAppends()
{
    const QString trace = m_dir.filePath(QStringLiteral("trace.log"));
    m_env.insert(QStringLiteral("ZUAUX_SIM_TRACE"), trace);
    client({ "call", "Backlight_setIntensity", "128" }, m_env);
    client({ "call", "Config_setStartupVoltageConfig", "9.5" }, m_env);
    client({ "call", "ZuAuxPrivate_getFileSetting", "Screen_Rotation" }, m_env);
    client({ "get", "Backlight/Intensity" }, m_env);
    const QStringList lines = QString::fromLatin1(contents(trace)).split(QLatin1Char('\n'));
    QCOMPARE(lines,
        (QStringList { "GetBacklight()", "Backlight_setIntensity(128) -> 0", "GetConfig()",
            "Config_setStartupVoltageConfig(9.5) -> 0", "GetZuAuxPrivate()",
            "ZuAuxPrivate_getFileSetting(\"Screen_Rotation\") -> 0", "" }));
}

void TestSimProcess::damagedStateFile_data()
{
    QTest::addColumn<QByteArray>("damage");

    QTest::newRow("binary") << QByteArray("[Backlight]\nIntensity=12\n\0\x01\x02\xff", 26);
    QTest::newRow("not an INI file") << QByteArray("[Backlight]\nIntensity=12\nthis is no setting\n");
    QTest::newRow("cut in a section name") << QByteArray("[Backlight]\nIntensity=12\n[Conf");
}

void TestSimProcess::damagedStateFile()
{
    QFETCH(QByteArray, damage);

    QFile file(m_state);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(damage);
    file.close();

    const Run run = client({ "get", "Backlight/Intensity" }, m_env);
    // The profile's value, and one line that says what happened and where the file went.
    QCOMPARE(run.out, QStringList { "255" });
    QCOMPARE(run.err.size(), 1);
    QVERIFY2(run.err.first().contains(m_state), qPrintable(run.err.first()));
    const QStringList aside = QDir(QFileInfo(m_state).absolutePath())
                                  .entryList({ QStringLiteral("state.ini.corrupt-*") }, QDir::Files);
    QCOMPARE(aside.size(), 1);
    QVERIFY2(run.err.first().contains(aside.first()), qPrintable(run.err.first()));
    const QString asidePath = QFileInfo(m_state).absolutePath() + QLatin1Char('/') + aside.first();
    QCOMPARE(contents(asidePath), damage);
    QVERIFY(!QFile::exists(m_state));

    // Later writes go to a fresh file and leave the kept one alone.
    QCOMPARE(client({ "call", "Backlight_setIntensity", "90" }, m_env).err, QStringList());
    QCOMPARE(client({ "get", "Backlight/Intensity" }, m_env).out, QStringList { "90" });
    QCOMPARE(contents(asidePath), damage);
}

QTEST_GUILESS_MAIN(TestSimProcess)
#include "tst_simprocess.moc"
