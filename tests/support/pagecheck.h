// Table-driven page tests. A row's steps run in order on the simulated unit
// and on a new page:
//   "Buzzer/Volume=60"       a value of the simulated unit
//   "Buzzer_setTrigger=7"    the result code an operation answers
//   "sliderVol.value=20"     a property set as the user would
//   "buttonOn.click"         a slot invoked ("tabBuzzer.show", ".hide", a timer slot)
//   "Dialogs.color=#ff8832"  the colour the next colour chooser answers
// Then the traced calls that match a pattern, the listed properties
// ("object.property=value"; the page by its object name, its polling timer as
// "timer") and the texts of the error boxes must be as the row says.
#ifndef PAGECHECK_H
#define PAGECHECK_H

#include <QStringList>
#include <QtTest>

#include <functional>

using Steps = QStringList;

// Runs the table that `addRows` fills with QTest::newRow() << steps << calls
// << state << errors. Every row starts on a reset unit with a page from
// `makePage`, runs `common` and its steps, and compares the calls that match
// `callPattern` (a regular expression anchored at the start of a trace line).
int runPageTest(int argc, char** argv, const std::function<QWidget*()>& makePage, const QString& callPattern,
    const Steps& common, void (*addRows)());

// The text of the error box for a failed call.
QString errorBox(int code, const QString& where);

#endif // PAGECHECK_H
