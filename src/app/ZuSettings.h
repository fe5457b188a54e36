// The one top-level window: the menu page and one page per feature, of which
// one is on show at a time.
#ifndef ZUSETTINGS_H
#define ZUSETTINGS_H

#include "app/tabMenuDlg.h"
#include "hwsupport/HwHandle.h"

#include <QMainWindow>

#include <memory>

class QVBoxLayout;
class Ui_ZuSettingsClass;
struct PageRow;

class ZuSettings : public QMainWindow
{
    Q_OBJECT
public:
    explicit ZuSettings(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~ZuSettings() override;

    // Registers `page`, hidden, under `index`, replacing any earlier entry
    // there (the earlier page stays, hidden). A page joins the page layout
    // when it is first shown.
    void addTab(tabDlg* page, tabMenuDlg::eTab index);

    // The page registered under `index`, or null.
    tabDlg* page(int index) const;
    tabMenuDlg* menu() const;
    int currentTab() const { return current; }

public slots:
    // Shows the page registered under `index`; nothing happens when there is none.
    void showTab(int index);
    void menuClicked();
    void exit();

protected:
    // Escape acts on its release, and only on the release of a press that
    // reached this window: not on one whose press closed a message box or a
    // popup, and not on the releases of a key held down. It is the window's
    // key wherever the focus is, so it never reaches a page.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    // Leaving the program closes a dialog still open and shows no more.
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // Registers the page of `row`, or greys its button and registers a plain
    // page in its place.
    void offer(tabMenuDlg& menu, const PageRow& row, bool present);

    std::unique_ptr<Ui_ZuSettingsClass> ui;
    // The parent of the pages not yet shown: never shown itself, and without
    // the window's style sheet.
    QWidget unplaced;
    tabDlg* pages[tabMenuDlg::tabCount] = {};
    QVBoxLayout* pageLayout;
    int current = tabMenuDlg::MENU;
    bool escapePressed = false;
    AboutRef about;
};

// The application's style sheet, compiled in.
QString applicationStyleSheet();

// Makes bold Arial of 14 pixels the application's font and returns `parent`:
// for a window's base class, so that the font is set before the window's
// first widget exists. A widget made earlier keeps the platform's font until
// the style sheet gives it the application's when it is polished, and lays
// out and measures its text with the wrong one until then. Every widget, box
// and popup made afterwards starts with the font and none is given it again.
QWidget* withApplicationFont(QWidget* parent = nullptr);

#endif // ZUSETTINGS_H
