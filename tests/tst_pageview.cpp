// The page viewer, any catalogued page alone in a window of the main window's
// size on the unit the environment or --profile names, and the gallery, every
// page of a unit rendered to PNG files.
#include "app/PageCatalogue.h"
#include "app/PageWindow.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabDlg.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class tst_pageview : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void window();
    void everyPageClassCatalogued();
    void grab_data();
    void grab();
    void badArguments_data();
    void badArguments();
    void gallery_data();
    void gallery();
};

namespace
{
// Runs one of the tools to its end.
std::unique_ptr<QProcess> run(const char* tool, const QStringList& arguments)
{
    auto process = std::make_unique<QProcess>();
    process->start(QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/") + QLatin1String(tool), arguments);
    if (!process->waitForFinished(120000))
        qFatal("%s hangs", tool);
    return process;
}

// The size of a picture that is not all one colour; an empty size for a blank one.
QSize drawn(const QString& png)
{
    const QImage image = QImage(png).convertToFormat(QImage::Format_ARGB32);
    QImage blank(image.size(), image.format());
    blank.fill(image.pixel(0, 0));
    return image.isNull() || image == blank ? QSize() : image.size();
}
} // namespace

void tst_pageview::window()
{
    resetUnit();
    PageWindow window(findPageClass(QStringLiteral("buzzer"))->create(nullptr));
    window.show();
    QCOMPARE(window.size(), QSize(600, 435));
    QCOMPARE(window.findChild<QLabel*>(QStringLiteral("tabTitle"))->text(), QStringLiteral("Buzzer"));
    QVERIFY(window.page()->isVisible());
    // Showing the window shows the page, which reads the unit.
    QCOMPARE(callsTo(QStringLiteral("Buzzer_getFrequency")), QStringList { "Buzzer_getFrequency() -> 0" });
}

// Tools and the gallery reach pages only through the catalogue: a page class
// missing from it cannot be looked at at all.
void tst_pageview::everyPageClassCatalogued()
{
    const QStringList headers = QDir(QStringLiteral(ZUSETTINGS_SOURCE_DIR "/src/tabs"))
                                    .entryList({ QStringLiteral("tab*Dlg.h") }, QDir::Files, QDir::Name);
    QVERIFY(headers.size() > 10);
    QStringList missing;
    for (const QString& header : headers) {
        const QString className = header.chopped(2);
        bool found = className == QLatin1String("tabDlg");
        for (const PageClass& page : pageClasses())
            found = found || className == QLatin1String(page.meta->className());
        if (!found)
            missing << className;
    }
    QCOMPARE(missing, QStringList());
}

void tst_pageview::grab_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("messages");
    // The gallery renders every page; here the viewer opens one the menu does not offer.
    QTest::newRow("power") << "power" << QString();
    QTest::newRow("a profile with a failing read")
        << "buzzer"
        << "  message box \"Zusettings\": Error(7) in getVolume: Communication with the controller failed\n";
}

// A page renders on its own; the profile given on the command line is the
// unit it reads, and its failures are listed instead of blocking.
void tst_pageview::grab()
{
    QFETCH(QString, page);
    QFETCH(QString, messages);

    QTemporaryDir dir;
    const QString profile = dir.filePath(QStringLiteral("unit.ini"));
    QFile ini(profile);
    QVERIFY(ini.open(QIODevice::WriteOnly));
    ini.write(messages.isEmpty() ? "[profile]\nbase=full\n" : "[errors]\nBuzzer_getVolume=7\n");
    ini.close();

    const QString png = dir.filePath(QStringLiteral("page.png"));
    const auto process = run("pageview", { "--profile", profile, "--grab", png, page });
    QVERIFY2(process->exitCode() == 0, process->readAllStandardError().constData());
    QCOMPARE(QString::fromLatin1(process->readAllStandardOutput()), messages);
    QCOMPARE(drawn(png), QSize(600, 435));
}

void tst_pageview::badArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no page") << QStringList();
    QTest::newRow("unknown page") << QStringList { "nosuchpage" };
    QTest::newRow("two pages") << QStringList { "buzzer", "led" };
    QTest::newRow("option without value") << QStringList { "buzzer", "--grab" };
    QTest::newRow("negative wait") << QStringList { "--wait", "-1", "buzzer" };
    QTest::newRow("negative sub-page") << QStringList { "--tab", "-1", "telematics" };
}

void tst_pageview::badArguments()
{
    QFETCH(QStringList, arguments);
    const auto process = run("pageview", arguments);
    QCOMPARE(process->exitCode(), 2);
    const QByteArray usage = process->readAllStandardError();
    QVERIFY2(usage.startsWith("usage: ") && usage.contains(" buzzer "), usage.constData());
}

void tst_pageview::gallery_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("pages");
    // The menu's pages; each page class the menu does not offer comes alone.
    QTest::newRow("full") << "full" << 16;
    // Without a display the buzzer's number stays empty.
    QTest::newRow("headless") << "headless" << 15;
    // Failing reads are listed, never waited on.
    QTest::newRow("faulty") << "faulty" << 16;
}

void tst_pageview::gallery()
{
    QFETCH(QString, profile);
    QFETCH(int, pages);

    QTemporaryDir out;
    const auto process = run("gallery", { "--profile", profile, "--out", out.path() });
    QVERIFY2(process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0,
        process->readAllStandardError().constData());
    const QStringList files = QDir(out.path()).entryList({ "*.png" }, QDir::Files, QDir::Name);
    int alone = 0;
    for (const PageClass& page : pageClasses()) {
        if (!page.inMenu) {
            ++alone;
            QVERIFY2(files.contains(profile + '-' + page.name + ".png"), page.name);
        }
    }
    QCOMPARE(files.size(), pages + alone);
    QCOMPARE(files.contains(profile + "-8-buzzer.png"), pages == 16);
    for (const QString& name : files)
        QVERIFY2(!drawn(out.filePath(name)).isEmpty(), qPrintable(name + " is blank"));
}

QTEST_MAIN(tst_pageview)
#include "tst_pageview.moc"
