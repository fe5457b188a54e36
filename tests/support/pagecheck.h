// Helpers for driving a settings page in tests.
#ifndef PAGECHECK_H
#define PAGECHECK_H

#include "Dialogs.h"
#include "zuaux2.h"

#include <QLatin1String>
#include <QStringList>
#include <QTimer>
#include <QWidget>

// The control `name` of `page`; a missing one means a broken form.
template <typename T> T* control(const QWidget& page, const char* name)
{
    T* found = page.findChild<T*>(QLatin1String(name));
    if (!found)
        qFatal("the page has no %s", name);
    return found;
}

// The one timer the page owns.
inline QTimer* pageTimer(const QWidget& page)
{
    const QList<QTimer*> timers = page.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    if (timers.size() != 1)
        qFatal("the page owns %d timers", static_cast<int>(timers.size()));
    return timers.first();
}

// The text of the error box for a failed call.
inline QString errorBox(int code, const QString& where)
{
    return QStringLiteral("Error(%1) in %2: %3")
        .arg(code)
        .arg(where)
        .arg(QString::fromLatin1(Korvane::GetErrorStringA(static_cast<Korvane::eErr>(code))));
}

// The recorded boxes as their texts; a box that is not a page error box
// (title "Zusettings", critical icon, OK button) is marked so that it shows
// in a comparison.
inline QStringList shownErrors(const Dialogs::Recorder& recorder)
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

#endif // PAGECHECK_H
