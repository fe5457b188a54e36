#include "dialogs/Dialogs.h"

#include "hwsupport/ErrorReport.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>

#include <cstdio>

namespace Dialogs {

namespace {
Recorder* recorder = nullptr;

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

QMessageBox::StandardButton message(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                    const QString& text, QMessageBox::StandardButtons buttons)
{
    if (recorder) {
        recorder->shown.append({title, text, icon, buttons});
        if (!recorder->buttonAnswers.isEmpty())
            return recorder->buttonAnswers.takeFirst();
        return firstButton(buttons);
    }
    if (!haveWidgets()) {
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
        return firstButton(buttons);
    }
    QMessageBox box(icon, title, text, buttons, parent);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QString saveFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter)
{
    if (recorder) {
        recorder->fileRequests.append(caption);
        return recorder->fileAnswers.isEmpty() ? QString() : recorder->fileAnswers.takeFirst();
    }
    return QFileDialog::getSaveFileName(parent, caption, dir, filter);
}

QString openFileName(QWidget* parent, const QString& caption, const QString& dir, const QString& filter)
{
    if (recorder) {
        recorder->fileRequests.append(caption);
        return recorder->fileAnswers.isEmpty() ? QString() : recorder->fileAnswers.takeFirst();
    }
    return QFileDialog::getOpenFileName(parent, caption, dir, filter);
}

QColor color(const QColor& initial, QWidget* parent, const QString& title)
{
    if (recorder) {
        ++recorder->colorRequests;
        return recorder->colorAnswers.isEmpty() ? QColor() : recorder->colorAnswers.takeFirst();
    }
    return QColorDialog::getColor(initial, parent, title);
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
    buttonAnswers.append(button);
}

void Recorder::answerFileName(const QString& name)
{
    fileAnswers.append(name);
}

void Recorder::answerColor(const QColor& colour)
{
    colorAnswers.append(colour);
}

QStringList Recorder::texts() const
{
    QStringList result;
    for (const Shown& s : shown)
        result.append(s.text);
    return result;
}

} // namespace Dialogs
