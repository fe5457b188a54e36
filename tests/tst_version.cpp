#include "pagecheck.h"
#include "simunit.h"
#include "tabs/tabVersionDlg.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <memory>

class tst_version : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { checkNoWindowLeft(); }
    void row_data();
    void row();
};

void tst_version::row_data()
{
    QTest::addColumn<QString>("name"); // of the getter, the value, the field and its label
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fieldShown");
    QTest::addColumn<bool>("labelShown");

    const auto libraryText
        = [](int code) { return QString::fromLatin1(Korvane::GetErrorStringA(Korvane::eErr(code))); };
    // Component, another failure, and what result 2 (component absent) hides.
    for (const char* row :
        { "FPGA 6 row", "SS 8 field", "Front 7 row", "ZuAux 3 nothing", "ZuAuxDrv 18 row", "OS 6 nothing" }) {
        const QStringList part = QString::fromLatin1(row).split(' ');
        const QString name = part[0];
        const int failure = part[1].toInt();
        // The prefix ends in a blank and the template adds one.
        const QString error = QStringLiteral("get%1Version: Error:  ").arg(name);
        QTest::addRow("%s read", qPrintable(name)) << name << 0 << "v3.10.0.255" << true << true;
        QTest::addRow("%s absent", qPrintable(name))
            << name << 2 << (part[2] == "nothing" ? error + libraryText(2) : QString())
            << (part[2] == "nothing") << (part[2] != "row");
        QTest::addRow("%s failing", qPrintable(name))
            << name << failure << error + libraryText(failure) << true << true;
    }
}

void tst_version::row()
{
    QFETCH(QString, name);
    QFETCH(int, code);
    QFETCH(QString, text);
    QFETCH(bool, fieldShown);
    QFETCH(bool, labelShown);

    resetUnit("full");
    ZuAuxSim::setValue("AuxVersion/" + name + "Version", "3.10.0.255");
    if (code != 0)
        ZuAuxSim::forceCode("AuxVersion_get" + name + "Version", code);
    auto page = std::make_unique<tabVersionDlg>();
    page->show();

    auto* field = page->findChild<QLineEdit*>("edit" + name);
    auto* label = page->findChild<QLabel*>("label" + name);
    QVERIFY(field && field->isReadOnly());
    QCOMPARE(field->text(), text);
    QCOMPARE(field->isVisible(), fieldShown);
    QCOMPARE(label->isVisible(), labelShown);
    QCOMPARE(page->findChild<QLineEdit*>("editZuSettings")->text(), QString("v2.7.5.0"));
    // Only the row concerned changes: every other field is still filled.
    for (QLineEdit* other : page->findChildren<QLineEdit*>()) {
        if (other != field)
            QVERIFY2(other->isVisible() && other->text().startsWith('v'), qPrintable(other->objectName()));
    }

    // Shown again, the page reads again, but a hidden row stays hidden.
    ZuAuxSim::clearCodes();
    page->hide();
    page->show();
    QCOMPARE(field->text(), QString("v3.10.0.255"));
    QCOMPARE(field->isVisible(), fieldShown);
    QCOMPARE(label->isVisible(), labelShown);
    // One handle for the page's life.
    QCOMPARE(callsTo("GetAuxVersion").size(), 1);
    page.reset();
    QCOMPARE(callsTo("AuxVersion_release").size(), 1);
}

QTEST_MAIN(tst_version)
#include "tst_version.moc"
