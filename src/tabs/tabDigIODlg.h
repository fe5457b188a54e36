// The "Digital I/O" page: the four digital inputs, polled every 250 ms while
// shown, and the four digital outputs, written as a mask when one is clicked.
#ifndef TABDIGIODLG_H
#define TABDIGIODLG_H

#include "tabs/PageSupport.h"

#include <memory>

class Ui_tabDigIO;

class tabDigIODlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabDigIODlg(QWidget* parent = nullptr);
    ~tabDigIODlg() override;

public slots:
    void updateIOValues();
    void doclicked(bool checked);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void dropOutputs();

    std::unique_ptr<Ui_tabDigIO> ui;
    DigIORef m_digIO;
    static constexpr int updateIntervalMs = 250;
    PageTimer* m_updateTimer;
    // The input mask the boxes show; the form's boxes start unchecked.
    uint8_t m_inputs = 0;
};

#endif // TABDIGIODLG_H
