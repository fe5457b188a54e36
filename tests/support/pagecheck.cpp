#include "pagecheck.h"

#include "dialogs/Dialogs.h"
#include "simunit.h"
#include "zuaux2.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTimer>
#include <QWidget>

#include <memory>

namespace
{
QString libraryText(int code)
{
    return QString::fromLatin1(Korvane::GetErrorStringA(static_cast<Korvane::eErr>(code)));
}

QObject* target(const QWidget* page, const QString& name)
{
    if (!page)
        qFatal("%s is set before the page is built", qPrintable(name));
    QObject* found = nullptr;
    if (name == page->objectName())
        found = const_cast<QWidget*>(page);
    else if (name == QLatin1String("timer"))
        found = page->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    else
        found = page->findChild<QObject*>(name);
    if (!found)
        qFatal("the page has no %s", qPrintable(name));
    return found;
}

// One step on `page`, which is null before the page is built.
void actOn(const QWidget* page, Dialogs::Recorder& recorder, const QString& step)
{
    const QString name = step.section(QLatin1Char('='), 0, 0);
    const QString value = step.section(QLatin1Char('='), 1);
    const QString object = name.section(QLatin1Char('.'), 0, 0);
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
        done = QMetaObject::invokeMethod(target(page, object), member.constData());
    else
        done = target(page, object)->setProperty(member.constData(), value);
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
    const QVariant value = target(&page, path.section(QLatin1Char('.'), 0, 0))
                               ->property(path.section(QLatin1Char('.'), 1).toLatin1().constData());
    return path + QLatin1Char('=') + value.toString();
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
void (*addRows)();

class PageTest : public QObject
{
    Q_OBJECT
private slots:
    void scenario_data()
    {
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<Steps>("calls");
        QTest::addColumn<Steps>("state");
        QTest::addColumn<Steps>("errors");
        addRows();
    }

    void scenario()
    {
        QFETCH(Steps, steps);
        QFETCH(Steps, state);

        resetUnit(QStringLiteral("full"));
        Dialogs::Recorder recorder; // outlives the page, which may report as it is hidden
        const int built = steps.indexOf(QStringLiteral("build"));
        for (const QString& step : built < 0 ? Steps() : steps.mid(0, built))
            actOn(nullptr, recorder, step);
        if (built >= 0)
            ZuAuxSim::clearTrace();
        const std::unique_ptr<QWidget> page(makePage());
        if (built < 0)
            ZuAuxSim::clearTrace();
        for (const QString& step : commonSteps + steps.mid(built + 1))
            act(*page, recorder, step);
        QTEST(ZuAuxSim::trace().filter(callsToCompare), "calls");
        QStringList actual;
        for (const QString& expected : state) {
            const QString name = expected.section(QLatin1Char('='), 0, 0);
            actual.append(name.startsWith(QLatin1String("Dialogs."))
                    ? name + QLatin1Char('=') + recorded(recorder, name).join(QLatin1String(" | "))
                    : stateOf(*page, expected));
        }
        QCOMPARE(actual, state);
        QTEST(recorder.texts(), "errors");
    }
};
} // namespace

int runPageTest(int argc, char** argv, const std::function<QWidget*()>& pageMaker, const QString& callPattern,
    const Steps& common, void (*rows)())
{
    QApplication app(argc, argv);
    makePage = pageMaker;
    callsToCompare.setPattern(QLatin1String("^(") + callPattern + QLatin1Char(')'));
    commonSteps = common;
    addRows = rows;
    PageTest test;
    return QTest::qExec(&test, argc, argv);
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

QString libraryError(int code)
{
    return QStringLiteral("Error(%1) %2").arg(code).arg(libraryText(code));
}

QString errorBox(int code, const QString& where)
{
    return QStringLiteral("Error(%1) in %2: %3").arg(code).arg(where, libraryText(code));
}

QStringList labels(const QString& text)
{
    QStringList result;
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        result << line.section(QLatin1Char(':'), 0, 0);
    return result;
}

#include "pagecheck.moc"
