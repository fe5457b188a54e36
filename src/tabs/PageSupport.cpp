#include "tabs/PageSupport.h"

#include <QAbstractButton>
#include <QEvent>

bool acceptRead(
    tabDlg* page, Korvane::eErr err, const char* where, std::initializer_list<QWidget*> hideWhenMissing)
{
    if (err == Korvane::ERR_SUCCESS)
        return true;
    if (err == Korvane::ERR_NOT_SUPPORTED) {
        for (QWidget* widget : hideWhenMissing)
            widget->hide();
        return false;
    }
    page->showError(err, where);
    return false;
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
