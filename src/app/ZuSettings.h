// The one top-level window: the menu page and one page per feature, of which
// one is on show at a time.
#ifndef ZUSETTINGS_H
#define ZUSETTINGS_H

#include "app/tabMenuDlg.h"
#include "zuaux2.h"

#include <QMainWindow>

class QVBoxLayout;
class Ui_ZuSettingsClass;
struct PageRow;

class ZuSettings : public QMainWindow
{
    Q_OBJECT
public:
    explicit ZuSettings(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~ZuSettings() override;

    // Registers `page` under `index`, replacing any earlier entry there (the
    // earlier page stays in the layout, hidden).
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
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    // Registers the page of `row`, or greys its button and registers a plain
    // page in its place.
    void offer(tabMenuDlg& menu, const PageRow& row, bool present);

    Ui_ZuSettingsClass* ui;
    tabDlg* pages[tabMenuDlg::tabCount] = {};
    QVBoxLayout* pageLayout;
    int current = tabMenuDlg::MENU;
    Korvane::AboutHandle about;
};

// The application's style sheet, compiled in.
QString applicationStyleSheet();

#endif // ZUSETTINGS_H
