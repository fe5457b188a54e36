#include "AppMode.h"
#include "simunit.h"
#include "zuaux2.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <sys/stat.h>

Q_DECLARE_METATYPE(AppMode)

namespace
{

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Runs the built program on a unit of its own; returns its exit code (-1 when
// it did not finish).
struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
    QStringList trace;
};

Run runProgram(const QTemporaryDir& dir, const QStringList& args, const QString& profile = "full")
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ZUAUX_SIM_PROFILE", profile);
    env.insert("ZUAUX_SIM_STATE", dir.filePath("state.ini"));
    env.insert("ZUAUX_SIM_TRACE", dir.filePath("trace.txt"));
    env.insert("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME", "1");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    const QString fifo = dir.filePath("buttons");
    if (QFile::exists(fifo) || mkfifo(QFile::encodeName(fifo).constData(), 0600) == 0)
        env.insert("ZUSETTINGS_INPUT_DEVICE", fifo);
    QFile::remove(dir.filePath("trace.txt"));
    process.setProcessEnvironment(env);
    process.start(qEnvironmentVariable("ZUSETTINGS_APP"), args);
    Run run;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    if (process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    run.trace = QString::fromLatin1(readAll(dir.filePath("trace.txt"))).split('\n', Qt::SkipEmptyParts);
    return run;
}

bool traced(const QStringList& trace, const QString& prefix)
{
    for (const QString& line : trace) {
        if (line.startsWith(prefix))
            return true;
    }
    return false;
}

} // namespace

class TestAppMode : public QObject
{
    Q_OBJECT
private slots:
    void mode_data();
    void mode();
    void margins_data();
    void margins();
    void mainWindow();
    void screenRotation_data();
    void screenRotation();
    void reportFile_data();
    void reportFile();
    void reportNotBuiltWithoutFile();

    void programWritesReport();
    void programIgnoresUnwritableReportPath();
    void programOpensWindow_data();
    void programOpensWindow();
    void programWritesDefaultsWithoutWindow_data();
    void programWritesDefaultsWithoutWindow();
};

void TestAppMode::mode_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<AppMode>("expected");
    QTest::newRow("no arguments") << QStringList {} << AppMode::Interactive;
    QTest::newRow("report") << QStringList { "--systemreport", "r.txt" } << AppMode::SystemReport;
    QTest::newRow("report, empty name") << QStringList { "--systemreport", "" } << AppMode::SystemReport;
    QTest::newRow("report without file") << QStringList { "--systemreport" } << AppMode::Interactive;
    QTest::newRow("report, extra argument")
        << QStringList { "--systemreport", "r.txt", "x" } << AppMode::Interactive;
    QTest::newRow("report, other case") << QStringList { "--SystemReport", "r.txt" } << AppMode::Interactive;
    QTest::newRow("report, prefix only") << QStringList { "--system", "r.txt" } << AppMode::Interactive;
    QTest::newRow("report, longer word")
        << QStringList { "--systemreports", "r.txt" } << AppMode::Interactive;
    QTest::newRow("defaults") << QStringList { "--factorydefault" } << AppMode::FactoryDefaults;
    QTest::newRow("defaults, extra argument")
        << QStringList { "--factorydefault", "extra" } << AppMode::Interactive;
    QTest::newRow("defaults, plural") << QStringList { "--factorydefaults" } << AppMode::Interactive;
    QTest::newRow("defaults, one dash") << QStringList { "-factorydefault" } << AppMode::Interactive;
    QTest::newRow("file first") << QStringList { "r.txt", "--systemreport" } << AppMode::Interactive;
    QTest::newRow("Qt option") << QStringList { "-platform", "offscreen" } << AppMode::Interactive;
}

void TestAppMode::mode()
{
    QFETCH(QStringList, args);
    QFETCH(AppMode, expected);
    QList<QByteArray> storage { "zusettings" };
    for (const QString& a : args)
        storage.append(a.toLocal8Bit());
    std::vector<const char*> argv;
    for (const QByteArray& a : storage)
        argv.push_back(a.constData());
    argv.push_back(nullptr);
    QCOMPARE(chooseMode(int(storage.size()), argv.data()), expected);
}

void TestAppMode::margins_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QMargins>("expected");
    QTest::newRow("800 x 480") << QSize(800, 480) << QMargins(100, 22, 0, 0);
    QTest::newRow("480 x 272") << QSize(480, 272) << QMargins(0, 0, 0, 0);
    QTest::newRow("exactly the form") << QSize(600, 435) << QMargins(0, 0, 0, 0);
    QTest::newRow("one pixel more") << QSize(601, 436) << QMargins(0, 0, 0, 0);
    QTest::newRow("odd surplus") << QSize(1023, 766) << QMargins(211, 165, 0, 0);
    QTest::newRow("narrow and tall") << QSize(320, 1000) << QMargins(0, 282, 0, 0);
    QTest::newRow("1280 x 800") << QSize(1280, 800) << QMargins(340, 182, 0, 0);
}

void TestAppMode::margins()
{
    QFETCH(QSize, screen);
    QFETCH(QMargins, expected);
    QCOMPARE(centringMargins(screen.width(), screen.height()), expected);
}

void TestAppMode::mainWindow()
{
    resetUnit("full");
    QWidget window;
    // A screen whose origin is not at 0,0: the size counts, not the corner.
    prepareMainWindow(window, QRect(QPoint(1920, 0), QSize(800, 480)));
    // Qt adds the window type itself; the hints are exactly these.
    const Qt::WindowFlags hints = window.windowFlags() & ~Qt::WindowType_Mask;
    QCOMPARE(int(hints), 0x0A003100);
    QCOMPARE(hints,
        Qt::MSWindowsFixedSizeDialogHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
            | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint);
    QCOMPARE(window.contentsMargins(), QMargins(100, 22, 0, 0));
    QVERIFY(window.windowState() & Qt::WindowFullScreen);
    QCOMPARE(callsTo("GetZuAuxPrivate").size(), 1);
    QCOMPARE(callsTo("ZuAuxPrivate_getFileSetting(\"Screen_Rotation\")").size(), 1);
    QCOMPARE(callsTo("ZuAuxPrivate_release").size(), 1);
}

void TestAppMode::screenRotation_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<long>("expected");
    QTest::newRow("upright") << "0" << 0L;
    QTest::newRow("quarter turn") << "90" << 90L;
    QTest::newRow("trailing text") << "270deg" << 270L;
    QTest::newRow("leading blanks") << "  180" << 180L;
    QTest::newRow("not a number") << "left" << 0L;
    QTest::newRow("octal-looking") << "010" << 10L;
}

void TestAppMode::screenRotation()
{
    QFETCH(QString, stored);
    QFETCH(long, expected);
    resetUnit("full");
    ZuAuxSim::setValue("File/Screen_Rotation", stored);
    QCOMPARE(readScreenRotation(), expected);
}

void TestAppMode::reportFile_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << "SW Versions\n" << QByteArray("SW Versions\n");
    QTest::newRow("degree sign is one byte") << "Total run time 40-60" + QString(QChar(0xB0)) + "C"
                                             << QByteArray("Total run time 40-60\xB0"
                                                           "C");
    QTest::newRow("CR LF kept") << "a\r\nb" << QByteArray("a\r\nb");
    QTest::newRow("empty report") << "" << QByteArray();
}

void TestAppMode::reportFile()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QTemporaryDir dir;
    const QString path = dir.filePath("report.txt");
    {
        // An older, longer report is replaced, not overwritten in part.
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(4096, 'X'));
    }
    QVERIFY(writeReportFile(path, [&] { return text; }));
    QCOMPARE(readAll(path), bytes);
}

void TestAppMode::reportNotBuiltWithoutFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("missing/report.txt");
    int built = 0;
    QVERIFY(!writeReportFile(path, [&] {
        ++built;
        return QString("report");
    }));
    QCOMPARE(built, 0);
    QVERIFY(!QFile::exists(path));
}

void TestAppMode::programWritesReport()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("report.txt");
    {
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(1 << 20, 'X'));
    }
    const Run run = runProgram(dir, { "--systemreport", path });
    QCOMPARE(run.exitCode, 0);
    const QByteArray report = readAll(path);
    QVERIFY(!report.isEmpty());
    QVERIFY(!report.contains('X' + QByteArray(64, 'X')));
    // The diagnostic section's temperatures carry the degree sign, as one byte.
    QVERIFY(report.contains("\xB0"));
    QVERIFY(!report.contains("\xC2\xB0"));
    QVERIFY(!run.out.contains("first-frame"));
    QVERIFY(!traced(run.trace, "ZuAuxPrivate_getFileSetting(\"Screen_Rotation\")"));
}

void TestAppMode::programIgnoresUnwritableReportPath()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("no/such/dir/report.txt");
    const Run run = runProgram(dir, { "--systemreport", path });
    QCOMPARE(run.exitCode, 0);
    QVERIFY(!QFile::exists(path));
    QVERIFY2(!traced(run.trace, "AuxVersion_"), "the report must not be built without a file");
}

void TestAppMode::programOpensWindow_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::newRow("no arguments") << QStringList {};
    QTest::newRow("report without file") << QStringList { "--systemreport" };
    QTest::newRow("defaults with extra argument") << QStringList { "--factorydefault", "extra" };
}

void TestAppMode::programOpensWindow()
{
    QFETCH(QStringList, args);
    QTemporaryDir dir;
    const Run run = runProgram(dir, args);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.out.contains("first-frame"), run.err.constData());
    QVERIFY(traced(run.trace, "ZuAuxPrivate_getFileSetting(\"Screen_Rotation\")"));
    QVERIFY(traced(run.trace, "About_getIsDisplayAvailable("));
    QVERIFY(!QFile::exists(dir.filePath("extra")));
}

void TestAppMode::programWritesDefaultsWithoutWindow_data()
{
    QTest::addColumn<QString>("profileText");
    QTest::addColumn<bool>("failures");
    QTest::newRow("every write fails") << "[profile]\nbase=full\n[errors]\n*=7\n" << true;
    QTest::newRow("nothing supported") << "[errors]\n*=2\n" << false;
}

void TestAppMode::programWritesDefaultsWithoutWindow()
{
    QFETCH(QString, profileText);
    QFETCH(bool, failures);
    QTemporaryDir dir;
    const QString profile = dir.filePath("unit.ini");
    {
        QFile file(profile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(profileText.toLatin1());
    }
    const Run run = runProgram(dir, { "--factorydefault" }, profile);
    QCOMPARE(run.exitCode, 0);
    QVERIFY(!run.out.contains("first-frame"));
    QVERIFY(!traced(run.trace, "ZuAuxPrivate_getFileSetting(\"Screen_Rotation\")"));
    QVERIFY(traced(run.trace, "Backlight_setIntensity("));

    // Without a window, failures are reported on stderr, one line each, in
    // the dialog's words; code 2 passes silently.
    const QRegularExpression line(QStringLiteral("^Error\\((\\d+)\\) in ([^:]+): (.*)$"));
    int reported = 0;
    for (const QByteArray& l : run.err.split('\n')) {
        const QRegularExpressionMatch m = line.match(QString::fromLocal8Bit(l));
        if (!m.hasMatch())
            continue;
        ++reported;
        QCOMPARE(m.captured(1), QString("7"));
        QCOMPARE(m.captured(3), QString::fromLatin1(Korvane::GetErrorStringA(Korvane::ERR_COMMUNICATION)));
    }
    QCOMPARE(reported > 0, failures);
}

QTEST_MAIN(TestAppMode)
#include "tst_appmode.moc"
