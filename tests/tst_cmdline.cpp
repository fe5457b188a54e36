// The two windowless modes, run as the real program in a child process.
#include "pagecheck.h"

#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace
{

struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
    QByteArray trace;
};

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_cmdline : public QObject
{
    Q_OBJECT
private slots:
    void reportFile();
    void defaultsThenReport();

private:
    // Runs the program on the simulated unit kept in the state file `unit`.
    Run run(const QStringList& arguments, const QString& unit)
    {
        const QString trace = m_dir.filePath(unit + ".trace");
        QFile::remove(trace);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("ZUAUX_SIM_STATE", m_dir.filePath(unit + ".ini"));
        env.insert("ZUAUX_SIM_TRACE", trace);
        QProcess process;
        process.setProcessEnvironment(env);
        process.setWorkingDirectory(m_dir.path());
        process.start(qEnvironmentVariable("ZUSETTINGS_APP"), arguments);
        Run result;
        if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit)
            result.exitCode = process.exitCode();
        else
            process.kill();
        result.out = process.readAllStandardOutput();
        result.err = process.readAllStandardError();
        result.trace = readFile(trace);
        return result;
    }

    QTemporaryDir m_dir;
};

// An older, longer file is replaced; a file that cannot be opened is skipped
// silently, with exit code 0 all the same.
void tst_cmdline::reportFile()
{
    const QString path = m_dir.filePath("report.txt");
    QFile old(path);
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write(QByteArray(100000, 'x')) == 100000);
    old.close();
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    const Run result = run({ "--systemreport", path }, "report");
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.out.isEmpty());

    const QByteArray bytes = readFile(path);
    const QByteArray prefix = "\nSystem report generated on: ";
    QVERIFY(bytes.startsWith(prefix));
    const QByteArray date = bytes.mid(prefix.size(), bytes.indexOf('\n', prefix.size()) - prefix.size());
    const QDateTime stamp = QDateTime::fromString(QString::fromLatin1(date), Qt::TextDate);
    QVERIFY2(stamp.isValid() && stamp.secsTo(before) <= 0 && stamp.secsTo(QDateTime::currentDateTime()) >= -1,
        date.constData());
    QVERIFY(bytes.contains("\n------------------  SW Versions  ------------------\nZusettings v2.7.5.0\n"));
    QVERIFY(bytes.endsWith("  End of report  ------------------\n"));
    // 8-bit text: the degree sign is the byte 0xB0, never UTF-8.
    QVERIFY(bytes.contains("Total run time 40-60\xB0"
                           "C: "));
    QVERIFY(!bytes.contains("\xC2\xB0"));
    QVERIFY(!bytes.contains("xxxx"));

    const QString unwritable = m_dir.filePath("no/such/dir/report.txt");
    const Run skipped = run({ "--systemreport", unwritable }, "report");
    QCOMPARE(skipped.exitCode, 0);
    QVERIFY(skipped.out.isEmpty() && skipped.err.isEmpty());
    QVERIFY(!QFile::exists(unwritable));
}

// The unit keeps what the defaults mode wrote, and a later report shows it.
// A failing setter is told on stderr (not for code 2), and the rest still runs.
void tst_cmdline::defaultsThenReport()
{
    const struct {
        const char* key;
        int seeded;
        const char* factoryLine;
    } settings[] = {
        { "Backlight/Intensity", 12, "\nIntensity: 255\n" },
        { "Buzzer/Frequency", 2500, "\nFrequency: 700\n" },
        { "CanSetting/Baudrate_2", 1000, "\nCAN2 Baud rate: 125\n" },
        { "Config/ShortButtonPressAction", 2, "\nShortButtonPressAction: Suspend\n" },
        { "Config/ButtonFunction_10", 12, "\nButtonFunction 10: BUTTON_ONLY_MP_ACTION\n" },
        { "FrontLED/ColorBlue", 0, "\nColor B: 15\n" },
        { "TouchScreen/Mode", 0, "\nTouchScreenMode: Touch profile\n" },
    };
    {
        QSettings unit(m_dir.filePath("defaults.ini"), QSettings::IniFormat);
        for (const auto& setting : settings)
            unit.setValue(setting.key, setting.seeded);
        unit.setValue("errors/FrontLED_setNrOfPulses", 7);
        unit.setValue("errors/FrontLED_setIdleTime", 2);
    }
    const QString before = m_dir.filePath("before.txt");
    const QString after = m_dir.filePath("after.txt");
    QCOMPARE(run({ "--systemreport", before }, "defaults").exitCode, 0);
    const Run defaults = run({ "--factorydefault" }, "defaults");
    QCOMPARE(run({ "--systemreport", after }, "defaults").exitCode, 0);

    QCOMPARE(defaults.exitCode, 0);
    QVERIFY(defaults.out.isEmpty());
    QCOMPARE(QString::fromLatin1(defaults.err).trimmed(), errorBox(7, "setNrOfPulses"));
    QVERIFY(defaults.trace.endsWith("Telematics_release()\n"));
    for (const auto& setting : settings) {
        QVERIFY2(!readFile(before).contains(setting.factoryLine), setting.key);
        QVERIFY2(readFile(after).contains(setting.factoryLine), setting.key);
    }
}

QTEST_GUILESS_MAIN(tst_cmdline)
#include "tst_cmdline.moc"
