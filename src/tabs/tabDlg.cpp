#include "tabs/tabDlg.h"

#include "dialogs/Dialogs.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <utility>

// The images and the style sheet are compiled into the pages' static library,
// where nothing would refer to their registration; every page and the menu
// derive from tabDlg, so they are registered wherever a page can be built.
static int registerResources()
{
    Q_INIT_RESOURCE(ZuSettings);
    return 0;
}
static const int resourcesRegistered = registerResources();

tabDlg::tabDlg(QWidget* parent)
    : QDialog(parent, Qt::WindowFlags())
    , m_caption(QStringLiteral("Zusettings"))
{
    // A page with a parent lives inside it, not in a window of its own; made
    // so while it has no children, it stays so when the main window later
    // moves it from where it was built into its page layout.
    if (parent)
        setWindowFlags(windowFlags() & ~Qt::WindowType_Mask);
    Dialogs::watchPresses();
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

// Every widget asks to be polished when the event loop next runs after it is
// made, and showing a window polishes every widget inside it, hidden or not,
// parents before their children. Installed on a held page and each of its
// widgets, this takes those polish requests and gives them back, in their
// order, when the page is first shown.
class HeldPolish : public QObject
{
public:
    explicit HeldPolish(tabDlg* page)
        : QObject(page)
    {
        page->installEventFilter(this);
        for (QWidget* widget : page->findChildren<QWidget*>())
            widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Polish)
            return false;
        m_asked.append(static_cast<QWidget*>(watched));
        return true;
    }

    // Polishes what was asked for meanwhile; the filter goes with the object.
    void release()
    {
        const QList<QPointer<QWidget>> asked = std::move(m_asked);
        delete this;
        for (QWidget* widget : asked) {
            if (widget) {
                QEvent polish(QEvent::Polish);
                QCoreApplication::sendEvent(widget, &polish);
            }
        }
    }

private:
    QList<QPointer<QWidget>> m_asked;
};

void tabDlg::holdUntilShown()
{
    if (!m_held)
        m_held = new HeldPolish(this);
}

void tabDlg::setVisible(bool visible)
{
    if (visible && m_held)
        std::exchange(m_held, nullptr)->release();
    QDialog::setVisible(visible);
}
