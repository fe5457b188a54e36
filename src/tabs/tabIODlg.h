// The "I/O" page: the mode, frequency threshold and live reading of the two
// configurable inputs, and the duty cycle and frequency of the chosen PWM
// output with the fault state of both, refreshed every 500 ms while shown.
#ifndef TABIODLG_H
#define TABIODLG_H

#include "tabs/PageSupport.h"

#include <memory>
#include <tuple>

class QComboBox;
class Ui_tabIO;

class tabIODlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabIODlg(QWidget* parent = nullptr);
    ~tabIODlg() override;

    // The slots named after their control are connected by name by the form.
public slots:
    void updatePWMOutStatus();
    void on_comboBoxCI_1_currentIndexChanged(int index);
    void on_comboBoxCI_2_currentIndexChanged(int index);
    void on_checkBox_PWM1_clicked(bool checked);
    void on_checkBox_PWM2_clicked(bool checked);
    void on_sliderDC_valueChanged(int value);
    void on_sliderHZ_valueChanged(int value);
    void on_pwmOffButton_clicked();
    void on_doubleSpinBox1_valueChanged(double hertz);
    void on_doubleSpinBox2_valueChanged(double hertz);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void populateCombobox(QComboBox* combo);
    void setCfgInMode(int input, Korvane::CfgInModeEnum mode);
    void setThreshold(int input, double hertz);
    void selectChannel(uint8_t channel);
    // An input's mode, the code of its reading, the reading (the value, or
    // the frequency's bits) and the duty cycle of a frequency.
    using Reading = std::tuple<int, int, uint32_t, int>;
    void updateMeasurement(int input);
    static QString measurementText(const Reading& reading);
    void getCurrentDutyCycle();
    void getCurrentPWMFreq();
    void getCurrentPWMConfiguration();

    std::unique_ptr<Ui_tabIO> ui;
    CfgInRef m_inputs;
    PWMOutRef m_pwm;
    PageTimer* m_refreshTimer = nullptr;
    uint8_t m_channel = 1;
    uint8_t m_dutyCycle = 0;
    float m_frequency = 0;
    // The fault mask the pictures show; none before the first reading.
    int m_faults = -1;
    ReadingText<uint8_t> m_dutyText;
    ReadingText<uint32_t> m_frequencyText;
    ReadingText<Reading> m_measurementText[2];
    // Off while the page is built: the controls it sets from the unit write nothing.
    bool m_ready = false;
};

#endif // TABIODLG_H
