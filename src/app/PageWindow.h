// One page alone in a window of the main window's size and style, titled as
// the main window titles its pages: how tools show a page the menu does not
// offer.
#ifndef PAGEWINDOW_H
#define PAGEWINDOW_H

#include <QMainWindow>

class tabDlg;

class PageWindow : public QMainWindow
{
    Q_OBJECT
public:
    // Takes `page` over.
    explicit PageWindow(tabDlg* page);

    tabDlg* page() const { return m_page; }

private:
    tabDlg* m_page;
};

#endif // PAGEWINDOW_H
