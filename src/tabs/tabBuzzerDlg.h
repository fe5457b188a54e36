// The "Buzzer" page: frequency, volume and on/off of the unit's buzzer, each
// written as soon as it changes.
#ifndef TABBUZZERDLG_H
#define TABBUZZERDLG_H

#include "PageSupport.h"
#include "ui_tabBuzzerDlg.h"

class tabBuzzerDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabBuzzerDlg(QWidget* parent);

public slots:
    void buttonOnToggled(bool on);
    void sliderFreqChanged(int value);
    void sliderVolChanged(int value);

protected:
    void showEvent(QShowEvent* event) override;

private:
    Ui_tabBuzzer ui;
    BuzzerRef m_buzzer;
};

#endif // TABBUZZERDLG_H
