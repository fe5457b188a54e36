// The "Button backlight" page: blink signal, intensity, repetition and
// start-up lighting of the front LED that backlights the buttons.
#ifndef TABLEDDLG_H
#define TABLEDDLG_H

#include "tabs/PageSupport.h"

#include <memory>

#include <cstdint>

class Ui_tabLED;

class tabLEDDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabLEDDlg(QWidget* parent);
    ~tabLEDDlg() override;

public slots:
    void buttonOffClicked();
    void dropDownColorIndexChanged(int index);
    void freqDutyCValueChanged(int value);
    void pulsesValueChanged(int pulses);
    void idleTimeValueChanged(int milliseconds);
    void checkEnableLedOnStart(bool checked);
    void buttonColorpickClicked();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void UpdateCustomColor();
    Korvane::eErr writeSignal();
    void switchedOn();

    std::unique_ptr<Ui_tabLED> ui;
    FrontLEDRef m_led;
    bool m_ready = false;
    bool m_ledOn = false;
    Korvane::ZuAuxColor m_customColor = { 0, 0, 0 };
};

#endif // TABLEDDLG_H
