#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestGallery : public QObject
{
    Q_OBJECT
private slots:
    void profile_data();
    void profile();
};

void TestGallery::profile_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QStringList>("absent");
    QTest::newRow("full") << "full" << 16 << QStringList {};
    // Without a display the buzzer's number stays empty.
    QTest::newRow("headless") << "headless" << 15 << QStringList { "headless-8-buzzer.png" };
    QTest::newRow("unsupported") << "unsupported" << 16 << QStringList {};
    QTest::newRow("faulty") << "faulty" << 16 << QStringList {};
}

void TestGallery::profile()
{
    QFETCH(QString, profile);
    QFETCH(int, pages);
    QFETCH(QStringList, absent);

    QTemporaryDir out;
    QProcess gallery;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    gallery.setProcessEnvironment(env);
    gallery.start(QStringLiteral(ZUSETTINGS_BINARY_DIR "/tools/gallery"),
        { "--profile", profile, "--out", out.path() });
    const bool finished = gallery.waitForFinished(120000);
    if (!finished) {
        gallery.kill();
        gallery.waitForFinished();
    }
    QVERIFY2(finished, "the gallery hangs");
    QCOMPARE(gallery.exitStatus(), QProcess::NormalExit);
    QVERIFY2(gallery.exitCode() == 0, gallery.readAllStandardError().constData());

    const QStringList files = QDir(out.path()).entryList({ "*.png" }, QDir::Files, QDir::Name);
    QCOMPARE(files.size(), pages);
    QVERIFY(files.contains(profile + "-0-menu.png"));
    QVERIFY(files.contains(profile + "-1-version.png"));
    for (const QString& name : absent)
        QVERIFY2(!files.contains(name), qPrintable(name));

    for (const QString& name : files) {
        QVERIFY2(name.startsWith(profile + '-'), qPrintable(name));
        const QImage image(out.filePath(name));
        QVERIFY2(!image.isNull(), qPrintable(name));
        const QRgb first = image.pixel(0, 0);
        bool varied = false;
        for (int y = 0; y < image.height() && !varied; y += 3) {
            for (int x = 0; x < image.width() && !varied; x += 3)
                varied = image.pixel(x, y) != first;
        }
        QVERIFY2(varied, qPrintable(name + " is blank"));
    }
}

QTEST_GUILESS_MAIN(TestGallery)
#include "tst_gallery.moc"
