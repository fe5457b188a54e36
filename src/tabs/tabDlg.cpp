#include "tabs/tabDlg.h"

#include "dialogs/Dialogs.h"

#include <QLayout>

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
    // so while it has no children, it is never moved again.
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

void tabDlg::layOutWhenShown()
{
    for (QLayout* layout : findChildren<QLayout*>())
        layout->setEnabled(false);
    m_layoutHeld = true;
}

void tabDlg::setVisible(bool visible)
{
    // Showing lays out every layout enabled again, this page's first.
    if (visible && m_layoutHeld) {
        m_layoutHeld = false;
        for (QLayout* layout : findChildren<QLayout*>())
            layout->setEnabled(true);
    }
    QDialog::setVisible(visible);
}
