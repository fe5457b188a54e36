#include "app/MainWindowSetup.h"
#include "pagecheck.h"
#include "program/AppMode.h"
#include "simunit.h"

#include <QTest>
#include <QWidget>

Q_DECLARE_METATYPE(AppMode)

class tst_appmode : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void mode_data();
    void mode();
    void mainWindow_data();
    void mainWindow();
};

void tst_appmode::mode_data()
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

void tst_appmode::mode()
{
    QFETCH(QByteArrayList, args);
    QFETCH(AppMode, expected);
    std::vector<const char*> argv { "zusettings" };
    for (const QByteArray& a : args)
        argv.push_back(a.constData());
    argv.push_back(nullptr);
    QCOMPARE(chooseMode(int(argv.size()) - 1, argv.data()), expected);
}

void tst_appmode::mainWindow_data()
{
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QMargins>("expected");
    // A screen whose origin is not at 0,0: the size counts, not the corner.
    QTest::newRow("800 x 480") << QRect(1920, 0, 800, 480) << QMargins(100, 22, 0, 0);
    QTest::newRow("480 x 272") << QRect(0, 0, 480, 272) << QMargins(0, 0, 0, 0);
}

void tst_appmode::mainWindow()
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

QTEST_MAIN(tst_appmode)
#include "tst_appmode.moc"
