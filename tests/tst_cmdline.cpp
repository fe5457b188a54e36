// The two windowless modes, run as the real program in a child process.
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "zuaux2.h"

namespace
{

struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

class tst_cmdline : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void reportFile();
    void reportToUnwritablePath();
    void defaultsThenReport();
    void defaultsReportFailuresOnStderr();
    void otherCommandLinesAreInteractive_data();
    void otherCommandLinesAreInteractive();

private:
    Run run(const QStringList& arguments, const QString& stateFile, bool quitAfterFirstFrame = false);
    QString statePath(const QString& name) const { return m_dir.filePath(name + ".ini"); }

    QTemporaryDir m_dir;
    QString m_trace;
};

void tst_cmdline::init()
{
    QVERIFY(m_dir.isValid());
    m_trace = m_dir.filePath(QStringLiteral("trace-%1.txt").arg(QTest::currentTestFunction()));
    QFile::remove(m_trace);
}

Run tst_cmdline::run(const QStringList& arguments, const QString& stateFile, bool quitAfterFirstFrame)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ZUAUX_SIM_STATE", stateFile);
    env.insert("ZUAUX_SIM_PROFILE", "full");
    env.insert("ZUAUX_SIM_TRACE", m_trace);
    env.insert("QT_QPA_PLATFORM", "offscreen");
    if (quitAfterFirstFrame)
        env.insert("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME", "1");
    process.setProcessEnvironment(env);
    process.setWorkingDirectory(m_dir.path());
    process.start(qEnvironmentVariable("ZUSETTINGS_APP"), arguments);
    Run result;
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray header(const char* title)
{
    return QByteArray("\n------------------  ") + title + "  ------------------\n";
}

void tst_cmdline::reportFile()
{
    // An older, longer file is replaced, not overwritten in place.
    const QString path = m_dir.filePath("report.txt");
    QFile old(path);
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write(QByteArray(100000, 'x')) == 100000);
    old.close();
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    const Run result = run({ "--systemreport", path }, statePath("report"));
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);
    QCOMPARE(result.exitCode, 0);

    const QByteArray bytes = readFile(path);
    const QByteArray prefix = "\nSystem report generated on: ";
    QVERIFY(bytes.startsWith(prefix));
    const QByteArray date = bytes.mid(prefix.size(), bytes.indexOf('\n', prefix.size()) - prefix.size());
    const QDateTime stamp = QDateTime::fromString(QString::fromLatin1(date), Qt::TextDate);
    QVERIFY2(stamp.isValid(), date.constData());
    QVERIFY(stamp >= before.addMSecs(-before.time().msec()) && stamp <= after);

    QVERIFY(bytes.contains(header("SW Versions") + "Zusettings v2.7.5.0\n"));
    QVERIFY(bytes.endsWith(header("Log Files") + header("End of report")));
    // 8-bit text: the degree sign is the byte 0xB0, never UTF-8.
    QVERIFY(bytes.contains("Total run time 40-60\xB0"
                           "C: "));
    QVERIFY(bytes.contains(" \xB0"
                           "C\n"));
    QVERIFY(!bytes.contains("\xC2\xB0"));
    QVERIFY(!bytes.contains(QByteArray(16, 'x')));
    QVERIFY(result.out.isEmpty());
}

void tst_cmdline::reportToUnwritablePath()
{
    const QString path = m_dir.filePath("no/such/dir/report.txt");
    const Run result = run({ "--systemreport", path }, statePath("unwritable"));
    QCOMPARE(result.exitCode, 0);
    QVERIFY(!QFile::exists(path));
    QVERIFY(result.out.isEmpty());
}

// The unit keeps what the defaults mode wrote; a later report shows it.
void tst_cmdline::defaultsThenReport()
{
    const QString state = statePath("defaults");
    {
        QSettings seeded(state, QSettings::IniFormat);
        seeded.setValue("Backlight/Intensity", 12);
        seeded.setValue("Buzzer/Frequency", 2500);
        seeded.setValue("Buzzer/Volume", 30);
        seeded.setValue("CanSetting/Baudrate_1", 500);
        seeded.setValue("CanSetting/Baudrate_2", 1000);
        seeded.setValue("Config/FrontBtnTrigTime", 100);
        seeded.setValue("Config/HeatingTempLimit", 5);
        seeded.setValue("Config/LongButtonPressAction", 0);
        seeded.setValue("Config/ButtonFunction_10", 12);
        seeded.setValue("FrontLED/ColorRed", 15);
        seeded.setValue("FrontLED/ColorBlue", 0);
        seeded.setValue("FrontLED/OnTime", 7);
        seeded.setValue("TouchScreen/Mode", 0);
        seeded.setValue("TouchScreen/MouseRightClickTime", 400);
    }
    const QString before = m_dir.filePath("before.txt");
    QCOMPARE(run({ "--systemreport", before }, state).exitCode, 0);
    const QByteArray old = readFile(before);
    QVERIFY(old.contains("\nIntensity: 12\n"));
    QVERIFY(old.contains("\nButtonFunction 10: BUTTON_AS_BACKLIGHT_INCREASE\n"));

    const Run defaults = run({ "--factorydefault" }, state);
    QCOMPARE(defaults.exitCode, 0);
    QVERIFY(defaults.out.isEmpty());
    QVERIFY2(!defaults.err.contains("Error("), defaults.err.constData());

    const QString after = m_dir.filePath("after.txt");
    QCOMPARE(run({ "--systemreport", after }, state).exitCode, 0);
    const QByteArray report = readFile(after);
    for (const char* line :
        { "\nIntensity: 255\n", "\nFrequency: 700\n", "\nVolume: 0\n", "\nCAN1 Baud rate: 125\n",
            "\nCAN2 Baud rate: 125\n", "\nFrontBtnTrigTime: 4000\n", "\nHeatingTempLimit: -25\n",
            "\nLongButtonPressAction: ShutDown\n", "\nShortButtonPressAction: Suspend\n",
            "\nSuspendMaxTime: 60\n", "\nButtonFunction 10: BUTTON_ONLY_MP_ACTION\n", "\nColor R: 0\n",
            "\nColor B: 15\n", "\nOnTime: 100\n", "\nMouseRightClickTime (for mouse profile): 1000\n",
            "\nTouchScreenMode: Touch profile\n" })
        QVERIFY2(report.contains(line), line);
}

void tst_cmdline::defaultsReportFailuresOnStderr()
{
    const QString state = statePath("failing");
    {
        QSettings seeded(state, QSettings::IniFormat);
        seeded.setValue("errors/Buzzer_setFrequency", 7);
        seeded.setValue("errors/FrontLED_setOnTime", 2);
    }
    const Run result = run({ "--factorydefault" }, state);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(QString::fromLocal8Bit(result.err).trimmed(),
        QStringLiteral("Error(7) in setFrequency: %1")
            .arg(QString::fromLatin1(Korvane::GetErrorStringA(Korvane::ERR_COMMUNICATION))));
    // The writer went on to the end.
    QVERIFY(readFile(m_trace).contains("Telematics_release()"));
}

void tst_cmdline::otherCommandLinesAreInteractive_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("report without file") << QStringList { "--systemreport" };
    QTest::newRow("defaults with argument") << QStringList { "--factorydefault", "now" };
}

void tst_cmdline::otherCommandLinesAreInteractive()
{
    QFETCH(QStringList, arguments);

    const QString state
        = statePath(QStringLiteral("interactive-%1").arg(QTest::currentDataTag()).replace(' ', '-'));
    const Run result = run(arguments, state, true);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.out.contains("first-frame"), result.err.constData());
    // A window came up, and the defaults writer did not run.
    QVERIFY(!readFile(m_trace).contains("TouchScreen_setMouseRightClickTime("));
}

} // namespace

QTEST_GUILESS_MAIN(tst_cmdline)
#include "tst_cmdline.moc"
