// The "Heater" page: the internal temperature below which the unit heats
// before it starts, entered in degrees Celsius or Fahrenheit.
#ifndef TABSYSCONFDLG_H
#define TABSYSCONFDLG_H

#include "tabs/PageSupport.h"

#include <memory>

class Ui_tabSysConf;

class tabSysConfDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabSysConfDlg(QWidget* parent = nullptr);
    ~tabSysConfDlg() override;

public slots:
    void UpdateFahrenheit();
    void UpdateCelsius();
    void ApplyClicked();

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::unique_ptr<Ui_tabSysConf> ui;
    ConfigRef m_config;
    FrontLEDRef m_frontLED; // held as the unit's own settings program holds it
};

#endif // TABSYSCONFDLG_H
