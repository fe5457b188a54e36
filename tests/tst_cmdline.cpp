// The two windowless modes, run as the real program in a child process.
#include "pagecheck.h"
#include "simunit.h"

#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class tst_cmdline : public QObject
{
    Q_OBJECT
private slots:
    void reportFile();
    void defaultsThenReport();

private:
    // Runs the program on the simulated unit kept in the state file `unit`:
    // its exit code; -1 when it crashed or hung, -2 when it printed on stdout
    // (neither mode does).
    int run(const QStringList& arguments, const QString& unit)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("ZUAUX_SIM_STATE", m_dir.filePath(unit + ".ini"));
        QProcess process;
        process.setProcessEnvironment(env);
        process.setWorkingDirectory(m_dir.path());
        process.start(qEnvironmentVariable("ZUSETTINGS_APP"), arguments);
        if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
            return -1; // the destructor kills a hung program
        m_err = process.readAllStandardError();
        return process.readAllStandardOutput().isEmpty() ? process.exitCode() : -2;
    }

    QTemporaryDir m_dir;
    QByteArray m_err;
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
    QCOMPARE(run({ "--systemreport", path }, "report"), 0);

    const QByteArray bytes = fileContents(path);
    QVERIFY(bytes.startsWith("\nSystem report generated on: "));
    const QString date = QString::fromLatin1(bytes.split('\n').value(1)).section(": ", 1);
    const QDateTime stamp = QDateTime::fromString(date, Qt::TextDate);
    QVERIFY2(stamp.isValid() && stamp.secsTo(before) <= 0 && stamp.secsTo(QDateTime::currentDateTime()) >= -1,
        qPrintable(date));
    QVERIFY(bytes.endsWith("  End of report  ------------------\n"));
    // 8-bit text: the degree sign is the byte 0xB0, never UTF-8.
    QVERIFY(bytes.contains("Total run time 40-60\xB0"
                           "C: "));
    QVERIFY(!bytes.contains("\xC2\xB0"));
    QVERIFY(!bytes.contains("xxxx"));

    const QString unwritable = m_dir.filePath("no/such/dir/report.txt");
    QCOMPARE(run({ "--systemreport", unwritable }, "report"), 0);
    QVERIFY(m_err.isEmpty());
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
    QCOMPARE(run({ "--systemreport", before }, "defaults"), 0);
    QCOMPARE(run({ "--factorydefault" }, "defaults"), 0);
    QCOMPARE(QString::fromLatin1(m_err).trimmed(), errorBox(7, "setNrOfPulses"));
    QCOMPARE(run({ "--systemreport", after }, "defaults"), 0);
    for (const auto& setting : settings) {
        QVERIFY2(!fileContents(before).contains(setting.factoryLine), setting.key);
        QVERIFY2(fileContents(after).contains(setting.factoryLine), setting.key);
    }
}

QTEST_GUILESS_MAIN(tst_cmdline)
#include "tst_cmdline.moc"
