#include "PageSupport.h"

#include <QAbstractButton>

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

void showSwitch(QAbstractButton* button, bool on)
{
    button->setChecked(on);
    button->setText(on ? QStringLiteral("On") : QStringLiteral("Off"));
}
