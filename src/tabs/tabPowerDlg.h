// The "Power" page: the power of the CAN interface, the external fan and the
// video channels, now or at the next start-up, and on units with a backup
// battery its charge, charging, faults and power source, kept current by a
// worker thread.
#ifndef TABPOWERDLG_H
#define TABPOWERDLG_H

#include "tabs/PageSupport.h"

#include <QList>
#include <QThread>

#include <atomic>
#include <memory>

class QCheckBox;
class Ui_tabPower;

// Reads the battery every five seconds or so, through a handle of its own,
// and reports by queued signals only.
class MyThread : public QThread
{
    Q_OBJECT
public:
    // Cleared to stop every battery monitor; set before one is started.
    static std::atomic<bool> runThread;

signals:
    void newLevel(int level);
    void newCharge(QString text);
    void newLabel(QString text);

protected:
    void run() override;
};

class tabPowerDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabPowerDlg(QWidget* parent = nullptr);
    // Stops the battery monitor and waits for it: about 100 ms in its long
    // pause, a few reads at the most otherwise.
    ~tabPowerDlg() override;

public slots:
    // Not connected to any control; reachable through the meta-object system.
    void BacklightClicked(bool on);
    void CANClicked(bool on);
    void ExtFanClicked(bool on);
    void VideoClicked();
    void modeIndexChanged(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void UpdateBatteryTab();
    void updateStatusForNow();
    void updateStatusForStartup();
    void showBoxes(Korvane::eErr err, const char* where, const QList<QCheckBox*>& boxes, unsigned bits);
    uint8_t videoMask() const;

    std::unique_ptr<Ui_tabPower> ui;
    PowerRef m_power;
    BatteryRef m_battery;
    ConfigRef m_config;
    QList<QCheckBox*> m_video; // channel 1 first
    std::unique_ptr<MyThread> m_thread;
    bool m_ready = false;
};

#endif // TABPOWERDLG_H
