// The "Light sensor" page: the averaged illuminance of the light sensor,
// measured with the user's filter settings while the page is shown.
#ifndef TABLIGHTSENSORDLG_H
#define TABLIGHTSENSORDLG_H

#include "tabs/PageSupport.h"

#include <memory>

class QTimer;

class Ui_tabLightSensor;

class tabLightSensorDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabLightSensorDlg(QWidget* parent);
    ~tabLightSensorDlg() override;

public slots:
    void updateIlluminance();
    void onClicked(bool checked);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    Korvane::eErr startAverageCalc();
    bool start();
    void stop();

    std::unique_ptr<Ui_tabLightSensor> ui;
    LightsensorRef m_sensor;
    QTimer* m_updateTimer;
    int m_updateInterval = 500;
    QString m_lastText;
};

#endif // TABLIGHTSENSORDLG_H
