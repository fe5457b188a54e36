#include "tabDlg.h"

#include "Dialogs.h"

#include <cerrno>
#include <ctime>

tabDlg::tabDlg(QWidget* parent)
    : QDialog(parent, Qt::WindowFlags())
    , m_caption(QStringLiteral("Zusettings"))
{
}

QString errorText(Korvane::eErr err, const char* where)
{
    // Filled one placeholder after another, as the message has always been built.
    return QStringLiteral("Error(%1) in %2: %3")
        .arg(static_cast<int>(err))
        .arg(QString::fromLatin1(where))
        .arg(QString::fromLatin1(Korvane::GetErrorStringA(err)));
}

void tabDlg::showError(Korvane::eErr err, const char* where)
{
    if (err == Korvane::ERR_SUCCESS)
        return;
    Dialogs::message(this, QMessageBox::Critical, m_caption, errorText(err, where));
}

void tabDlg::showError(QString text)
{
    Dialogs::message(this, QMessageBox::Critical, m_caption, text);
}

void showErr(Korvane::eErr err, const char* where)
{
    if (err == Korvane::ERR_SUCCESS || err == Korvane::ERR_NOT_SUPPORTED)
        return;
    Dialogs::message(nullptr, QMessageBox::Critical, QStringLiteral("Zusettings"), errorText(err, where));
}

bool OSSleep(unsigned long milliseconds)
{
    struct timespec request;
    request.tv_sec = static_cast<time_t>(milliseconds / 1000);
    request.tv_nsec = static_cast<long>((milliseconds % 1000) * 1000000UL);
    return nanosleep(&request, nullptr) == 0;
}
