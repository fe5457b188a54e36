#include "app/PageCatalogue.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class tst_gallery : public QObject
{
    Q_OBJECT
private slots:
    void profile_data();
    void profile();
};

void tst_gallery::profile_data()
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

void tst_gallery::profile()
{
    QFETCH(QString, profile);
    QFETCH(int, pages);

    QTemporaryDir out;
    QProcess gallery;
    gallery.start(QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/gallery"),
        { "--profile", profile, "--out", out.path() });
    QVERIFY2(gallery.waitForFinished(120000), "the gallery hangs");
    QVERIFY2(gallery.exitStatus() == QProcess::NormalExit && gallery.exitCode() == 0,
        gallery.readAllStandardError().constData());

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
    for (const QString& name : files) {
        const QImage image = QImage(out.filePath(name)).convertToFormat(QImage::Format_ARGB32);
        QImage blank(image.size(), image.format());
        blank.fill(image.pixel(0, 0));
        QVERIFY2(!image.isNull() && image != blank, qPrintable(name + " is blank"));
    }
}

QTEST_GUILESS_MAIN(tst_gallery)
#include "tst_gallery.moc"
