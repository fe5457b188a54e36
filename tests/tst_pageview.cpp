// The page viewer: any catalogued page alone in a window of the main window's
// size, on the unit the environment or --profile names.
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
};

namespace
{
QProcess* pageview(const QStringList& arguments)
{
    auto* process = new QProcess;
    process->start(QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/pageview"), arguments);
    if (!process->waitForFinished(60000))
        qFatal("pageview hangs");
    return process;
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
    const std::unique_ptr<QProcess> process(pageview({ "--profile", profile, "--grab", png, page }));
    QVERIFY2(process->exitCode() == 0, process->readAllStandardError().constData());
    QCOMPARE(QString::fromLatin1(process->readAllStandardOutput()), messages);

    const QImage image = QImage(png).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(image.size(), QSize(600, 435));
    QImage blank(image.size(), image.format());
    blank.fill(image.pixel(0, 0));
    QVERIFY(image != blank);
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
    const std::unique_ptr<QProcess> process(pageview(arguments));
    QCOMPARE(process->exitCode(), 2);
    const QByteArray usage = process->readAllStandardError();
    QVERIFY2(usage.startsWith("usage: ") && usage.contains(" buzzer "), usage.constData());
}

QTEST_MAIN(tst_pageview)
#include "tst_pageview.moc"
