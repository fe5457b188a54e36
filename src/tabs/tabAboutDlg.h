// The About page: identity, diagnostics, voltages, battery or the whole
// system report of the unit, shown as text and savable to a file.
#ifndef TABABOUTDLG_H
#define TABABOUTDLG_H

#include "tabs/tabDlg.h"

#include <memory>

class Ui_tabAbout;

class QShowEvent;

class tabAboutDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabAboutDlg(QWidget* parent = nullptr);
    ~tabAboutDlg() override;

public slots:
    void selectionIndexChanged(int index);
    void SaveFileAs();

protected:
    // The view is built when an entry is chosen, not when the page is shown.
    void showEvent(QShowEvent* event) override;

private:
    std::unique_ptr<Ui_tabAbout> ui;
    // False while the combo box is being filled, so its change signals do
    // not build views.
    bool initialised;
};

#endif // TABABOUTDLG_H
