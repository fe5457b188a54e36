#include "tabs/tabTempDlg.h"

#include "ui_tabTempDlg.h"

using namespace Korvane;

namespace
{
// The chooser holds this many sensors at the most.
constexpr int maxSensors = 20;

// Rows of the grid of fixed fields.
enum GridRow { RowSS = 0, RowPCB = 1, RowCPU = 3, RowCPUBoard = 4 };

void deleteChildWidgets(QLayoutItem* item)
{
    if (QLayout* layout = item->layout()) {
        while (QLayoutItem* child = layout->takeAt(0)) {
            deleteChildWidgets(child);
            delete child;
        }
    }
    delete item->widget();
}

// Takes the item at (row, column) out of the grid, and deletes its widgets when asked.
void remove(QGridLayout* grid, int row, int column, bool deleteWidgets)
{
    QLayoutItem* item = grid->itemAtPosition(row, column);
    if (!item)
        return;
    grid->removeItem(item);
    if (deleteWidgets)
        deleteChildWidgets(item);
    delete item;
}

// Deletes a row of label and field; the field's pointer is cleared with it.
void removeRow(QGridLayout* grid, int row, QLineEdit*& field)
{
    for (int column = 0; column < grid->columnCount(); ++column)
        remove(grid, row, column, true);
    field = nullptr;
}

QString sensorName(PMTempSensorType type)
{
    switch (type) {
    case PM_SENSOR_CPU:
        return QStringLiteral("CPU");
    case PM_SENSOR_BOX:
        return QStringLiteral("Processor module box");
    case PM_SENSOR_ENVIRONMENT:
        return QStringLiteral("Processor module env");
    case PM_SENSOR_BOARD:
        return QStringLiteral("CPU board");
    case PM_SENSOR_BACKPLANE:
        return QStringLiteral("Processor module backplane");
    case PM_SENSOR_CHIPSETS:
        return QStringLiteral("Processor module chipsets");
    case PM_SENSOR_VIDEO:
        return QStringLiteral("Processor module video");
    case PM_SENSOR_OTHER:
        return QStringLiteral("Processor module other");
    }
    return QStringLiteral("Unknown sensor: %1").arg(static_cast<int>(type));
}

// Readings outside -56..255 °C are not temperatures; the test is the unit's
// own, on the reading shifted by 56 as an unsigned 16-bit number.
QString temperatureText(int16_t celsius)
{
    if (static_cast<uint16_t>(celsius + 56) >= 312)
        return QStringLiteral("N/A");
    return QStringLiteral("%1°C (%2°F)").arg(celsius).arg(celsius * 1.8 + 32, 0, 'g', 6);
}
} // namespace

tabTempDlg::tabTempDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabTemp>())
{
    ui->setupUi(this);
    prepareSensorList();
    connect(ui->buttonRefresh, &QPushButton::clicked, this, &tabTempDlg::refreshClicked);
    connect(ui->comboBoxSensor, &QComboBox::currentIndexChanged, this, &tabTempDlg::sensorIndexChanged);
}

tabTempDlg::~tabTempDlg() = default;

void tabTempDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    updateTemp();
}

void tabTempDlg::refreshClicked()
{
    updateTemp();
}

void tabTempDlg::sensorIndexChanged(int)
{
    updateTemp();
}

void tabTempDlg::addSensors(const QString& name, int code, PMTempSensorType type)
{
    if (ui->comboBoxSensor->count() >= maxSensors) {
        showError(QStringLiteral("Error, SensorIndex array out of range."));
        return;
    }
    ui->comboBoxSensor->addItem(name);
    m_sensors.append({ code, type });
}

void tabTempDlg::prepareSensorList()
{
    int16_t celsius = 0;
    eErr err = Diagnostic_getSSTemp(m_diagnostic, &celsius);
    if (err == ERR_SUCCESS)
        addSensors(QStringLiteral("System supervisor"), 1);
    else if (err == ERR_NOT_SUPPORTED)
        removeRow(ui->gridLayout, RowSS, ui->editTemp_SS);
    else
        ui->editTemp_SS->setText(errorText(err, "getSSTemp"));

    celsius = 0;
    err = Diagnostic_getPCBTemp(m_diagnostic, &celsius);
    if (err == ERR_SUCCESS)
        addSensors(QStringLiteral("PCB"), 2);
    else if (err == ERR_NOT_SUPPORTED)
        removeRow(ui->gridLayout, RowPCB, ui->editTemp_PCB);
    else
        ui->editTemp_PCB->setText(errorText(err, "getPCBTemp"));

    // The unit answers for its processor-module sensors in order; the first
    // failure is the end of the list.
    for (uint8_t n = 0;; ++n) {
        celsius = 0;
        PMTempSensorType type = PM_SENSOR_CPU;
        if (Diagnostic_getPMTemp(m_diagnostic, n, &celsius, &type) != ERR_SUCCESS) {
            if (n == 0)
                removeRow(ui->gridLayout, RowCPU, ui->editTemp_CPU);
            if (n <= 1)
                removeRow(ui->gridLayout, RowCPUBoard, ui->editTemp_CPUBoard);
            break;
        }
        addSensors(sensorName(type), 10 + n, type);
        if (n == 255)
            break;
    }
}

void tabTempDlg::updateTemp()
{
    if (ui->comboBoxSensor->currentIndex() < 0)
        return;
    for (int row = 0; row < m_sensors.size(); ++row) {
        const Sensor& sensor = m_sensors.at(row);
        int16_t celsius = 0;
        eErr err = ERR_SUCCESS;
        const char* where = "getPMTemp";
        QLineEdit* field = nullptr;
        if (sensor.code == 1) {
            err = Diagnostic_getSSTemp(m_diagnostic, &celsius);
            where = "getSSTemp";
            field = ui->editTemp_SS;
        } else if (sensor.code == 2) {
            err = Diagnostic_getPCBTemp(m_diagnostic, &celsius);
            where = "getPCBTemp";
            field = ui->editTemp_PCB;
        } else {
            PMTempSensorType type = sensor.type;
            err = Diagnostic_getPMTemp(m_diagnostic, static_cast<uint8_t>(sensor.code - 10), &celsius, &type);
            if (type == PM_SENSOR_CPU)
                field = ui->editTemp_CPU;
            else if (type == PM_SENSOR_BOARD)
                field = ui->editTemp_CPUBoard;
        }
        if (err == ERR_NOT_SUPPORTED)
            continue;
        const QString text = err == ERR_SUCCESS ? temperatureText(celsius) : fieldError(where, err);
        if (field) // null when its row was removed
            field->setText(text);
        // The chosen sensor's reading also shows beside the chooser.
        if (row == ui->comboBoxSensor->currentIndex())
            ui->editTemp->setText(text);
    }
}
