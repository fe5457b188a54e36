#include "tabs/tabIODlg.h"

#include "tabs/PictureLabel.h"
#include "ui_tabIODlg.h"

#include <cmath>
#include <cstring>

using namespace Korvane;

namespace
{
// A float as its bits: a reading kept to compare with the next, where 0.0 and
// -0.0 differ in text and a NaN equals itself.
uint32_t bitsOf(float value)
{
    uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}
} // namespace

tabIODlg::tabIODlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabIO>())
{
    ui->setupUi(this);
    populateCombobox(ui->comboBoxCI_1);
    populateCombobox(ui->comboBoxCI_2);
    // The numbers come and go with the outputs; their room stays, and so do the sliders.
    for (QLabel* number : { ui->labelDC_Value, ui->labelHZ_Value }) {
        QSizePolicy policy = number->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        number->setSizePolicy(policy);
        number->hide();
    }

    QComboBox* modes[] = { ui->comboBoxCI_1, ui->comboBoxCI_2 };
    for (uint8_t input = 1; input <= 2; ++input) {
        CfgInModeEnum mode = CFGIN_NOT_IN_USE;
        const eErr err = CfgIn_getCfgInMode(m_inputs, input, &mode);
        if (err != ERR_SUCCESS) {
            showError(err, "CfgIn_getCfgInMode");
            continue;
        }
        QComboBox* combo = modes[input - 1];
        combo->setCurrentIndex(mode >= CFGIN_HI_SWITCH && mode <= CFGIN_FREQ_PULL_DOWN ? mode : 0);
        combo->setVisible(true);
    }
    QDoubleSpinBox* thresholds[] = { ui->doubleSpinBox1, ui->doubleSpinBox2 };
    for (uint8_t input = 1; input <= 2; ++input) {
        float hertz = 0;
        const eErr err = CfgIn_getMinFrequencyThreshold(m_inputs, input, &hertz);
        if (err == ERR_SUCCESS)
            thresholds[input - 1]->setValue(hertz);
        else
            showError(err, "getMinFrequencyThreshold");
    }

    m_refreshTimer = new PageTimer(this, 500, &tabIODlg::updatePWMOutStatus);
    m_ready = true;
}

tabIODlg::~tabIODlg() = default;

void tabIODlg::populateCombobox(QComboBox* combo)
{
    combo->insertItems(0,
        { QStringLiteral("Not in use"), QStringLiteral("HI switch"), QStringLiteral("LOW switch"),
            QStringLiteral("Voltage 2V5"), QStringLiteral("Voltage 5V"), QStringLiteral("Resistance"),
            QStringLiteral("Freq floating"), QStringLiteral("Freq pull up"),
            QStringLiteral("Freq pull down") });
}

void tabIODlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    getCurrentPWMConfiguration();
}

void tabIODlg::updatePWMOutStatus()
{
    uint8_t faults = 0;
    const eErr err = PWMOut_getPWMOutputStatus(m_pwm, &faults);
    if (err != ERR_SUCCESS) {
        // Polling starts again with the next showing.
        m_refreshTimer->stop();
        showError(err, "getPWMOutputStatus");
        return;
    }
    if (faults != m_faults) {
        const QPixmap fault = readPicture(QStringLiteral(":/ZuSettings/Resources/agt_action_fail1.png"));
        const QPixmap ok = readPicture(QStringLiteral(":/ZuSettings/Resources/status_ok.png"));
        for (QLabel* picture : { ui->fail_1, ui->fail_2 }) {
            const bool failed = faults & (picture == ui->fail_1 ? 1 : 2);
            picture->setPixmap(failed ? fault : ok);
            picture->setToolTip(failed ? tr("Output fault") : tr("No fault"));
        }
        m_faults = faults;
    }
    getCurrentPWMConfiguration();
    updateMeasurement(1);
    updateMeasurement(2);
}

void tabIODlg::getCurrentPWMConfiguration()
{
    getCurrentDutyCycle();
    getCurrentPWMFreq();
}

// Moving a slider to a reading writes the reading back to the channel.
void tabIODlg::getCurrentDutyCycle()
{
    m_dutyCycle = 0;
    const eErr err = PWMOut_getPWMOutputChannelDutyCycle(m_pwm, m_channel, &m_dutyCycle);
    if (err != ERR_SUCCESS) {
        showError(err, "getPWMOutputChannelDutyCycle");
        return;
    }
    ui->sliderDC->setValue(m_dutyCycle);
    const uint8_t percent = m_dutyCycle;
    m_dutyText.show(ui->labelDC_Value, percent, [percent] { return QStringLiteral("%1 %").arg(percent); });
    ui->labelDC_Value->setVisible(m_dutyCycle != 0);
}

void tabIODlg::getCurrentPWMFreq()
{
    m_frequency = 0;
    const eErr err = PWMOut_getPWMOutputChannelFrequency(m_pwm, m_channel, &m_frequency);
    if (err != ERR_SUCCESS) {
        // Under the duty cycle's name: the unit's service staff know it so.
        showError(err, "getPWMOutputChannelDutyCycle");
        return;
    }
    // The slider takes the whole hertz; a reading that is no number leaves it.
    if (std::isfinite(m_frequency))
        ui->sliderHZ->setValue(static_cast<int>(qBound(-1.0e9, double(m_frequency), 1.0e9)));
    const float hertz = m_frequency;
    m_frequencyText.show(ui->labelHZ_Value, bitsOf(hertz),
        [hertz] { return QStringLiteral("%1 Hz").arg(double(hertz), 0, 'g', 6); });
    ui->labelHZ_Value->setVisible(m_frequency != 0.0f);
}

void tabIODlg::on_sliderDC_valueChanged(int value)
{
    const eErr err
        = PWMOut_setPWMOutputChannelDutyCycle(m_pwm, m_channel, static_cast<uint8_t>(value & 0xFF));
    if (err == ERR_SUCCESS)
        getCurrentDutyCycle();
    else
        showError(err, "setPWMOutputChannelDutyCycle");
}

void tabIODlg::on_sliderHZ_valueChanged(int value)
{
    const eErr err = PWMOut_setPWMOutputChannelFrequency(m_pwm, m_channel, static_cast<float>(value));
    if (err == ERR_SUCCESS)
        getCurrentPWMFreq();
    else
        showError(err, "setPWMOutputChannelFrequency");
}

// The sliders then show what the output does once off.
void tabIODlg::on_pwmOffButton_clicked()
{
    const eErr err = PWMOut_setPWMOutOff(m_pwm, m_channel);
    if (err == ERR_SUCCESS)
        getCurrentPWMConfiguration();
    else
        showError(err, "setPWMOff");
}

void tabIODlg::selectChannel(uint8_t channel)
{
    if (!m_ready)
        return;
    m_channel = channel;
    getCurrentPWMConfiguration();
}

void tabIODlg::on_checkBox_PWM1_clicked(bool)
{
    selectChannel(1);
}

void tabIODlg::on_checkBox_PWM2_clicked(bool)
{
    selectChannel(2);
}

void tabIODlg::on_comboBoxCI_1_currentIndexChanged(int index)
{
    setCfgInMode(1, static_cast<CfgInModeEnum>(index));
}

void tabIODlg::on_comboBoxCI_2_currentIndexChanged(int index)
{
    setCfgInMode(2, static_cast<CfgInModeEnum>(index));
}

void tabIODlg::setCfgInMode(int input, CfgInModeEnum mode)
{
    if (m_ready)
        showError(CfgIn_setCfgInMode(m_inputs, static_cast<uint8_t>(input), mode), "setCfgInMode");
}

void tabIODlg::setThreshold(int input, double hertz)
{
    if (m_ready)
        showError(
            CfgIn_setMinFrequencyThreshold(m_inputs, static_cast<uint8_t>(input), static_cast<float>(hertz)),
            "setMinFrequencyThreshold");
}

void tabIODlg::on_doubleSpinBox1_valueChanged(double hertz)
{
    setThreshold(1, hertz);
}

void tabIODlg::on_doubleSpinBox2_valueChanged(double hertz)
{
    setThreshold(2, hertz);
}

// The reading in the unit of the input's mode, as the unit has it now.
void tabIODlg::updateMeasurement(int input)
{
    QLineEdit* field = input == 1 ? ui->lineEditCI_1 : ui->lineEditCI_2;
    const auto number = static_cast<uint8_t>(input);
    CfgInModeEnum mode = CFGIN_NOT_IN_USE;
    eErr err = CfgIn_getCfgInMode(m_inputs, number, &mode);
    if (err != ERR_SUCCESS) {
        showError(err, "getCfgInMode");
        return;
    }
    // What the text is made of: the mode, the code and the reading.
    Reading reading { mode, ERR_SUCCESS, 0, 0 };
    const char* where = "CfgIn_getValue";
    switch (mode) {
    case CFGIN_HI_SWITCH:
    case CFGIN_LOW_SWITCH:
    case CFGIN_VOLTAGE_2V5:
    case CFGIN_VOLTAGE_5V:
    case CFGIN_RESISTANCE: {
        uint16_t value = 0;
        err = CfgIn_getValue(m_inputs, number, &value);
        std::get<2>(reading) = value;
        break;
    }
    case CFGIN_FREQ_FLOATING:
    case CFGIN_FREQ_PULL_UP:
    case CFGIN_FREQ_PULL_DOWN: {
        float hertz = 0;
        uint8_t dutyCycle = 0;
        err = CfgIn_getPwmValue(m_inputs, number, &hertz, &dutyCycle);
        where = "CfgIn_getPwmValue";
        std::get<2>(reading) = bitsOf(hertz);
        std::get<3>(reading) = dutyCycle;
        break;
    }
    case CFGIN_NOT_IN_USE:
        break;
    }
    if (err != ERR_SUCCESS) {
        showError(err, where);
        reading = Reading { mode, err, 0, 0 };
    }
    m_measurementText[input == 1 ? 0 : 1].show(
        field, reading, [&reading] { return measurementText(reading); });
}

QString tabIODlg::measurementText(const Reading& reading)
{
    const auto [mode, err, raw, dutyCycle] = reading;
    if (err != ERR_SUCCESS)
        return QStringLiteral("error!");
    switch (mode) {
    case CFGIN_HI_SWITCH:
    case CFGIN_LOW_SWITCH:
        return QString::number(raw);
    case CFGIN_VOLTAGE_2V5:
    case CFGIN_VOLTAGE_5V: // in 0.1 mV
        return QStringLiteral("%1 (%2 V)").arg(raw).arg(raw / 10000.0, 0, 'f', 2);
    case CFGIN_RESISTANCE:
        return QStringLiteral("%1 Ohm").arg(raw);
    case CFGIN_FREQ_FLOATING:
    case CFGIN_FREQ_PULL_UP:
    case CFGIN_FREQ_PULL_DOWN: {
        float hertz = 0;
        std::memcpy(&hertz, &raw, sizeof hertz);
        return QStringLiteral("%1 Hz %2 %").arg(double(hertz), 0, 'f', 1).arg(dutyCycle);
    }
    default:
        return QString();
    }
}
