// Table-driven page tests. A scenario is a list of steps, run in order on
// the simulated unit and on one page, followed by what must be seen:
//   "Buzzer/Volume=60"          a value of the simulated unit
//   "Buzzer_setTrigger=7"       the result code an operation answers
//   "sliderVol.value=20"        a control property set as the user would
//   "buttonOn.click"            a slot invoked ("tabBuzzer.show", ".hide",
//                               a page's timer slot)
// Expected properties are written "object.property=value"; the page is
// addressed by its object name and its polling timer as "timer".
#ifndef PAGECHECK_H
#define PAGECHECK_H

#include "Dialogs.h"

#include <QStringList>

class QWidget;

// Adds the columns "steps", "calls", "state" and "errors" to a _data table.
void addScenarioColumns();

// Runs `common` and then the current row's steps on `page`, and compares the
// trace lines that start with `callPrefix`, the listed properties, and the
// error boxes.
void runScenario(
    QWidget& page, const Dialogs::Recorder& recorder, const QString& callPrefix, const QStringList& common);

// The text of the error box for a failed call.
QString errorBox(int code, const QString& where);

#endif // PAGECHECK_H
