#include "pagecheck.h"

#include "dialogs/Dialogs.h"
#include "simunit.h"

#include <QApplication>
#include <QComboBox>
#include <QRegularExpression>
#include <QTimer>
#include <QWidget>

#include <memory>

namespace
{

// The object a step or an expectation names: the page by its object name,
// its polling timer as "timer", anything else by object name; null if none.
QObject* target(const QWidget& page, const QString& name)
{
    if (name == page.objectName())
        return const_cast<QWidget*>(&page);
    if (name == QLatin1String("timer"))
        return page.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    return page.findChild<QObject*>(name);
}

// The object a step on the page or an expectation names, if it is one.
QString objectOf(const QString& entry)
{
    const QString name = entry.section(QLatin1Char('='), 0, 0);
    if (!name.contains(QLatin1Char('.')) || name.startsWith(QLatin1String("Dialogs.")))
        return QString();
    return name.section(QLatin1Char('.'), 0, 0);
}

// One step on `page`, which is null before the page is built.
void actOn(const QWidget* page, Dialogs::Recorder& recorder, const QString& step)
{
    QObject* object = nullptr;
    if (!objectOf(step).isEmpty() && !(page && (object = target(*page, objectOf(step)))))
        qFatal("cannot do %s: no such object", qPrintable(step));
    const QString name = step.section(QLatin1Char('='), 0, 0);
    const QString value = step.section(QLatin1Char('='), 1);
    const QByteArray member = name.section(QLatin1Char('.'), 1).toLatin1();
    bool done = true;
    if (name == QLatin1String("Dialogs.color"))
        recorder.answerColor(QColor(value));
    else if (name == QLatin1String("Dialogs.answer"))
        recorder.answer(static_cast<QMessageBox::StandardButton>(
            QMetaEnum::fromType<QMessageBox::StandardButtons>().keyToValue(value.toLatin1().constData())));
    else if (name == QLatin1String("Dialogs.file"))
        recorder.answerFileName(value);
    else if (member.isEmpty() && name.contains(QLatin1Char('/')))
        ZuAuxSim::setValue(name, value); // not held: the page's own writes must show
    else if (member.isEmpty())
        ZuAuxSim::forceCode(name, value.toInt());
    else if (!step.contains(QLatin1Char('=')))
        done = QMetaObject::invokeMethod(object, member.constData());
    else
        done = object->setProperty(member.constData(), value);
    if (!done)
        qFatal("cannot do %s", qPrintable(step));
}

} // namespace

void act(QWidget& page, Dialogs::Recorder& recorder, const QString& step)
{
    actOn(&page, recorder, step);
}

QString stateOf(const QWidget& page, const QString& expected)
{
    const QString path = expected.section(QLatin1Char('='), 0, 0);
    const QByteArray property = path.section(QLatin1Char('.'), 1).toLatin1();
    const QObject* object = target(page, objectOf(expected));
    QString value = QStringLiteral("(gone)");
    if (const auto* combo = qobject_cast<const QComboBox*>(object); combo && property == "items") {
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items << combo->itemText(i);
        value = items.join(QLatin1String(" | "));
    } else if (object) {
        value = object->property(property.constData()).toString();
    }
    return path + QLatin1Char('=') + value;
}

namespace
{

QStringList recorded(const Dialogs::Recorder& recorder, const QString& name)
{
    if (name == QLatin1String("Dialogs.started"))
        return recorder.started;
    if (name == QLatin1String("Dialogs.folders"))
        return recorder.fileDirectories;
    if (name == QLatin1String("Dialogs.titles")) {
        QStringList titles;
        for (const Dialogs::Shown& shown : recorder.shown)
            titles.append(shown.title);
        return titles;
    }
    if (name != QLatin1String("Dialogs.progress"))
        qFatal("nothing recorded as %s", qPrintable(name));
    const QStringList& steps = recorder.progress;
    return steps.size() <= 6 ? steps : steps.mid(0, 2) + steps.mid(steps.size() - 4);
}

// What runPageTest() was given, for the one test object it runs.
std::function<QWidget*()> makePage;
QRegularExpression callsToCompare;
Steps commonSteps;
QList<QPair<QString, Scenario>> table;

class tst_page : public QObject
{
    Q_OBJECT
private slots:
    // A misspelt object name shows here, for every row at once, instead of
    // ending the run in the middle of a row.
    void objectNames()
    {
        resetUnit(QStringLiteral("full"));
        Dialogs::Recorder recorder;
        const std::unique_ptr<QWidget> page(makePage());
        QStringList missing;
        for (const auto& [name, row] : std::as_const(table)) {
            const int built = row.steps.indexOf(QStringLiteral("build"));
            for (const QString& entry : commonSteps + row.steps.mid(built + 1) + row.state) {
                const QString object = objectOf(entry);
                if (!object.isEmpty() && !target(*page, object))
                    missing << name + QLatin1String(": ") + object;
            }
        }
        QVERIFY2(missing.isEmpty(),
            qPrintable(QLatin1String("no such object: ") + missing.join(QLatin1String(", "))));
    }

    void scenario_data()
    {
        QTest::addColumn<Scenario>("row");
        for (qsizetype i = 0; i < table.size(); ++i)
            QTest::newRow(qPrintable(table.at(i).first)) << table.at(i).second;
    }

    void scenario()
    {
        QFETCH(Scenario, row);

        resetUnit(QStringLiteral("full"));
        Dialogs::Recorder recorder; // outlives the page, which may report as it is hidden
        const int built = row.steps.indexOf(QStringLiteral("build"));
        for (const QString& step : built < 0 ? Steps() : row.steps.mid(0, built))
            actOn(nullptr, recorder, step);
        if (built >= 0)
            ZuAuxSim::clearTrace();
        const std::unique_ptr<QWidget> page(makePage());
        if (built < 0)
            ZuAuxSim::clearTrace();
        for (const QString& step : commonSteps + row.steps.mid(built + 1))
            act(*page, recorder, step);
        QCOMPARE(ZuAuxSim::trace().filter(callsToCompare), row.calls);
        QStringList actual;
        for (const QString& expected : std::as_const(row.state)) {
            const QString name = expected.section(QLatin1Char('='), 0, 0);
            actual.append(name.startsWith(QLatin1String("Dialogs."))
                    ? name + QLatin1Char('=') + recorded(recorder, name).join(QLatin1String(" | "))
                    : stateOf(*page, expected));
        }
        QCOMPARE(actual, row.state);
        QCOMPARE(recorder.texts(), row.boxes);
    }

    void cleanup() { checkNoWindowLeft(); }
};
} // namespace

void checkNoWindowLeft()
{
    QStringList left;
    for (const QWidget* widget : QApplication::topLevelWidgets())
        left << QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ')
                + widget->objectName();
    QVERIFY2(left.isEmpty(), qPrintable(QLatin1String("left behind: ") + left.join(QLatin1String(", "))));
}

void row(const QString& name, const Scenario& row)
{
    table.append({ name, row });
}

int runPageTest(int argc, char** argv, const std::function<QWidget*()>& pageMaker, const QString& callPattern,
    const Steps& common, void (*rows)(), QObject* more)
{
    QApplication app(argc, argv);
    makePage = pageMaker;
    callsToCompare.setPattern(QLatin1String("^(") + callPattern + QLatin1Char(')'));
    commonSteps = common;
    rows();
    tst_page test;
    const int failed = QTest::qExec(&test, argc, argv);
    return more ? failed + QTest::qExec(more, argc, argv) : failed;
}

void change(const QString& setting)
{
    const QString name = setting.section(QLatin1Char('='), 0, 0);
    const QString value = setting.section(QLatin1Char('='), 1);
    if (!name.contains(QLatin1Char('/'))) {
        ZuAuxSim::forceCode(name, value.toInt());
        return;
    }
    ZuAuxSim::setValue(name, value);
    ZuAuxSim::hold(name, value);
}

QStringList labels(const QString& text)
{
    QStringList result;
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        result << line.section(QLatin1Char(':'), 0, 0);
    return result;
}

#include "pagecheck.moc"
