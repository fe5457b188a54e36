#include "tabs/tabLEDDlg.h"

#include "ui_tabLEDDlg.h"

#include "dialogs/Dialogs.h"

#include <QColor>

#include <cmath>

using namespace Korvane;

namespace
{
// LED colour components run from 0 to 15; on screen they are scaled to 0..255.
const int screenScale = 17;
const uint8_t maxIntensity = 15;
const double minFrequency = 0.2;
const double maxFrequency = 30.0;

// A signal frequency as the page shows it: rounded to two decimals, within
// the range the unit can blink.
double shownFrequency(double hertz)
{
    const double rounded = std::floor(hertz * 100.0 + 0.5) / 100.0;
    return qBound(minFrequency, rounded, maxFrequency);
}

// The frequency slider counts tenths of a hertz.
int frequencySliderPosition(double hertz)
{
    return static_cast<int>(hertz * 10.0);
}

QString frequencyText(double hertz)
{
    return QStringLiteral("Freq\n %1 Hz").arg(hertz, 0, 'g', 6);
}

QString dutyCycleText(int percent)
{
    return QStringLiteral("Duty cycle\n %1% on").arg(percent);
}

bool buttonBacklightDimmed()
{
    const BacklightRef backlight;
    ZuStatus dimming = ZU_DISABLED;
    return Backlight_getLedDimming(backlight, &dimming) == ERR_SUCCESS && dimming == ZU_ENABLED;
}
} // namespace

tabLEDDlg::tabLEDDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabLED>())
{
    ui->setupUi(this);
    setWindowTitle(QStringLiteral("Button backlight"));
    ui->groupFrontLED->setTitle(QStringLiteral("Backlight"));
    ui->label_8->setText(QStringLiteral("Intensity"));
    ui->label_7->setText(QStringLiteral("Enable during system start-up"));
    // Left from a multi-colour front LED; the button backlight has one colour.
    ui->buttonColorpick->hide();
    ui->label_customcolor->hide();
    for (int intensity = 0; intensity <= maxIntensity; ++intensity)
        ui->comboBoxColor->addItem(QString::number(intensity));

    connect(ui->buttonOff, &QPushButton::clicked, this, &tabLEDDlg::buttonOffClicked);
    connect(ui->comboBoxColor, &QComboBox::currentIndexChanged, this, &tabLEDDlg::dropDownColorIndexChanged);
    connect(ui->sliderFreq, &QSlider::valueChanged, this, &tabLEDDlg::freqDutyCValueChanged);
    connect(ui->sliderDutyC, &QSlider::valueChanged, this, &tabLEDDlg::freqDutyCValueChanged);
    connect(ui->spinBoxPulses, &QSpinBox::valueChanged, this, &tabLEDDlg::pulsesValueChanged);
    connect(ui->spinBoxIdleTime, &QSpinBox::valueChanged, this, &tabLEDDlg::idleTimeValueChanged);
    connect(ui->checkEnFrontLED, &QCheckBox::toggled, this, &tabLEDDlg::checkEnableLedOnStart);
    connect(ui->buttonColorpick, &QPushButton::clicked, this, &tabLEDDlg::buttonColorpickClicked);
    m_ready = true;
}

tabLEDDlg::~tabLEDDlg() = default;

void tabLEDDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    // Filling the controls must not write anything back.
    m_ready = false;

    double hertz = 0.0;
    uint8_t dutyCycle = 0;
    if (acceptRead(this, FrontLED_getSignal(m_led, &hertz, &dutyCycle), "getSignal",
            { ui->sliderFreq, ui->sliderDutyC })) {
        hertz = shownFrequency(hertz);
        ui->sliderFreq->setValue(frequencySliderPosition(hertz));
        ui->sliderDutyC->setValue(dutyCycle);
        ui->labelFreq->setText(frequencyText(hertz));
        ui->labelDutyC->setText(dutyCycleText(dutyCycle));
    } else {
        dutyCycle = 0;
    }

    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    if (FrontLED_getColor(m_led, &red, &green, &blue) != ERR_SUCCESS)
        blue = maxIntensity;
    ui->comboBoxColor->setCurrentIndex(qMin(blue, maxIntensity));

    uint8_t pulses = 0;
    if (acceptRead(this, FrontLED_getNrOfPulses(m_led, &pulses), "getNrOfPulses", { ui->spinBoxPulses }))
        ui->spinBoxPulses->setValue(pulses);

    uint8_t idleTime = 0;
    if (acceptRead(this, FrontLED_getIdleTime(m_led, &idleTime), "getIdleTime", { ui->spinBoxIdleTime }))
        ui->spinBoxIdleTime->setValue(idleTime * 100);

    ZuStatus startup = ZU_DISABLED;
    const Read startupRead = takeRead(this, FrontLED_getEnabledDuringStartup(m_led, &startup),
        "getEnabledDuringStartup", { ui->groupFrontLED });
    if (startupRead == Read::Value)
        ui->checkEnFrontLED->setChecked(startup == ZU_ENABLED);
    else if (startupRead == Read::Failed)
        ui->groupFrontLED->setEnabled(false);

    // Without a signal reading the LED is taken to be off.
    m_ledOn = dutyCycle != 0;
    showSwitch(ui->buttonOff, m_ledOn);
    m_ready = true;
}

Korvane::eErr tabLEDDlg::writeSignal()
{
    return FrontLED_setSignal(
        m_led, ui->sliderFreq->value() / 10.0, static_cast<uint8_t>(ui->sliderDutyC->value() & 0xFF));
}

void tabLEDDlg::switchedOn()
{
    m_ledOn = true;
    showSwitch(ui->buttonOff, true);
}

void tabLEDDlg::buttonOffClicked()
{
    m_ledOn = !m_ledOn;
    ui->buttonOff->setChecked(m_ledOn);
    if (m_ledOn)
        writeSignal(); // unchecked: the next change of the signal reports a lasting fault
    else
        showError(FrontLED_setOff(m_led), "setOff");
    showSwitch(ui->buttonOff, m_ledOn);
}

void tabLEDDlg::dropDownColorIndexChanged(int index)
{
    if (!m_ready)
        return;
    // The intensity is the blue channel; red and green stay dark.
    showError(FrontLED_setColor(m_led, 0, 0, static_cast<uint8_t>(index)), "FrontLED_setStandardColor");
    if (buttonBacklightDimmed()) {
        showError(QStringLiteral("Button backlight dimming is active. Changing intensity has no effect.\r\n"
                                 "You can turn off dimming on the Display tab."));
    }
    showError(writeSignal(), "FrontLED_setSignal");
    switchedOn();
}

void tabLEDDlg::freqDutyCValueChanged(int)
{
    if (!m_ready)
        return;
    showError(writeSignal(), "setSignal");
    ui->labelFreq->setText(frequencyText(ui->sliderFreq->value() / 10.0));
    ui->labelDutyC->setText(dutyCycleText(ui->sliderDutyC->value()));
    switchedOn();
}

void tabLEDDlg::pulsesValueChanged(int pulses)
{
    if (!m_ready)
        return;
    showError(writeSignal(), "setSignal");
    showError(FrontLED_setNrOfPulses(m_led, static_cast<uint8_t>(pulses & 0xFF)), "setNrOfPulses");
    switchedOn();
}

void tabLEDDlg::idleTimeValueChanged(int milliseconds)
{
    if (!m_ready)
        return;
    showError(writeSignal(), "setSignal");
    // The unit counts idle time in steps of 100 ms.
    showError(FrontLED_setIdleTime(m_led, static_cast<uint8_t>((milliseconds / 100) & 0xFF)), "setIdleTime");
    switchedOn();
}

void tabLEDDlg::checkEnableLedOnStart(bool checked)
{
    if (!m_ready)
        return;
    const eErr err = FrontLED_setEnabledDuringStartup(m_led, checked);
    if (err != ERR_SUCCESS) {
        showError(err, "setEnabledDuringStartup");
        ui->groupFrontLED->setEnabled(false);
    }
}

void tabLEDDlg::buttonColorpickClicked()
{
    const QColor initial(
        m_customColor.red * screenScale, m_customColor.green * screenScale, m_customColor.blue * screenScale);
    const QColor picked = Dialogs::color(initial, this, QStringLiteral("Select Color"));
    if (!picked.isValid())
        return;
    m_customColor.red = static_cast<uint8_t>(picked.red() / screenScale);
    m_customColor.green = static_cast<uint8_t>(picked.green() / screenScale);
    m_customColor.blue = static_cast<uint8_t>(picked.blue() / screenScale);
    showError(FrontLED_setColor(m_led, m_customColor.red, m_customColor.green, m_customColor.blue),
        "FrontLED_setColor");
    ui->comboBoxColor->setCurrentIndex(6);
    UpdateCustomColor();
}

void tabLEDDlg::UpdateCustomColor()
{
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    const Read read = takeRead(this, FrontLED_getColor(m_led, &red, &green, &blue), "FrontLED_getColor",
        { ui->label_customcolor }, Missing::HideExactly);
    if (read == Read::Value) {
        ui->label_customcolor->setText(QStringLiteral("R:%0 G:%1 B:%2").arg(red).arg(green).arg(blue));
        m_customColor = { red, green, blue };
        ui->buttonColorpick->setStyleSheet(QStringLiteral("* { background-color: rgb(%1,%2,%3) }")
                                               .arg(red * screenScale)
                                               .arg(green * screenScale)
                                               .arg(blue * screenScale));
    } else if (read == Read::Missing) {
        m_customColor = { 0, 0, 0 };
        ui->buttonColorpick->setStyleSheet(QStringLiteral(
            "* { background-color: qlineargradient(spread:pad, x1:0, y1:0, x2:0, y2:1, stop:0 rgba(173, 173, "
            "173, 255), stop:1 rgba(95, 95, 95, 255)) }"));
    } else {
        ui->label_customcolor->setText(QStringLiteral("Undefined"));
    }
}
