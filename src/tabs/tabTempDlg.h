// The "Temperature" page: the unit's temperatures, from the sensors the unit
// answered for when the page was built.
#ifndef TABTEMPDLG_H
#define TABTEMPDLG_H

#include "tabs/PageSupport.h"

#include <QVector>

#include <memory>

class Ui_tabTemp;

class tabTempDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabTempDlg(QWidget* parent = nullptr);
    ~tabTempDlg() override;

public slots:
    void refreshClicked();
    void sensorIndexChanged(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    // A listed sensor: 1 the system supervisor, 2 the PCB, 10 + n the
    // processor-module sensor n, with the type it answered with.
    struct Sensor {
        int code;
        Korvane::PMTempSensorType type;
    };

    void prepareSensorList();
    void addSensors(
        const QString& name, int code, Korvane::PMTempSensorType type = Korvane::PMTempSensorType());
    void updateTemp();

    std::unique_ptr<Ui_tabTemp> ui;
    DiagnosticRef m_diagnostic;
    QVector<Sensor> m_sensors;
};

#endif // TABTEMPDLG_H
