// The one place where the application opens modal dialogs (message boxes,
// file and colour choosers). Tests switch it to recording with a
// Dialogs::Recorder, so that nothing blocks in exec() and every box can be
// checked for its exact title, text, icon and buttons.
//
// A modal dialog takes the user's input from the window beneath it, so it ends
// the mouse press that led to it: the pressed control gets its release (outside
// itself, so that nothing is clicked) once the dialog is gone, and its timers
// wait until then. A slider or spin box therefore does not go on stepping,
// writing and reporting behind the dialog, and one press gives one dialog.
// Only one dialog is open at a time: a box asked for while another is open
// (by a polling timer, say) is not stacked on it; its text goes to stderr.
#ifndef DIALOGS_H
#define DIALOGS_H

#include <QColor>
#include <QList>
#include <QMessageBox>
#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

namespace Dialogs
{

struct Shown {
    QString title;
    QString text;
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
};

// Shows a modal message box and returns the button that closed it. Without a
// widget application (the command-line modes) the text goes to stderr as one
// line and the first of `buttons` is returned. A box that is not shown because
// another dialog is open, or that is closed by closeAll(), answers NoButton.
QMessageBox::StandardButton message(QWidget* parent, QMessageBox::Icon icon, const QString& title,
    const QString& text, QMessageBox::StandardButtons buttons = QMessageBox::Ok);

// QFileDialog::getSaveFileName; an empty result means cancelled.
QString saveFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter);
// QFileDialog::getOpenFileName; an empty result means cancelled.
QString openFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter);
// QColorDialog::getColor; an invalid colour means cancelled.
QColor color(const QColor& initial, QWidget* parent, const QString& title);

// Starts following mouse presses, so that a dialog can end the one it
// interrupts. Every page calls it when it is built; calls after the first do
// nothing.
void watchPresses();

// For leaving the program: closes the dialog that is open, unanswered, and
// shows none until reopen(); their texts go to stderr.
void closeAll();
void reopen();
// QProcess::startDetached: starts `program` without waiting for it; true when
// it started. Built for the simulated unit, a "sudo" command is only printed on
// stderr: off the unit nothing may ask for a password or act as root.
bool startDetached(const QString& program, const QStringList& arguments);

// An application-modal progress dialog without a cancel button, for work that
// runs on the GUI thread and lets events through itself. It shows at once,
// does not reset itself at the maximum and closes on reset(), and only then:
// Escape and close requests leave it open.
class Progress
{
public:
    Progress(QWidget* parent, const QString& title, const QString& label, int minimum, int maximum);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void setValue(int value);
    void setLabelText(const QString& text);
    void reset();

private:
    std::unique_ptr<QProgressDialog> m_dialog; // none while recorded
};

// While a Recorder lives, dialogs are recorded instead of shown, and answered
// from its scripts: a message box takes the next queued button, or the first
// of its buttons when none is queued; a file chooser takes the next queued
// name, or "" (cancelled); a colour chooser the next queued colour, or an
// invalid one. Recorders do not nest.
class Recorder
{
public:
    Recorder();
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    QList<Shown> shown; // message boxes, in the order shown
    QStringList fileRequests; // captions of the file choosers asked
    QStringList fileDirectories; // the folder each file chooser starts in
    int colorRequests = 0;
    QStringList started; // detached commands, program and arguments joined by blanks
    // What progress dialogs went through: "open <title>: <label> (<min>..<max>)",
    // then "value <n>", "label <text>", "reset" and "close".
    QStringList progress;

    void answer(QMessageBox::StandardButton button);
    void answerFileName(const QString& name);
    void answerColor(const QColor& colour);

    // The texts of the recorded boxes, for compact assertions.
    QStringList texts() const;

private:
    friend struct Answers; // the dialogs take the scripted answers in order
    QList<QMessageBox::StandardButton> m_buttons;
    QStringList m_fileNames;
    QList<QColor> m_colours;
};

} // namespace Dialogs

#endif // DIALOGS_H
