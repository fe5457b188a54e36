#include "simunit.h"
#include "tabVersionDlg.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace
{
QString libraryText(Korvane::eErr code)
{
    return QString::fromLatin1(Korvane::GetErrorStringA(code));
}

struct Shown {
    tabVersionDlg* page;
    Shown()
        : page(new tabVersionDlg(nullptr))
    {
        page->show();
    }
    ~Shown() { delete page; }
    QLineEdit* field(const QString& name) const { return page->findChild<QLineEdit*>(name); }
    QLabel* label(const QString& text) const
    {
        for (QLabel* l : page->findChildren<QLabel*>()) {
            if (l->text() == text)
                return l;
        }
        return nullptr;
    }
};
} // namespace

class TestVersion : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { ZuAuxSim::clearCodes(); }

    void row_data();
    void row();
    void ownVersionNeverFails();
    void eachShowReadsAgain();
    void hiddenRowsStayHidden();
};

void TestVersion::row_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fieldShown");
    QTest::addColumn<bool>("labelShown");

    struct Row {
        const char* name;
        const char* field;
        const char* label;
        const char* prefix;
        bool hideField; // on 2
        bool hideLabel; // on 2
    };
    const Row rows[] = {
        { "FPGA", "editFPGA", "FPGA:", "getFPGAVersion: Error: ", true, true },
        { "SS", "editSS", "System Supervisor:", "getSSVersion: Error: ", true, false },
        { "Front", "editFront", "Front controller:", "getFrontVersion: Error: ", true, true },
        { "ZuAux", "editZuAux", "Zuaux API:", "getZuAuxVersion: Error: ", false, false },
        { "ZuAuxDrv", "editZuAuxDrv", "Zuaux Driver:", "getZuAuxDrvVersion: Error: ", true, true },
        { "OS", "editOS", "OS version:", "getOSVersion: Error: ", false, false },
    };
    for (const Row& r : rows) {
        const QString op = QStringLiteral("AuxVersion_get%1Version").arg(r.name);
        const QString key = QStringLiteral("AuxVersion/%1Version").arg(r.name);
        const QString prefix = QString::fromLatin1(r.prefix);
        QTest::addRow("%s read", r.name)
            << op << key << r.field << r.label << 0 << "v3.10.0.255" << true << true;
        QTest::addRow("%s absent", r.name)
            << op << key << r.field << r.label << 2
            << (r.hideField ? QString() : prefix + " " + libraryText(Korvane::ERR_NOT_SUPPORTED))
            << !r.hideField << !r.hideLabel;
        QTest::addRow("%s timeout", r.name)
            << op << key << r.field << r.label << 6 << prefix + " " + libraryText(Korvane::ERR_TIMEOUT)
            << true << true;
        QTest::addRow("%s checksum", r.name)
            << op << key << r.field << r.label << 8 << prefix + " " + libraryText(Korvane::ERR_CHECKSUM)
            << true << true;
    }
}

void TestVersion::row()
{
    QFETCH(QString, operation);
    QFETCH(QString, key);
    QFETCH(QString, field);
    QFETCH(QString, label);
    QFETCH(int, code);
    QFETCH(QString, text);
    QFETCH(bool, fieldShown);
    QFETCH(bool, labelShown);

    resetUnit("full");
    ZuAuxSim::setValue(key, "3.10.0.255");
    if (code != 0)
        ZuAuxSim::forceCode(operation, code);
    Shown shown;

    QLineEdit* edit = shown.field(field);
    QVERIFY(edit);
    QVERIFY(edit->isReadOnly());
    QCOMPARE(edit->text(), text);
    QCOMPARE(edit->isVisible(), fieldShown);
    QLabel* caption = shown.label(label);
    QVERIFY2(caption, qPrintable(label));
    QCOMPARE(caption->isVisible(), labelShown);
    // Only the row concerned changes: every other field is still filled.
    for (QLineEdit* other : shown.page->findChildren<QLineEdit*>()) {
        if (other != edit)
            QVERIFY2(other->isVisible() && other->text().startsWith('v'), qPrintable(other->objectName()));
    }
}

void TestVersion::ownVersionNeverFails()
{
    resetUnit("unsupported");
    ZuAuxSim::forceCode("*", 7);
    Shown shown;
    QCOMPARE(shown.page->windowTitle(), QString("Version"));
    QCOMPARE(shown.field("editZuSettings")->text(), QString("v2.7.5.0"));
    QCOMPARE(
        shown.field("editOS")->text(), "getOSVersion: Error:  " + libraryText(Korvane::ERR_COMMUNICATION));
}

void TestVersion::eachShowReadsAgain()
{
    resetUnit("full");
    Shown shown;
    const QStringList getters
        = { "AuxVersion_getFPGAVersion", "AuxVersion_getSSVersion", "AuxVersion_getFrontVersion",
              "AuxVersion_getZuAuxVersion", "AuxVersion_getZuAuxDrvVersion", "AuxVersion_getOSVersion" };
    auto calls = [] {
        QStringList names;
        for (const QString& line : callsTo("AuxVersion_get"))
            names.append(line.section('(', 0, 0));
        return names;
    };
    QCOMPARE(calls(), getters);
    QCOMPARE(callsTo("GetAuxVersion").size(), 1);

    ZuAuxSim::setValue("AuxVersion/OSVersion", "5.10.0.7");
    shown.page->hide();
    shown.page->show();
    QCOMPARE(calls(), getters + getters);
    QCOMPARE(shown.field("editOS")->text(), QString("v5.10.0.7"));
    QCOMPARE(callsTo("GetAuxVersion").size(), 1);

    ZuAuxSim::clearTrace();
    delete shown.page;
    shown.page = nullptr;
    QCOMPARE(callsTo("AuxVersion_release").size(), 1);
}

void TestVersion::hiddenRowsStayHidden()
{
    resetUnit("full");
    ZuAuxSim::forceCode("AuxVersion_getFPGAVersion", 2);
    Shown shown;
    QVERIFY(!shown.field("editFPGA")->isVisible());

    ZuAuxSim::clearCodes();
    shown.page->hide();
    shown.page->show();
    QCOMPARE(shown.field("editFPGA")->text(), QString("v1.4.0.12"));
    QVERIFY(!shown.field("editFPGA")->isVisible());
    QVERIFY(!shown.label("FPGA:")->isVisible());
}

QTEST_MAIN(TestVersion)
#include "tst_version.moc"
