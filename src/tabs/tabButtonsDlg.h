// The "Buttons" page: the function of each front button, and which buttons
// are pressed right now, from the unit's key event device.
#ifndef TABBUTTONSDLG_H
#define TABBUTTONSDLG_H

#include "tabs/PageSupport.h"

#include <QIcon>
#include <QVector>

#include <memory>
#include <utility>

class QComboBox;
class QLabel;
class QSocketNotifier;
class Ui_tabButtons;

class tabButtonsDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabButtonsDlg(QWidget* parent = nullptr);
    ~tabButtonsDlg() override;

    // "/dev/input/event0", or the path ZUSETTINGS_INPUT_DEVICE names.
    static QString inputDevicePath();

public slots:
    void on_comboBox_B1_currentIndexChanged(int index);
    void on_comboBox_B2_currentIndexChanged(int index);
    void on_comboBox_B3_currentIndexChanged(int index);
    void on_comboBox_B4_currentIndexChanged(int index);
    void on_comboBox_B5_currentIndexChanged(int index);
    void on_comboBox_B6_currentIndexChanged(int index);
    void on_comboBox_B7_currentIndexChanged(int index);
    void on_comboBox_B8_currentIndexChanged(int index);
    void on_comboBox_B9_currentIndexChanged(int index);
    void on_comboBox_B10_currentIndexChanged(int index);
    void processButtonEvent();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void populateCombobox(QComboBox* combo);
    void getButtonConfig(unsigned char button);
    void setButtonConfig(unsigned char button, Korvane::ButtonConfigEnum value);
    void comboChanged(int combo, int index);
    void updateButtonStatus(int button, unsigned int value);
    bool openInputDevice();

    std::unique_ptr<Ui_tabButtons> ui;
    ConfigRef m_config;
    uint8_t m_buttonCount = 8;
    // Combo and picture of each button, by button number - 1.
    QVector<std::pair<QComboBox*, QLabel*>> m_buttons;
    // The combo entries' icons, in the entries' order.
    QVector<QIcon> m_icons;
    bool m_ready = false;
    int m_inputFd = -1;
    QSocketNotifier* m_notifier = nullptr;
};

#endif // TABBUTTONSDLG_H
