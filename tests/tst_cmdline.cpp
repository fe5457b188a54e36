// The program's entry: the mode its arguments choose, the two windowless
// modes run as the real program in a child process, the loading of its window
// library, and how the window is set up on the screen.
#include "app/MainWindowSetup.h"
#include "pagecheck.h"
#include "program/AppMode.h"
#include "simunit.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

Q_DECLARE_METATYPE(AppMode)

class tst_cmdline : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void mode_data();
    void mode();
    void mainWindow_data();
    void mainWindow();
    void reportFile();
    void defaultsThenReport();
    void qtLibraries_data();
    void qtLibraries();
    void windowLibraryMissing();

private:
    // Runs the program on the simulated unit kept in the state file `unit`:
    // its exit code; -1 when it crashed or hung, -2 when it printed on stdout
    // (neither mode does).
    int run(const QStringList& arguments, const QString& unit)
    {
        QProcess process;
        if (!start(process, qEnvironmentVariable("ZUSETTINGS_APP"), arguments, unit))
            return -1;
        return process.readAllStandardOutput().isEmpty() ? process.exitCode() : -2;
    }

    // Runs `program` to its end with the extra environment `env`; false when
    // it crashed or hung. Its stderr goes to m_err.
    bool start(QProcess& process, const QString& program, const QStringList& arguments, const QString& unit,
        const QProcessEnvironment& extra = {})
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("ZUAUX_SIM_STATE", m_dir.filePath(unit + ".ini"));
        env.insert(extra);
        process.setProcessEnvironment(env);
        process.setWorkingDirectory(m_dir.path());
        process.start(program, arguments);
        if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
            return false; // the destructor kills a hung program
        m_err = process.readAllStandardError();
        return true;
    }

    QTemporaryDir m_dir;
    QByteArray m_err;
};

void tst_cmdline::mode_data()
{
    QTest::addColumn<QByteArrayList>("args");
    QTest::addColumn<AppMode>("expected");
    QTest::newRow("no arguments") << QByteArrayList {} << AppMode::Interactive;
    QTest::newRow("report") << QByteArrayList { "--systemreport", "r.txt" } << AppMode::SystemReport;
    QTest::newRow("report without file") << QByteArrayList { "--systemreport" } << AppMode::Interactive;
    QTest::newRow("report, extra argument")
        << QByteArrayList { "--systemreport", "r.txt", "x" } << AppMode::Interactive;
    QTest::newRow("report, other case")
        << QByteArrayList { "--SystemReport", "r.txt" } << AppMode::Interactive;
    QTest::newRow("defaults") << QByteArrayList { "--factorydefault" } << AppMode::FactoryDefaults;
    QTest::newRow("defaults, extra argument")
        << QByteArrayList { "--factorydefault", "extra" } << AppMode::Interactive;
    QTest::newRow("defaults, longer word") << QByteArrayList { "--factorydefaults" } << AppMode::Interactive;
}

void tst_cmdline::mode()
{
    QFETCH(QByteArrayList, args);
    QFETCH(AppMode, expected);
    std::vector<const char*> argv { "zusettings" };
    for (const QByteArray& a : args)
        argv.push_back(a.constData());
    argv.push_back(nullptr);
    QCOMPARE(chooseMode(int(argv.size()) - 1, argv.data()), expected);
}

void tst_cmdline::mainWindow_data()
{
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QMargins>("expected");
    // A screen whose origin is not at 0,0: the size counts, not the corner.
    QTest::newRow("800 x 480") << QRect(1920, 0, 800, 480) << QMargins(100, 22, 0, 0);
    QTest::newRow("480 x 272") << QRect(0, 0, 480, 272) << QMargins(0, 0, 0, 0);
}

void tst_cmdline::mainWindow()
{
    QFETCH(QRect, screen);
    QFETCH(QMargins, expected);
    resetUnit("full");
    QWidget window;
    prepareMainWindow(window, screen);
    // Qt adds the window type itself; the hints are exactly these.
    QCOMPARE(int(window.windowFlags() & ~Qt::WindowType_Mask), 0x0A003100);
    QCOMPARE(window.contentsMargins(), expected);
    QVERIFY(window.windowState() & Qt::WindowFullScreen);
    QCOMPARE(callsTo("ZuAuxPrivate_getFileSetting(\"Screen_Rotation\")").size(), 1);
    QCOMPARE(callsTo("ZuAuxPrivate_release").size(), callsTo("GetZuAuxPrivate").size());
}

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
    QCOMPARE(QString::fromLatin1(m_err).trimmed(),
        "Error(7) in setNrOfPulses: Communication with the controller failed");
    QCOMPARE(run({ "--systemreport", after }, "defaults"), 0);
    for (const auto& setting : settings) {
        QVERIFY2(!fileContents(before).contains(setting.factoryLine), setting.key);
        QVERIFY2(fileContents(after).contains(setting.factoryLine), setting.key);
    }
}

void tst_cmdline::qtLibraries_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("window");
    QTest::newRow("report") << QStringList { "--systemreport", m_dir.filePath("loaded.txt") } << false;
    QTest::newRow("defaults") << QStringList { "--factorydefault" } << false;
    // The same probe sees the GUI libraries where they are loaded.
    QTest::newRow("window") << QStringList {} << true;
}

// The windowless modes run on Qt Core alone: neither the GUI libraries nor
// anything else of Qt is loaded, not even before main(). The window's first
// frame reads its pictures without any image format plugin.
void tst_cmdline::qtLibraries()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, window);
    QProcessEnvironment env;
    env.insert("LD_DEBUG", "files");
    env.insert("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME", "1");
    QProcess process;
    QVERIFY(start(process, qEnvironmentVariable("ZUSETTINGS_APP"), arguments, "libraries", env));
    QCOMPARE(process.exitCode(), 0);

    QStringList loaded;
    static const QRegularExpression qtFile(R"(file=(libQt6\w+)\.so)");
    for (auto match = qtFile.globalMatch(QString::fromLocal8Bit(m_err)); match.hasNext();)
        loaded << match.next().captured(1);
    loaded.removeDuplicates();
    if (window) {
        QVERIFY2(
            loaded.contains("libQt6Gui") && loaded.contains("libQt6Widgets"), qPrintable(loaded.join(' ')));
        QVERIFY(!m_err.contains("/imageformats/"));
    } else {
        QCOMPARE(loaded, QStringList { "libQt6Core" });
    }
}

// Without its window library beside it the program says so and fails; the
// windowless modes do not need it.
void tst_cmdline::windowLibraryMissing()
{
    const QString alone = m_dir.filePath("alone/zusettings");
    QVERIFY(QDir().mkpath(m_dir.filePath("alone")));
    QVERIFY(QFile::copy(qEnvironmentVariable("ZUSETTINGS_APP"), alone));
    QProcess process;
    QVERIFY(start(process, alone, {}, "alone"));
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(QString::fromLocal8Bit(m_err).section('\n', 0, 0),
        "zusettings: cannot load the window library: " + m_dir.filePath("alone/zusettings-window.so")
            + ": cannot open shared object file: No such file or directory");
    QVERIFY(start(process, alone, { "--systemreport", m_dir.filePath("alone.txt") }, "alone"));
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(fileContents(m_dir.filePath("alone.txt")).startsWith("\nSystem report generated on: "));
}

QTEST_MAIN(tst_cmdline)
#include "tst_cmdline.moc"
