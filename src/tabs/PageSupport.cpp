#include "tabs/PageSupport.h"

#include <QAbstractButton>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

namespace
{
// What the read policy does, apart from where a failure goes: Failed is left
// to the caller to report.
Read classify(Korvane::eErr err, std::initializer_list<QWidget*> hide, Missing missing)
{
    if (err == Korvane::ERR_SUCCESS)
        return Read::Value;
    if (err != Korvane::ERR_NOT_SUPPORTED || missing == Missing::Report)
        return Read::Failed;
    if (missing == Missing::HideControls) {
        hideMissing(hide);
    } else {
        for (QWidget* widget : hide)
            widget->hide();
    }
    return Read::Missing;
}
} // namespace

Read takeRead(
    tabDlg* page, Korvane::eErr err, const char* where, std::initializer_list<QWidget*> hide, Missing missing)
{
    const Read read = classify(err, hide, missing);
    if (read == Read::Failed)
        page->showError(err, where);
    return read;
}

Read takeReadInField(QLineEdit* field, Korvane::eErr err, const char* where,
    std::initializer_list<QWidget*> hide, Missing missing)
{
    const Read read = classify(err, hide, missing);
    if (read == Read::Failed)
        field->setText(fieldError(where, err));
    else if (read == Read::Missing)
        field->clear();
    return read;
}

void hideMissing(std::initializer_list<QWidget*> widgets)
{
    for (QWidget* widget : widgets) {
        if (widget->isHidden())
            continue;
        widget->hide();
        QWidget* container = widget->parentWidget();
        if (!container)
            continue;
        for (QLabel* label : container->findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
            if (label->buddy() == widget)
                label->hide();
        }
        auto* group = qobject_cast<QGroupBox*>(container);
        const QList<QWidget*> inGroup = container->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        if (group && std::all_of(inGroup.begin(), inGroup.end(), [](QWidget* w) { return w->isHidden(); }))
            group->hide();
    }
}

QString fieldError(const char* where, Korvane::eErr err)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(where) + QLatin1String(": Error: "),
        QString::fromLatin1(Korvane::GetErrorStringA(err)));
}

bool PageTimer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent()) {
        if (event->type() == QEvent::Show)
            start();
        else if (event->type() == QEvent::Hide)
            stop();
    }
    return QTimer::eventFilter(watched, event);
}

void showSwitch(QAbstractButton* button, bool on)
{
    button->setChecked(on);
    button->setText(on ? QStringLiteral("On") : QStringLiteral("Off"));
}
