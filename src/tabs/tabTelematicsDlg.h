// The "Telematics" page: power now and at start-up of the add-on board's
// GSM/GPRS modem, WLAN, Bluetooth and GPS receiver, the serial device paths
// of the modem and the receiver, and two sub-pages that talk to them: the GPS
// data (decoded or raw, read by a MyGPSThread) and the modem console.
//
// Sub-pages of interfaces the unit lacks are removed when the page is built.
// Entering the GPS sub-page (index 1) opens the receiver's port and starts the
// reader thread; leaving it stops the thread, which closes the port. Entering
// the modem sub-page (index 2) opens the modem's port; leaving it closes it.
// The indices are those of the form, also after a sub-page was removed.
#ifndef TABTELEMATICSDLG_H
#define TABTELEMATICSDLG_H

#include "tabs/PageSupport.h"
#include "telematics/serial.h"

#include <memory>

class GsmConsole;
class QCheckBox;
class QLineEdit;
class MyGPSThread;
class Ui_tabTelematics;

// True while the GPS sub-page shows the decoded values, false while it shows
// the raw stream. GUI thread only.
extern bool bRaw;

class tabTelematicsDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabTelematicsDlg(QWidget* parent = nullptr);
    // Stores the device paths and closes the modem port. The reader thread is
    // told to stop and waited for; it closes the receiver's port itself.
    ~tabTelematicsDlg() override;

    // Reads power now and at start-up of every fitted interface into the boxes.
    void ReadAllData();
    // Decoded values (true) or the raw stream (false) on the GPS sub-page.
    void ChangeGPSGui(bool decoded);
    // Open serial_dev_gsm / serial_dev_gps on the path in their line edit.
    void InitGsmSerialPort();
    void InitGpsSerialPort();

public slots:
    void GPRSClicked(bool on);
    void GPRS_StartupClicked(bool on);
    void WLANClicked(bool on);
    void WLAN_StartupClicked(bool on);
    void BTClicked(bool on);
    void BT_StartupClicked(bool on);
    void GPSClicked(bool on);
    void GPS_StartupClicked(bool on);
    void TabChanged(int index);
    void GPSModeClicked();

    void GetNetworkStatusClicked();
    void GetPinStatusClicked();
    void HangUpClicked(); // no control of the page drives it
    void SetPinClicked();
    void CallClicked();
    void CustomExecClicked();

protected:
    void showEvent(QShowEvent* event) override;

private:
    // The interfaces, in the order of the operation table.
    enum Radio { Gprs, Wlan, Bt, Gps, radioCount };

    QCheckBox* powerBox(Radio radio) const;
    QCheckBox* startUpBox(Radio radio) const;
    void setPower(Radio radio, bool on);
    void setStartUp(Radio radio, bool on);
    serial_t* openPort(const QLineEdit* path, serial_baud_t baud);
    void enterModemPage();
    void enterGpsPage();
    void stopGpsThread();
    void setModemButtons(bool enabled, const QString& tip);

    std::unique_ptr<Ui_tabTelematics> ui;
    std::unique_ptr<GsmConsole> m_console;
    TelematicsRef m_telematics;
    MyGPSThread* m_gpsThread = nullptr;
    bool m_fitted[radioCount] = {}; // read once, when the page is built
};

#endif // TABTELEMATICSDLG_H
