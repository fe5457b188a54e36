// The "CAN" page: baud rate and frame type of each CAN net the unit answers
// for, written by Apply.
#ifndef TABCANDLG_H
#define TABCANDLG_H

#include "tabs/PageSupport.h"

#include <memory>

class Ui_tabCan;

class tabCanDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabCanDlg(QWidget* parent = nullptr);
    ~tabCanDlg() override;

public slots:
    void buttonApplyClicked();
    void deviceIndexChanged(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void AddDevices();
    void updateCanNet(int net);
    void applyCanNet(int net);

    std::unique_ptr<Ui_tabCan> ui;
    CanSettingRef m_can;
    // Until the first net is listed the page has nothing to show or write.
    bool m_noNets = true;
    int m_nets = 2;
};

#endif // TABCANDLG_H
