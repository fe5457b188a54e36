// The simulated unit across processes: saved state seen by a second process,
// the environment that chooses profile, state file and trace file, and what
// the unit does with state paths and files it cannot use as they are. The
// second process is tools/zuaux-sim.
#include "simunit.h"
#include "zuaux2.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Korvane;

namespace
{

struct Run {
    QStringList out;
    QStringList err;
    bool finished = false;
};

// The type and permissions of `path` itself, not of what a link names.
mode_t modeOf(const QString& path)
{
    struct stat info = {};
    ::lstat(QFile::encodeName(path).constData(), &info);
    return info.st_mode;
}

QStringList lines(const QByteArray& data)
{
    return QString::fromLatin1(data).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class tst_simprocess : public QObject
{
    Q_OBJECT
private slots:
    void init()
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

    void stateSharedBetweenProcesses()
    {
        const QStringList ok { QStringLiteral("0 Success") };
        const QString trace = m_dir.filePath(QStringLiteral("trace.log"));
        m_env.insert(QStringLiteral("ZUAUX_SIM_TRACE"), trace);
        ZuAuxSim::reset(QStringLiteral("full"), m_state);
        QCOMPARE(Config_setButtonFunction(GetConfig(), 4, BUTTON_AS_ACTION_STARTUP_TRIG), ERR_SUCCESS);
        QCOMPARE(client({ "call", "CanSetting_setBaudrate", "2", "250" }).out, ok);
        QCOMPARE(
            client({ "call", "ZuAuxPrivate_setFileSetting", "ZusettingsGpsPort", "/dev/ttyS4" }).out, ok);
        // A write here keeps what the other process saved in the meantime.
        QCOMPARE(Config_setStartupVoltageConfig(GetConfig(), 10.7), ERR_SUCCESS);
        QCOMPARE(client({ "call", "Config_getButtonFunction", "4" }).out, (QStringList { "0 Success", "6" }));
        // A refused write leaves the saved value alone.
        QCOMPARE(client({ "call", "CanSetting_setBaudrate", "2", "5000" }).out,
            QStringList { "4 Invalid parameter" });
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

    void profileFromEnvironment()
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

    // Only a regular file or a missing one is a state file. Anything else is left
    // alone: one line says why, the unit runs on its profile and saves nothing.
    void stateThatIsNoFile_data()
    {
        QTest::addColumn<QString>("target"); // what the state path names

        QTest::newRow("character device") << "/dev/null";
        QTest::newRow("link to a character device") << "link:/dev/null";
        QTest::newRow("FIFO") << "fifo";
        QTest::newRow("directory") << "dir";
    }

    void stateThatIsNoFile()
    {
        QFETCH(QString, target);

        QString path = m_state;
        if (target.startsWith(QLatin1String("link:")))
            QVERIFY(QFile::link(target.mid(5), m_state));
        else if (target == QLatin1String("fifo"))
            QCOMPARE(::mkfifo(QFile::encodeName(m_state).constData(), 0644), 0);
        else if (target == QLatin1String("dir"))
            QVERIFY(QDir().mkpath(m_state));
        else
            path = target;
        m_env.insert(QStringLiteral("ZUAUX_SIM_STATE"), path);
        const mode_t mode = modeOf(path);

        const Run set = client({ "call", "Backlight_setIntensity", "90" });
        QVERIFY(set.finished);
        QCOMPARE(set.out, QStringList { "11 Flash write failed" });
        QCOMPARE(set.err.size(), 1);
        QVERIFY2(
            set.err.first().contains(path) && set.err.first().contains(QLatin1String("not a regular file")),
            qPrintable(set.err.first()));
        QCOMPARE(client({ "get", "Backlight/Intensity" }).out, QStringList { "255" });
        QCOMPARE(modeOf(path), mode);
    }

    // A lock file that is in the way is reported and not waited on for long.
    void lockInTheWay_data()
    {
        QTest::addColumn<QString>("lock"); // "dir", "garbage" or "held"
        QTest::addColumn<QString>("report");

        QTest::newRow("directory") << "dir"
                                   << "is a directory";
        QTest::newRow("garbage") << "garbage" << QString();
        QTest::newRow("held by another process") << "held"
                                                 << "held by another process";
    }

    void lockInTheWay()
    {
        QFETCH(QString, lock);
        QFETCH(QString, report);

        const QString lockPath = m_state + QStringLiteral(".lock");
        int held = -1;
        if (lock == QLatin1String("dir")) {
            QVERIFY(QDir().mkpath(lockPath));
        } else {
            QVERIFY(writeFile(lockPath, QByteArray("\x7f\x45garbage\n12345\n", 15)));
            if (lock == QLatin1String("held")) {
                held = ::open(QFile::encodeName(lockPath).constData(), O_RDWR);
                QCOMPARE(::flock(held, LOCK_EX), 0);
            }
        }
        QElapsedTimer clock;
        clock.start();
        const Run set = client({ "call", "Backlight_setIntensity", "90" });
        if (held >= 0)
            ::close(held);
        QVERIFY(set.finished);
        QVERIFY2(clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(set.out, QStringList { "0 Success" });
        QCOMPARE(set.err.size(), report.isEmpty() ? 0 : 1);
        QVERIFY(report.isEmpty() || set.err.first().contains(report));
        QCOMPARE(client({ "get", "Backlight/Intensity" }).out, QStringList { "90" });
    }

    // Lines the unit cannot use are reported by file and line number, once; every
    // other value is kept, and the file keeps every byte it had.
    void damagedStateFile_data()
    {
        QTest::addColumn<QByteArray>("damage");
        QTest::addColumn<QStringList>("rejected"); // line numbers

        const QByteArray good = "[Backlight]\nIntensity=12\n";
        QTest::newRow("binary") << good + QByteArray("\0\x01\x02\xff\n", 5) + "[Buzzer]\nVolume=30\n"
                                << QStringList { "3" };
        QTest::newRow("not a setting") << good + "this is no setting\n[Buzzer]\nVolume=30\n[broken\n"
                                       << QStringList { "3", "6" };
        QTest::newRow("byte-order mark") << "\xEF\xBB\xBF" + good + "[Buzzer]\nVolume=30\n" << QStringList();
        QTest::newRow("NUL in a value") << good
                + QByteArray("[Buzzer]\nVolume=30\nFrequency=7\0"
                             "00\n",
                    34) << QStringList { "5" };
        QTest::newRow("outside the type") << good + "Status=1\n[Buzzer]\nVolume=30\nFrequency=70000\n"
                                          << QStringList { "6" };
    }

    void damagedStateFile()
    {
        QFETCH(QByteArray, damage);
        QFETCH(QStringList, rejected);

        QVERIFY(writeFile(m_state, damage));
        const Run run = client({ "call", "Backlight_setIntensity", "90" });
        QCOMPARE(run.out, QStringList { "0 Success" });
        QCOMPARE(run.err.size(), rejected.size());
        for (int i = 0; i < rejected.size(); ++i) {
            const QString where = m_state + QLatin1Char(':') + rejected.at(i) + QLatin1Char(':');
            QVERIFY2(run.err.at(i).contains(where), qPrintable(run.err.at(i)));
        }
        QCOMPARE(client({ "get", "Buzzer/Volume" }).out, QStringList { "30" });
        QCOMPARE(client({ "get", "Backlight/Intensity" }).out, QStringList { "90" });
        QVERIFY(fileContents(m_state).startsWith(damage));
    }

    // A value that cannot be stored makes its setter fail, and the file stays as
    // it was. The command-line modes still end with 0 but say what failed.
    void stateNotWritable_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("get"); // the intensity the unit reports

        QTest::newRow("read-only") << 0444 << "12";
        QTest::newRow("unreadable") << 0 << "255";
    }

    void stateNotWritable()
    {
        QFETCH(int, mode);
        QFETCH(QString, get);

        const QByteArray saved = "[Backlight]\nIntensity=12\n";
        QVERIFY(writeFile(m_state, saved));
        const QString dir = QFileInfo(m_state).path();
        QVERIFY(QFile::setPermissions(m_state, QFileDevice::Permissions(mode == 0 ? 0 : 0x4444)));
        QVERIFY(QFile::setPermissions(dir, QFileDevice::Permissions(0x5555)));
        QVERIFY(QFile::setPermissions(m_dir.path(), QFileDevice::Permissions(0x5555)));

        const Run set = client({ "call", "Backlight_setIntensity", "90" }, true);
        QCOMPARE(set.out, QStringList { "11 Flash write failed" });
        QVERIFY2(
            set.err.join(QLatin1Char('\n')).contains(m_state), qPrintable(set.err.join(QLatin1Char('\n'))));
        QCOMPARE(client({ "get", "Backlight/Intensity" }, true).out, QStringList { get });
        const Run defaults = client({ "--factorydefault" }, true, qEnvironmentVariable("ZUSETTINGS_APP"));
        QVERIFY(defaults.finished);
        QVERIFY(
            !defaults.err
                 .filter(QRegularExpression(QStringLiteral("^Error\\(11\\) in \\w+: Flash write failed$")))
                 .isEmpty());

        QVERIFY(QFile::setPermissions(m_dir.path(), QFileDevice::Permissions(0x7700)));
        QVERIFY(QFile::setPermissions(dir, QFileDevice::Permissions(0x7700)));
        QVERIFY(QFile::setPermissions(m_state, QFileDevice::Permissions(0x6600)));
        QCOMPARE(fileContents(m_state), saved);
    }

    // Another program changes a value in place and puts the time stamp back: a
    // later write here still sees that change instead of writing over it.
    void changeWithSameSizeAndTime()
    {
        ZuAuxSim::reset(QStringLiteral("full"), m_state);
        QCOMPARE(Backlight_setIntensity(GetBacklight(), 100), ERR_SUCCESS);
        const QDateTime modified = QFileInfo(m_state).lastModified();
        QByteArray bytes = fileContents(m_state);
        bytes.replace("Intensity=100", "Intensity=101");
        QVERIFY(writeFile(m_state, bytes));
        QFile file(m_state);
        QVERIFY(
            file.open(QIODevice::ReadWrite) && file.setFileTime(modified, QFileDevice::FileModificationTime));
        file.close();

        QCOMPARE(Buzzer_setVolume(GetBuzzer(), 5), ERR_SUCCESS);
        QCOMPARE(ZuAuxSim::value(QStringLiteral("Backlight/Intensity")).toInt(), 101);
        // Writing the value this process last knew is a change again.
        QCOMPARE(Backlight_setIntensity(GetBacklight(), 100), ERR_SUCCESS);
        QCOMPARE(client({ "get", "Backlight/Intensity" }).out, QStringList { "100" });
        QCOMPARE(client({ "get", "Buzzer/Volume" }).out, QStringList { "5" });
    }

    // A profile value that its operation's type cannot carry is refused with a
    // line that names it, and the base profile's value stays.
    void valuesOutsideTheirType()
    {
        const QString profile = QFileInfo(m_state).dir().filePath(QStringLiteral("odd.ini"));
        QVERIFY(writeFile(profile,
            "[profile]\nbase=full\n[About]\nNrOfCANConnections=300\nNrOfButtons=2147483648\n"
            "[Backlight]\nIntensity=-1\nKValue=abc\n[Diagnostic]\nPCBTemp=40000\nPMTemp_1=-32768\n"
            "[live]\nfrozen=1\n"));
        m_env.insert(QStringLiteral("ZUAUX_SIM_PROFILE"), profile);
        QStringList values;
        Run run;
        for (const char* key : { "About/NrOfCANConnections", "About/NrOfButtons", "Backlight/Intensity",
                 "Backlight/KValue", "Diagnostic/PCBTemp", "Diagnostic/PMTemp_1" }) {
            run = client({ "get", key });
            values << run.out;
        }
        QCOMPARE(values, (QStringList { "2", "10", "255", "0.85", "42", "-32768" }));
        const QStringList rejected { "4", "5", "7", "8", "10" };
        QCOMPARE(run.err.size(), rejected.size());
        for (int i = 0; i < rejected.size(); ++i)
            QVERIFY2(run.err.at(i).contains(profile + ':' + rejected.at(i) + ':'), qPrintable(run.err.at(i)));
    }

private:
    // Runs the client, or `program` with `args`, for at most 10 s. Permissions
    // do not hold for the superuser, so a run that must meet them (`asUser`)
    // drops to "nobody" when the test runs as root.
    Run client(const QStringList& args, bool asUser = false, const QString& program = QString()) const
    {
        QProcess process;
        process.setProcessEnvironment(m_env);
        if (asUser && ::getuid() == 0) {
            process.setChildProcessModifier([] {
                const gid_t nobody = 65534;
                if (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)
                    ::_exit(99);
            });
        }
        process.start(
            program.isEmpty() ? QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/zuaux-sim") : program, args);
        Run run;
        run.finished = process.waitForFinished(10000) && process.exitStatus() == QProcess::NormalExit;
        run.out = lines(process.readAllStandardOutput());
        run.err = lines(process.readAllStandardError());
        return run;
    }

    QTemporaryDir m_dir;
    QString m_state;
    QProcessEnvironment m_env;
};

QTEST_GUILESS_MAIN(tst_simprocess)
#include "tst_simprocess.moc"
