// The "Buzzer" page: frequency, volume and on/off of the unit's buzzer, each
// written as soon as it changes.
#ifndef TABBUZZERDLG_H
#define TABBUZZERDLG_H

#include "tabs/PageSupport.h"

#include <memory>

class Ui_tabBuzzer;

class tabBuzzerDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabBuzzerDlg(QWidget* parent);
    ~tabBuzzerDlg() override;

public slots:
    void buttonOnToggled(bool on);
    void sliderFreqChanged(int value);
    void sliderVolChanged(int value);

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::unique_ptr<Ui_tabBuzzer> ui;
    BuzzerRef m_buzzer;
};

#endif // TABBUZZERDLG_H
