#include "tabs/tabLightSensorDlg.h"

#include "ui_tabLightSensorDlg.h"

#include <QTimer>

#include <cstdio>

using namespace Korvane;

namespace
{
const char notRunning[] = "Light Sensor is not running";

QString notRunningText()
{
    return QString::fromLatin1(notRunning);
}

LightsensorSamplingMode samplingModeOf(int comboIndex)
{
    switch (comboIndex) {
    case 1:
        return LIGHTSENSOR_EXTENDED_RANGE;
    case 2:
        return LIGHTSENSOR_AUTO_RANGE;
    default:
        return LIGHTSENSOR_STANDARD_RANGE;
    }
}
} // namespace

tabLightSensorDlg::tabLightSensorDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabLightSensor>())
{
    ui->setupUi(this);
    ui->comboBoxSamplingsMode->addItem(QStringLiteral("Standard range"));
    ui->comboBoxSamplingsMode->addItem(QStringLiteral("Extended range"));
    ui->comboBoxSamplingsMode->addItem(QStringLiteral("Auto range"));
    m_updateTimer = new QTimer(this);
    connect(m_updateTimer, &QTimer::timeout, this, &tabLightSensorDlg::updateIlluminance);
    ui->editIlumination->setText(notRunningText());

    connect(ui->pushButtonOn, &QPushButton::clicked, this, &tabLightSensorDlg::onClicked);
}

tabLightSensorDlg::~tabLightSensorDlg() = default;

Korvane::eErr tabLightSensorDlg::startAverageCalc()
{
    return Lightsensor_startAverageCalc(m_sensor, static_cast<uint8_t>(ui->spinBoxAverageWndSize->value()),
        static_cast<uint8_t>(ui->spinBoxRejectWndSize->value()),
        static_cast<uint16_t>(ui->spinBoxRejectDelta->value()),
        samplingModeOf(ui->comboBoxSamplingsMode->currentIndex()));
}

bool tabLightSensorDlg::start()
{
    const eErr err = startAverageCalc();
    if (err != ERR_SUCCESS) {
        showError(err, "startAverageCalc");
        return false;
    }
    m_updateTimer->start(m_updateInterval);
    return true;
}

void tabLightSensorDlg::stop()
{
    showError(Lightsensor_stopAverageCalc(m_sensor), "stopAverageCalc");
    m_updateTimer->stop();
    showSwitch(ui->pushButtonOn, false);
    m_lastText = notRunningText();
    ui->editIlumination->setText(m_lastText);
}

void tabLightSensorDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    // A trial start tells whether the sensor is free: the automatic backlight
    // holds it while it runs.
    const eErr err = startAverageCalc();
    if (err == ERR_SENSOR_BUSY) {
        showSwitch(ui->pushButtonOn, false);
        ui->pushButtonOn->setEnabled(false);
        ui->pushButtonOn->setToolTip(QStringLiteral("Cannot be started when automatic backlight is running"));
        // Worded to read as an explanation inside the usual error frame.
        showError(err,
            "startAverageCalc.\r\nThe light sensor cannot be started when automatic backlight is "
            "running.\r\nError");
    } else if (err == ERR_SUCCESS) {
        ui->pushButtonOn->setEnabled(true);
        ui->pushButtonOn->setToolTip(QString());
        showError(Lightsensor_stopAverageCalc(m_sensor), "stopAverageCalc");
        showSwitch(ui->pushButtonOn, start());
    } else {
        showSwitch(ui->pushButtonOn, false);
        ui->pushButtonOn->setEnabled(false);
        ui->pushButtonOn->setToolTip(QStringLiteral("Error: startAverageCalc"));
        showError(err, "startAverageCalc");
    }
}

void tabLightSensorDlg::hideEvent(QHideEvent* event)
{
    stop();
    tabDlg::hideEvent(event);
}

void tabLightSensorDlg::onClicked(bool checked)
{
    if (!checked)
        stop();
    else
        showSwitch(ui->pushButtonOn, start());
}

void tabLightSensorDlg::updateIlluminance()
{
    // The text is built on the stack and compared with the one on show, so
    // that a tick that changes nothing allocates nothing.
    char luxText[16] = "";
    uint16_t lux = 0;
    const Read luxRead = takeRead(this, Lightsensor_getAverageIlluminance(m_sensor, &lux), "getIlluminance",
        { ui->groupBoxLightsensor }, Missing::HideExactly);
    if (luxRead == Read::Value)
        std::snprintf(luxText, sizeof luxText, "%u Lux, ", unsigned(lux));
    else if (luxRead == Read::Failed)
        stop(); // the range is still read, and its text replaces the "not running" notice

    const char* rangeText = "";
    uint8_t range = 0;
    const Read rangeRead
        = takeRead(this, Lightsensor_getOperatingRange(m_sensor, &range), "getOperatingRange");
    if (rangeRead == Read::Value) {
        rangeText = range == 0 ? "Range standard" : range == 1 ? "Range extended" : "Unknown range";
    } else if (rangeRead == Read::Failed) {
        luxText[0] = '\0';
        rangeText = notRunning;
        stop();
    }

    char text[sizeof luxText + sizeof notRunning];
    std::snprintf(text, sizeof text, "%s%s", luxText, rangeText);
    // Rewriting an unchanged text would reset the cursor and selection.
    if (m_lastText != QLatin1String(text)) {
        m_lastText = QString::fromLatin1(text);
        ui->editIlumination->setText(m_lastText);
    }
}
