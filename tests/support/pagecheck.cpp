#include "pagecheck.h"

#include "simunit.h"
#include "zuaux2.h"

#include <QTimer>
#include <QWidget>
#include <QtTest>

namespace
{
QObject* target(const QWidget& page, const QString& name)
{
    QObject* found = nullptr;
    if (name == page.objectName())
        found = const_cast<QWidget*>(&page);
    else if (name == QLatin1String("timer"))
        found = page.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    else
        found = page.findChild<QObject*>(name);
    if (!found)
        qFatal("the page has no %s", qPrintable(name));
    return found;
}

void act(QWidget& page, const QString& step)
{
    const QString name = step.section(QLatin1Char('='), 0, 0);
    const QString value = step.section(QLatin1Char('='), 1);
    const QString object = name.section(QLatin1Char('.'), 0, 0);
    const QByteArray member = name.section(QLatin1Char('.'), 1).toLatin1();
    bool done = true;
    if (member.isEmpty() && name.contains(QLatin1Char('/')))
        ZuAuxSim::setValue(name, value);
    else if (member.isEmpty())
        ZuAuxSim::forceCode(name, value.toInt());
    else if (!step.contains(QLatin1Char('=')))
        done = QMetaObject::invokeMethod(target(page, object), member.constData());
    else
        done = target(page, object)->setProperty(member.constData(), value);
    if (!done)
        qFatal("cannot do %s", qPrintable(step));
}

QStringList propertiesOf(const QWidget& page, const QStringList& expected)
{
    QStringList actual;
    for (const QString& entry : expected) {
        const QString path = entry.section(QLatin1Char('='), 0, 0);
        const QByteArray property = path.section(QLatin1Char('.'), 1).toLatin1();
        const QVariant value
            = target(page, path.section(QLatin1Char('.'), 0, 0))->property(property.constData());
        if (!value.isValid())
            qFatal("no property %s", qPrintable(path));
        actual.append(path + QLatin1Char('=') + value.toString());
    }
    return actual;
}

// A box that is not a page error box (title "Zusettings", critical icon, OK
// button) is marked so that it shows in a comparison.
QStringList shownErrors(const Dialogs::Recorder& recorder)
{
    QStringList result;
    for (const Dialogs::Shown& box : recorder.shown) {
        const bool pageStyle = box.title == QLatin1String("Zusettings") && box.icon == QMessageBox::Critical
            && box.buttons == QMessageBox::Ok;
        result.append(pageStyle
                ? box.text
                : QStringLiteral("[%1, icon %2] %3").arg(box.title).arg(box.icon).arg(box.text));
    }
    return result;
}
} // namespace

void addScenarioColumns()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QStringList>("state");
    QTest::addColumn<QStringList>("errors");
}

void runScenario(
    QWidget& page, const Dialogs::Recorder& recorder, const QString& callPrefix, const QStringList& common)
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, calls);
    QFETCH(QStringList, state);
    QFETCH(QStringList, errors);

    ZuAuxSim::clearTrace();
    for (const QString& step : common + steps)
        act(page, step);
    QCOMPARE(callsTo(callPrefix), calls);
    QCOMPARE(propertiesOf(page, state), state);
    QCOMPARE(shownErrors(recorder), errors);
}

QString errorBox(int code, const QString& where)
{
    return QStringLiteral("Error(%1) in %2: %3")
        .arg(code)
        .arg(where)
        .arg(QString::fromLatin1(Korvane::GetErrorStringA(static_cast<Korvane::eErr>(code))));
}
