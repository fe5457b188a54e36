// The "Buttons" page on the simulated unit: the function of each button, the
// numbering of the combos on units with up to 8 and with more buttons, and
// the live key state from key records written into a real FIFO.
#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabButtonsDlg.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

#include <fcntl.h>
#include <linux/input.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

class tst_buttons : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void initTestCase();
    void keys_data();
    void keys();
    void device_data();
    void device();

private:
    QTemporaryDir m_dir;
    QString m_fifo;
};

namespace
{
QImage picture(const QString& file)
{
    return QPixmap(":/ZuSettings/Resources/" + file).toImage();
}

// Which buttons' pictures show a pressed button, by combo name.
QStringList pressed(const QWidget& page)
{
    QStringList names;
    for (int combo = 1; combo <= 10; ++combo) {
        const auto* label = page.findChild<QLabel*>(QStringLiteral("picture_B%1").arg(combo));
        if (label->pixmap().toImage() == picture(QStringLiteral("Buttons_small.png")))
            names << QStringLiteral("B%1").arg(combo);
    }
    return names;
}

// Builds the page on a unit with `count` buttons (a negative count: the query fails).
std::unique_ptr<tabButtonsDlg> buttonsPage(int count)
{
    resetUnit();
    if (count < 0)
        change(QStringLiteral("About_getNrOfButtons=7"));
    else
        ZuAuxSim::setValue(QStringLiteral("About/NrOfButtons"), count);
    auto page = std::make_unique<tabButtonsDlg>();
    ZuAuxSim::clearCodes();
    ZuAuxSim::clearTrace();
    return page;
}

struct Key {
    int type;
    int code;
    int value;
};

// Key records as the key device gives them, on this platform's layout.
QByteArray records(const QList<Key>& keys)
{
    QByteArray bytes;
    for (const Key& key : keys) {
        input_event record = {};
        record.type = static_cast<uint16_t>(key.type);
        record.code = static_cast<uint16_t>(key.code);
        record.value = key.value;
        bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
    }
    return bytes;
}

void write(const QString& fifo, const QByteArray& bytes)
{
    const int fd = ::open(QFile::encodeName(fifo).constData(), O_WRONLY | O_NONBLOCK);
    QVERIFY2(fd >= 0, "nobody reads the FIFO");
    QCOMPARE(::write(fd, bytes.constData(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(fd);
}

// The unit's buttons and their functions, one row per situation.
void scenarios()
{
    // Showing writes nothing back; 5 is no function and shows the first entry.
    row("10 buttons shown",
        { .steps = { "About/NrOfButtons=10", "build", "Config/ButtonFunction_3=6",
              "Config/ButtonFunction_2=5", "Config/ButtonFunction_10=14", "tabButtons.show" },
            .state = { "comboBox_B2.currentIndex=0", "comboBox_B3.currentIndex=3",
                "comboBox_B3.currentText=Startup & action trigger", "comboBox_B10.currentIndex=7",
                "comboBox_B5.visible=true", "comboBox_B3.count=8" } });
    row("10 buttons: B5 is button 5, B10 button 10",
        { .steps = { "About/NrOfButtons=10", "build", "tabButtons.show", "comboBox_B5.currentIndex=1",
              "comboBox_B10.currentIndex=4", "comboBox_B6.currentIndex=7" },
            .calls = { "Config_setButtonFunction(5, 2) -> 0", "Config_setButtonFunction(10, 8) -> 0",
                "Config_setButtonFunction(6, 14) -> 0" } });
    row("8 buttons: B6 is button 5, B5 and B10 out of use",
        { .steps = { "About/NrOfButtons=8", "build", "Config/ButtonFunction_5=2", "tabButtons.show",
              "comboBox_B6.currentIndex=4", "comboBox_B9.currentIndex=2", "comboBox_B5.currentIndex=1",
              "comboBox_B10.currentIndex=1" },
            .calls = { "Config_setButtonFunction(5, 8) -> 0", "Config_setButtonFunction(8, 4) -> 0" },
            .state
            = { "comboBox_B5.visible=false", "comboBox_B10.visible=false", "comboBox_B9.visible=true" } });
    row("count unknown: 8 buttons",
        { .steps = { "About/NrOfButtons=10", "About_getNrOfButtons=7", "build", "Config/ButtonFunction_5=12",
              "tabButtons.show", "comboBox_B4.currentIndex=1" },
            .calls = { "Config_setButtonFunction(4, 2) -> 0" },
            .state = { "comboBox_B6.currentIndex=6", "comboBox_B5.visible=false" } });
    row("3 buttons: the others out of view",
        { .steps = { "About/NrOfButtons=3", "build", "tabButtons.show" },
            .state
            = { "comboBox_B3.visible=true", "comboBox_B4.visible=false", "comboBox_B9.visible=false" } });
    // The user's choice stays on show although the unit refused it.
    row("refused for the start-up rule",
        { .steps = { "About/NrOfButtons=10", "build", "Config_setButtonFunction=34", "tabButtons.show",
              "comboBox_B2.currentIndex=4" },
            .calls = { "Config_setButtonFunction(2, 8) -> 34" },
            .state = { "comboBox_B2.currentIndex=4" },
            .boxes
            = { "Button Setting not allowed in combination with the Start-up trigger. Check On/Off tab - "
                "Unit start-up.\r\nIf the signal is not set as start-up trigger, at least one of the "
                "buttons must be." } });
    row("refused otherwise",
        { .steps = { "About/NrOfButtons=10", "build", "Config_setButtonFunction=15", "tabButtons.show",
              "comboBox_B3.currentIndex=3" },
            .calls = { "Config_setButtonFunction(3, 6) -> 15" },
            .boxes = { "Error(15) in Config_setButtonFuntion - button #3, function 6: Access denied" } });
    // All eight combos are read, whatever the count.
    Steps unreadable;
    for (int button = 1; button <= 8; ++button)
        unreadable << QStringLiteral(
            "Error(7) in Config_getButtonFunction - button #%1: Communication with the "
            "controller failed")
                          .arg(button);
    row("unreadable functions",
        { .steps = { "About/NrOfButtons=3", "build", "Config_getButtonFunction=7", "tabButtons.show" },
            .state = { "comboBox_B1.visible=true" },
            .boxes = unreadable });
}
} // namespace

void tst_buttons::initTestCase()
{
    // The images come from a static library that nothing else here calls into.
    Q_INIT_RESOURCE(ZuSettings);
    QVERIFY(!picture(QStringLiteral("Buttons_small.png")).isNull());
    m_fifo = m_dir.filePath(QStringLiteral("event0"));
    QCOMPARE(mkfifo(QFile::encodeName(m_fifo).constData(), 0600), 0);
    qputenv("ZUSETTINGS_INPUT_DEVICE", QFile::encodeName(m_fifo));
}

// The key records of F1..F10 light the picture of the button's combo while
// the button is down; other records, and buttons the unit lacks, change
// nothing. A key record of button 1 closes each row, so that the row knows
// every record before it has been taken.
void tst_buttons::keys_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<Key>>("keys");
    QTest::addColumn<QStringList>("pressed");

    const Key end { EV_KEY, KEY_F1, 1 };
    QTest::newRow("10 buttons: F5 is B5, F9 held, F10 is B10")
        << 10 << QList<Key> { { EV_KEY, KEY_F5, 1 }, { EV_KEY, KEY_F9, 2 }, { EV_KEY, KEY_F10, 1 }, end }
        << QStringList { "B1", "B5", "B9", "B10" };
    QTest::newRow("released again") << 10 << QList<Key> { { EV_KEY, KEY_F3, 1 }, { EV_KEY, KEY_F3, 0 }, end }
                                    << QStringList { "B1" };
    QTest::newRow("8 buttons: F5 is B6, F8 is B9, no F9 or F10")
        << 8
        << QList<Key> { { EV_KEY, KEY_F5, 1 }, { EV_KEY, KEY_F8, 1 }, { EV_KEY, KEY_F9, 1 },
               { EV_KEY, KEY_F10, 1 }, end }
        << QStringList { "B1", "B6", "B9" };
}

void tst_buttons::keys()
{
    QFETCH(int, count);
    QFETCH(QList<Key>, keys);

    Dialogs::Recorder recorder;
    const auto page = buttonsPage(count);
    page->show();
    QVERIFY(pressed(*page).isEmpty());
    write(m_fifo, records(keys));
    QTRY_VERIFY_WITH_TIMEOUT(pressed(*page).contains(QLatin1String("B1")), 2000);
    QTEST(pressed(*page), "pressed");
    QCOMPARE(recorder.texts(), QStringList());
}

// What the page says about its device: a missing one once, a short record
// each time; and a FIFO whose writer went away is read again from the next.
void tst_buttons::device_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("boxes");

    QTest::newRow("missing device") << m_dir.filePath(QStringLiteral("missing")) << QByteArray()
                                    << QStringList {
                                           "Failed to open input device No such file or directory"
                                       };
    QTest::newRow("short record") << m_fifo << QByteArray(10, '\0')
                                  << QStringList { "Unexpected leght read 10" };
    QTest::newRow("writer gone, next writer") << m_fifo << QByteArray() << QStringList();
}

void tst_buttons::device()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, bytes);

    Dialogs::Recorder recorder;
    qputenv("ZUSETTINGS_INPUT_DEVICE", QFile::encodeName(path));
    const auto page = buttonsPage(10);
    qputenv("ZUSETTINGS_INPUT_DEVICE", QFile::encodeName(m_fifo));
    page->show();
    if (path == m_fifo) {
        if (!bytes.isEmpty()) {
            write(m_fifo, bytes);
            QTRY_VERIFY_WITH_TIMEOUT(!recorder.shown.isEmpty(), 2000);
        }
        write(m_fifo, records({ { EV_KEY, KEY_F2, 1 } }));
        QTRY_COMPARE_WITH_TIMEOUT(pressed(*page), QStringList { "B2" }, 2000);
        write(m_fifo, records({ { EV_KEY, KEY_F2, 0 }, { EV_KEY, KEY_F4, 1 } }));
        QTRY_COMPARE_WITH_TIMEOUT(pressed(*page), QStringList { "B4" }, 2000);
    }
    QTEST(recorder.texts(), "boxes");
}

Q_DECLARE_METATYPE(Key)

// The page's table first, then the key device.
int main(int argc, char** argv)
{
    tst_buttons keys;
    return runPageTest(
        argc, argv, [] { return new tabButtonsDlg(nullptr); }, QStringLiteral("Config_setButtonFunction"), {},
        scenarios, &keys);
}

#include "tst_buttons.moc"
