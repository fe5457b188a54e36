#include "Dialogs.h"
#include "tabDlg.h"

#include <QElapsedTimer>
#include <QTest>

namespace
{
QString libraryText(int code)
{
    return QString::fromLatin1(Korvane::GetErrorStringA(Korvane::eErr(code)));
}
} // namespace

class TestTabDlg : public QObject
{
    Q_OBJECT
private slots:
    void failureDialogs_data();
    void failureDialogs();
    void readyMadeText();
    void sleep_data();
    void sleep();
};

void TestTabDlg::failureDialogs_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("where");
    QTest::addColumn<QString>("text"); // what both forms show; empty: nothing
    QTest::addColumn<bool>("pageOnly"); // shown by tabDlg::showError, not by showErr

    QTest::newRow("success") << 0 << QByteArray("setIntensity") << QString() << false;
    QTest::newRow("not supported") << 2 << QByteArray("setBaudrate CAN1")
                                   << "Error(2) in setBaudrate CAN1: " + libraryText(2) << true;
    QTest::newRow("invalid handle") << 3 << QByteArray("setIntensity")
                                    << "Error(3) in setIntensity: " + libraryText(3) << false;
    QTest::newRow("refused trigger") << 34 << QByteArray("Config_setButtonFunction")
                                     << "Error(34) in Config_setButtonFunction: " + libraryText(34) << false;
    QTest::newRow("not available") << 18 << QByteArray("getMinMaxTemp")
                                   << "Error(18) in getMinMaxTemp: " + libraryText(18) << false;
    // The placeholders are filled one after another, so a label that itself
    // holds a placeholder receives the library's text.
    QTest::newRow("label with a placeholder")
        << 7 << QByteArray("set%1") << "Error(7) in set" + libraryText(7) + ": %3" << false;
}

void TestTabDlg::failureDialogs()
{
    QFETCH(int, code);
    QFETCH(QByteArray, where);
    QFETCH(QString, text);
    QFETCH(bool, pageOnly);

    tabDlg page(nullptr);
    {
        Dialogs::Recorder recorder;
        page.showError(Korvane::eErr(code), where.constData());
        QCOMPARE(recorder.shown.size(), text.isEmpty() ? 0 : 1);
        if (!text.isEmpty()) {
            QCOMPARE(recorder.shown[0].title, QString("Zusettings"));
            QCOMPARE(recorder.shown[0].text, text);
            QCOMPARE(recorder.shown[0].icon, QMessageBox::Critical);
            QCOMPARE(recorder.shown[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        }
    }
    {
        Dialogs::Recorder recorder;
        showErr(Korvane::eErr(code), where.constData());
        const bool shown = !text.isEmpty() && !pageOnly;
        QCOMPARE(recorder.shown.size(), shown ? 1 : 0);
        if (shown) {
            QCOMPARE(recorder.shown[0].title, QString("Zusettings"));
            QCOMPARE(recorder.shown[0].text, text);
            QCOMPARE(recorder.shown[0].icon, QMessageBox::Critical);
        }
    }
}

void TestTabDlg::readyMadeText()
{
    tabDlg page(nullptr);
    Dialogs::Recorder recorder;
    page.showError(QStringLiteral("Buttons 1 and 2 cannot both be %1"));
    QCOMPARE(recorder.texts(), QStringList { "Buttons 1 and 2 cannot both be %1" });
    QCOMPARE(recorder.shown[0].title, QString("Zusettings"));
    QCOMPARE(recorder.shown[0].icon, QMessageBox::Critical);
}

void TestTabDlg::sleep_data()
{
    QTest::addColumn<unsigned long>("milliseconds");
    QTest::newRow("nothing") << 0UL;
    QTest::newRow("below a second") << 999UL;
    QTest::newRow("just over a second") << 1001UL;
    QTest::newRow("seconds and a half") << 2500UL;
}

void TestTabDlg::sleep()
{
    QFETCH(unsigned long, milliseconds);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(OSSleep(milliseconds));
    const qint64 elapsed = timer.elapsed();
    QVERIFY2(elapsed >= qint64(milliseconds), qPrintable(QString::number(elapsed)));
    // Generous, for a loaded machine; a wrong split into seconds and
    // nanoseconds is off by far more or fails outright.
    QVERIFY2(elapsed < qint64(milliseconds) + 400, qPrintable(QString::number(elapsed)));
}

QTEST_MAIN(TestTabDlg)
#include "tst_tabdlg.moc"
