#include "hwsupport/ErrorReport.h"

#include <cstdio>

namespace
{
ErrorPresenter presenter = nullptr;
} // namespace

QString errorText(Korvane::eErr err, const char* where)
{
    // Filled one placeholder after another, as the message has always been built.
    return QStringLiteral("Error(%1) in %2: %3")
        .arg(static_cast<int>(err))
        .arg(QString::fromLatin1(where))
        .arg(QString::fromLatin1(Korvane::GetErrorStringA(err)));
}

void showErr(Korvane::eErr err, const char* where)
{
    if (err == Korvane::ERR_SUCCESS || err == Korvane::ERR_NOT_SUPPORTED)
        return;
    const QString text = errorText(err, where);
    if (presenter)
        presenter(text);
    else
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

void setErrorPresenter(ErrorPresenter newPresenter)
{
    presenter = newPresenter;
}
