#include "dialogs/Dialogs.h"

#include "hwsupport/ErrorReport.h"

#include <QApplication>
#include <QCloseEvent>
#include <QColorDialog>
#include <QFileDialog>
#include <QMouseEvent>
#include <QPointer>
#include <QProcess>
#include <QProgressDialog>

#include <cstdio>

namespace Dialogs
{

namespace
{
Recorder* recorder = nullptr;
bool closed = false; // by closeAll(), until reopen()
int openDialogs = 0;

// Follows the mouse press the user holds, to end it when a dialog takes the
// input away from the pressed control.
class PressWatch : public QObject
{
public:
    using QObject::QObject;

    // A dialog opens: the press is cut off, and the control's timers (the
    // auto-repeat of a slider or spin box) wait.
    void interrupt()
    {
        if (m_widget)
            m_cut = true;
    }

    // The dialog has gone: the control gets the release it missed, posted so
    // that it arrives after the handler that opened the dialog has returned
    // (a slider arms its auto-repeat only then). The release lies outside the
    // control, so that a button is not clicked by it.
    void releaseCut()
    {
        if (!m_cut || !m_widget || m_releasePosted)
            return;
        m_releasePosted = true;
        const QPointF outside(-1, -1);
        QCoreApplication::postEvent(m_widget,
            new QMouseEvent(QEvent::MouseButtonRelease, outside, m_widget->mapToGlobal(outside), m_button,
                Qt::NoButton, Qt::NoModifier));
    }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            // A press travels up from the widget under the mouse until one
            // takes it; the last widget to see it is the one that holds it.
            if (receiver->isWidgetType()) {
                m_widget = static_cast<QWidget*>(receiver);
                m_button = static_cast<QMouseEvent*>(event)->button();
                m_cut = m_releasePosted = false;
            }
            break;
        case QEvent::MouseButtonRelease:
            if (receiver == m_widget) {
                m_widget = nullptr;
                m_cut = m_releasePosted = false;
            }
            break;
        case QEvent::Timer:
            return m_cut && receiver == m_widget;
        default:
            break;
        }
        return false;
    }

private:
    QPointer<QWidget> m_widget;
    Qt::MouseButton m_button = Qt::NoButton;
    bool m_cut = false;
    bool m_releasePosted = false;
};

QPointer<PressWatch> watch;

// One dialog of the seam on show, recorded or real.
class Showing
{
public:
    Showing()
    {
        ++openDialogs;
        if (watch)
            watch->interrupt();
    }
    ~Showing()
    {
        --openDialogs;
        if (watch)
            watch->releaseCut();
    }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;
};

// A dialog is not shown over another one, nor while the program is closing;
// what it would have said goes to stderr.
bool refused(const QString& what)
{
    if (openDialogs == 0 && !closed)
        return false;
    std::fprintf(stderr, "%s\n", what.toLocal8Bit().constData());
    return true;
}

QMessageBox::StandardButton firstButton(QMessageBox::StandardButtons buttons)
{
    for (unsigned bit = QMessageBox::FirstButton; bit <= QMessageBox::LastButton; bit <<= 1) {
        if (buttons.testFlag(static_cast<QMessageBox::StandardButton>(bit)))
            return static_cast<QMessageBox::StandardButton>(bit);
    }
    return QMessageBox::NoButton;
}

bool haveWidgets()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

// Where the dialog layer is linked, failed setters in a sequence are told in a
// box (or recorded) like every other message.
void presentError(const QString& text)
{
    message(nullptr, QMessageBox::Critical, QStringLiteral("Zusettings"), text);
}
const bool presenterInstalled = (setErrorPresenter(presentError), true);
} // namespace

// The next scripted answer of the living Recorder, or what a user who only
// confirms would give.
struct Answers {
    static QMessageBox::StandardButton button(QMessageBox::StandardButtons offered)
    {
        return recorder->m_buttons.isEmpty() ? firstButton(offered) : recorder->m_buttons.takeFirst();
    }
    static QString fileName()
    {
        return recorder->m_fileNames.isEmpty() ? QString() : recorder->m_fileNames.takeFirst();
    }
    static QColor colour()
    {
        return recorder->m_colours.isEmpty() ? QColor() : recorder->m_colours.takeFirst();
    }
};

QMessageBox::StandardButton message(QWidget* parent, QMessageBox::Icon icon, const QString& title,
    const QString& text, QMessageBox::StandardButtons buttons)
{
    if (!recorder && !haveWidgets()) {
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
        return firstButton(buttons);
    }
    if (refused(text))
        return QMessageBox::NoButton;
    const Showing showing;
    if (recorder) {
        recorder->shown.append({ title, text, icon, buttons });
        return Answers::button(buttons);
    }
    // On the heap: the parent page may go while the box is open.
    QPointer<QMessageBox> box = new QMessageBox(icon, title, text, buttons, parent);
    const int answer = box->exec();
    delete box;
    return static_cast<QMessageBox::StandardButton>(answer);
}

namespace
{
// A file chooser: recorded and answered from the script while a Recorder
// lives, else `choose` (one of QFileDialog's static choosers).
using Chooser
    = QString (*)(QWidget*, const QString&, const QString&, const QString&, QString*, QFileDialog::Options);
QString fileName(
    Chooser choose, QWidget* parent, const QString& caption, const QString& dir, const QString& filter)
{
    if (refused(caption))
        return QString();
    const Showing showing;
    if (recorder) {
        recorder->fileRequests.append(caption);
        recorder->fileDirectories.append(dir);
        return Answers::fileName();
    }
    return choose(parent, caption, dir, filter, nullptr, QFileDialog::Options());
}
} // namespace

QString saveFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter)
{
    return fileName(&QFileDialog::getSaveFileName, parent, caption, dir, filter);
}

QString openFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter)
{
    return fileName(&QFileDialog::getOpenFileName, parent, caption, dir, filter);
}

QColor color(const QColor& initial, QWidget* parent, const QString& title)
{
    if (refused(title))
        return QColor();
    const Showing showing;
    if (recorder) {
        ++recorder->colorRequests;
        return Answers::colour();
    }
    return QColorDialog::getColor(initial, parent, title);
}

void watchPresses()
{
    if (watch || !haveWidgets())
        return;
    watch = new PressWatch(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(watch);
}

void closeAll()
{
    closed = true;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* dialog = qobject_cast<QDialog*>(window);
        if (dialog && dialog->isVisible() && dialog->isModal())
            dialog->done(QDialog::Rejected);
    }
}

void reopen()
{
    closed = false;
}

bool startDetached(const QString& program, const QStringList& arguments)
{
    const QString command = QStringList(QStringList { program } + arguments).join(QLatin1Char(' '));
    if (recorder) {
        recorder->started.append(command);
        return true;
    }
#ifdef ZUSETTINGS_SIMULATED_UNIT
    if (program == QLatin1String("sudo")) {
        std::fprintf(
            stderr, "zusettings: not run on the simulated unit: %s\n", command.toLocal8Bit().constData());
        return true;
    }
#endif
    return QProcess::startDetached(program, arguments);
}

namespace
{
// The work under a progress dialog cannot be stopped half-way: the dialog
// stays until the work resets it, whatever Escape or the window manager ask.
class SteadyProgressDialog : public QProgressDialog
{
public:
    using QProgressDialog::QProgressDialog;
    void reject() override { }

protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};
} // namespace

Progress::Progress(QWidget* parent, const QString& title, const QString& label, int minimum, int maximum)
{
    if (recorder) {
        recorder->progress.append(
            QStringLiteral("open %1: %2 (%3..%4)").arg(title, label).arg(minimum).arg(maximum));
        return;
    }
    m_dialog = std::make_unique<SteadyProgressDialog>(label, QString(), minimum, maximum, parent);
    m_dialog->setCancelButton(nullptr);
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setAutoReset(false);
    m_dialog->setMinimumDuration(0);
    m_dialog->setWindowTitle(title);
}

Progress::~Progress()
{
    if (!m_dialog && recorder)
        recorder->progress.append(QStringLiteral("close"));
}

void Progress::setValue(int value)
{
    if (m_dialog)
        m_dialog->setValue(value);
    else if (recorder)
        recorder->progress.append(QStringLiteral("value %1").arg(value));
}

void Progress::setLabelText(const QString& text)
{
    if (m_dialog)
        m_dialog->setLabelText(text);
    else if (recorder)
        recorder->progress.append(QStringLiteral("label ") + text);
}

void Progress::reset()
{
    if (m_dialog)
        m_dialog->reset();
    else if (recorder)
        recorder->progress.append(QStringLiteral("reset"));
}

Recorder::Recorder()
{
    Q_ASSERT(!recorder);
    recorder = this;
}

Recorder::~Recorder()
{
    recorder = nullptr;
}

void Recorder::answer(QMessageBox::StandardButton button)
{
    m_buttons.append(button);
}

void Recorder::answerFileName(const QString& name)
{
    m_fileNames.append(name);
}

void Recorder::answerColor(const QColor& colour)
{
    m_colours.append(colour);
}

QStringList Recorder::texts() const
{
    QStringList result;
    for (const Shown& s : shown)
        result.append(s.text);
    return result;
}

} // namespace Dialogs
