// Shared helpers of the report and page tests.
//
// Table-driven page tests: a row's steps run in order on the simulated unit
// and on a new page:
//   "Buzzer/Volume=60"       a value of the simulated unit
//   "Buzzer_setTrigger=7"    the result code an operation answers
//   "sliderVol.value=20"     a property set as the user would
//   "buttonOn.click"         a slot invoked ("tabBuzzer.show", ".hide", a timer slot)
//   "Dialogs.color=#ff8832"  the colour the next colour chooser answers
//   "Dialogs.answer=No"      the button the next message box answers
//   "Dialogs.file=/tmp/a"    the name the next file chooser answers
//   "build"                  the steps before it set up the unit, and the page
//                            is built after them, its calls compared too
//                            (otherwise it is built first, and its calls are not)
// Then the traced calls that match a pattern, the listed properties
// ("object.property=value"; the page by its object name, its polling timer as
// "timer", a combo box's item texts as "items" joined by " | ", "(gone)" for
// an object the page no longer has) and the texts of the message boxes must
// be as the row says. What
// the dialogs recorded is listed joined by " | ": "Dialogs.started" the
// detached commands, "Dialogs.titles" the titles of the boxes,
// "Dialogs.folders" the folders the file choosers started in,
// "Dialogs.progress" the first two and last four steps of the progress
// dialogs (the polls in between depend on timing). Every object a table
// names is looked up on a new page before any row runs.
#ifndef PAGECHECK_H
#define PAGECHECK_H

#include "dialogs/Dialogs.h"

#include <QStringList>
#include <QtTest>

#include <functional>

using Steps = QStringList;

// One row of a page test; what a row leaves out it expects to be empty.
struct Scenario {
    Steps steps {}; // what happens, in order
    Steps calls {}; // the traced calls that match the test's pattern
    Steps state {}; // "object.property=value" as the page holds it afterwards
    Steps boxes {}; // the texts of the message boxes shown
};
Q_DECLARE_METATYPE(Scenario)

// Adds a row to the table of runPageTest().
void row(const QString& name, const Scenario& row);

// Runs the table that `addRows` fills with row(), then the test object `more`
// if one is given. Every row starts on a reset unit with a page from
// `makePage`, runs `common` and its steps, and compares the calls that match
// `callPattern` (a regular expression anchored at the start of a trace line).
int runPageTest(int argc, char** argv, const std::function<QWidget*()>& makePage, const QString& callPattern,
    const Steps& common, void (*addRows)(), QObject* more = nullptr);

// Fails when a top-level widget is left: nothing a test opened may outlive it.
void checkNoWindowLeft();

// One step of a row, on `page`; dialogs are answered by `recorder`.
void act(QWidget& page, Dialogs::Recorder& recorder, const QString& step);

// "object.property=value" with the value the page holds now, for the
// "object.property=value" `expected`.
QString stateOf(const QWidget& page, const QString& expected);

// "Family/Key=value": the unit reports exactly this value from now on, live
// readings included; "Operation=code": that operation answers the code.
void change(const QString& setting);

// What comes before the first ':' of every non-empty line (the whole line
// when it has none), in order.
QStringList labels(const QString& text);

#endif // PAGECHECK_H
