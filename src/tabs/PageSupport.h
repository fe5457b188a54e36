// What the settings pages have in common beyond tabDlg: the library handles a
// page holds for its whole life, the usual way of taking a getter's result,
// and the On/Off caption of a checkable switch.
#ifndef PAGESUPPORT_H
#define PAGESUPPORT_H

#include "hwsupport/HwHandle.h"
#include "tabs/tabDlg.h"

#include <initializer_list>

class QAbstractButton;
class QWidget;

// Takes the result of a read: true when the value may be shown. Code 2 (the
// unit lacks the setting) hides `hideWhenMissing` without a word; any other
// failure is reported on `page` as `where`.
bool acceptRead(
    tabDlg* page, Korvane::eErr err, const char* where, std::initializer_list<QWidget*> hideWhenMissing = {});

// What a field shows instead of a value it could not read: "<where>: Error: "
// and the library's text, joined by one more blank.
QString fieldError(const char* where, Korvane::eErr err);

// Checks or unchecks a switch button and captions it "On" or "Off" to match.
void showSwitch(QAbstractButton* button, bool on);

#endif // PAGESUPPORT_H
