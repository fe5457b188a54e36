// How a failed library call is told: the message text, and the report of a
// setter in a sequence that goes on after a failure. Without a presenter (the
// windowless modes) the message is one line on stderr; the dialog layer
// installs one that shows a message box.
#ifndef HWSUPPORT_ERRORREPORT_H
#define HWSUPPORT_ERRORREPORT_H

#include "zuaux2.h"

#include <QString>

// "Error(<err>) in <where>: <library text>"
QString errorText(Korvane::eErr err, const char* where);

// Presents errorText(err, where) unless err is 0, or 2 (a setting the unit lacks).
void showErr(Korvane::eErr err, const char* where);

// Receives the texts showErr presents; null restores the stderr line.
using ErrorPresenter = void (*)(const QString& text);
void setErrorPresenter(ErrorPresenter presenter);

#endif // HWSUPPORT_ERRORREPORT_H
