#include "dialogs/Dialogs.h"
#include "hwsupport/OSSleep.h"
#include "pagecheck.h"
#include "tabs/PageSupport.h"
#include "tabs/PictureLabel.h"
#include "tabs/tabDlg.h"

#include <QDirIterator>
#include <QImageReader>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace
{
// While set, nanosleep does not sleep: it keeps the request and answers
// `sleepAnswer`, as an interrupted sleep (-1) or a completed one (0).
std::atomic<bool> catchSleeps { false };
struct timespec caughtRequest {
};
int sleepAnswer = 0;
} // namespace

extern "C" int nanosleep(const struct timespec* request, struct timespec* remaining)
{
    if (!catchSleeps)
        return int(syscall(SYS_nanosleep, request, remaining));
    caughtRequest = *request;
    if (sleepAnswer != 0)
        errno = EINTR;
    return sleepAnswer;
}

namespace
{
// The texts of the recorded boxes; one that is not a critical "Zusettings" box
// with an OK button is marked.
QStringList texts(const Dialogs::Recorder& recorder)
{
    QStringList texts;
    for (const Dialogs::Shown& box : recorder.shown) {
        const bool critical = box.title == "Zusettings" && box.icon == QMessageBox::Critical
            && box.buttons == QMessageBox::Ok;
        texts << (critical ? box.text : "unexpected box: " + box.text);
    }
    return texts;
}
} // namespace

class tst_tabdlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void failureDialogs_data();
    void failureDialogs();
    void sleep_data();
    void sleep();
    void pageTimer();
    void pictures();
};

void tst_tabdlg::failureDialogs_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("where");
    QTest::addColumn<QString>("text"); // what the page shows
    QTest::addColumn<bool>("silentWithoutPage"); // showErr lets it pass

    const auto libraryText
        = [](int code) { return QString::fromLatin1(Korvane::GetErrorStringA(Korvane::eErr(code))); };
    QTest::newRow("success") << 0 << QByteArray("setIntensity") << QString() << true;
    QTest::newRow("not supported") << 2 << QByteArray("setBaudrate CAN1")
                                   << "Error(2) in setBaudrate CAN1: " + libraryText(2) << true;
    // The placeholders are filled one after another, so a label that itself
    // holds a placeholder receives the library's text.
    QTest::newRow("label with a placeholder")
        << 7 << QByteArray("set%1") << "Error(7) in set" + libraryText(7) + ": %3" << false;
}

void tst_tabdlg::failureDialogs()
{
    QFETCH(int, code);
    QFETCH(QByteArray, where);
    QFETCH(QString, text);
    QFETCH(bool, silentWithoutPage);

    const QStringList expected = code == 0 ? QStringList() : QStringList { text };
    tabDlg page(nullptr);
    {
        Dialogs::Recorder recorder;
        page.showError(Korvane::eErr(code), where.constData());
        // A ready-made text is shown as it stands, placeholders and all.
        page.showError(text);
        QCOMPARE(texts(recorder), expected + QStringList { text });
    }
    Dialogs::Recorder recorder;
    showErr(Korvane::eErr(code), where.constData());
    QCOMPARE(texts(recorder), silentWithoutPage ? QStringList() : expected);
}

void tst_tabdlg::sleep_data()
{
    QTest::addColumn<unsigned long>("milliseconds");
    QTest::addColumn<int>("answer");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<qint64>("nanoseconds");
    QTest::addColumn<bool>("completed");

    // Without the remainder the nanoseconds are out of range and nanosleep
    // refuses; a wrong unit sleeps far too long or short.
    QTest::newRow("2500 ms") << 2500ul << 0 << qint64(2) << qint64(500000000) << true;
    QTest::newRow("interrupted") << 10ul << -1 << qint64(0) << qint64(10000000) << false;
}

void tst_tabdlg::sleep()
{
    QFETCH(unsigned long, milliseconds);
    QFETCH(int, answer);

    sleepAnswer = answer;
    catchSleeps = true;
    const bool completed = OSSleep(milliseconds);
    catchSleeps = false;
    QTEST(qint64(caughtRequest.tv_sec), "seconds");
    QTEST(qint64(caughtRequest.tv_nsec), "nanoseconds");
    QTEST(completed, "completed");
}

namespace
{
class PollingPage : public tabDlg
{
public:
    void tick() { ++ticks; }
    int ticks = 0;
};
} // namespace

// The timer follows the page's showing, also after the page stopped it.
void tst_tabdlg::pageTimer()
{
    PollingPage page;
    auto* timer = new PageTimer(&page, 250, &PollingPage::tick);
    QVERIFY(!timer->isActive());
    page.show();
    QVERIFY(timer->isActive());
    QVERIFY(QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection));
    QCOMPARE(page.ticks, 1);
    timer->stop();
    page.hide();
    QVERIFY(!timer->isActive());
    page.show();
    QVERIFY(timer->isActive());
    page.hide();
    QVERIFY(!timer->isActive());
}

// Every PNG picture of the resources comes decoded with the program, with the
// pixels Qt's PNG reader gives.
void tst_tabdlg::pictures()
{
    QStringList resources;
    QDirIterator files(QStringLiteral(":/ZuSettings/Resources"), { QStringLiteral("*.png") });
    while (files.hasNext())
        resources << files.next();
    resources.sort();
    QStringList table;
    for (int i = 0; i < predecodedPictureCount; ++i)
        table << QString::fromLatin1(predecodedPictures[i].path);
    QCOMPARE(table, resources);
    for (int i = 0; i < predecodedPictureCount; ++i) {
        const QString& path = resources.at(i);
        QImageReader reader(path, "png");
        const QImage decoded = QPixmap::fromImage(reader.read()).toImage();
        const QImage shown = readPicture(path).toImage();
        QVERIFY2(!decoded.isNull() && shown == decoded, qPrintable(path));
        // Drawn from the table itself, not from a copy of it.
        QVERIFY2(shown.constBits() == reinterpret_cast<const uchar*>(predecodedPictures[i].argb),
            qPrintable(path));
    }
}

QTEST_MAIN(tst_tabdlg)
#include "tst_tabdlg.moc"
