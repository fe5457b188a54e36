#include "tabs/tabBacklightDlg.h"

#include "ui_tabBacklightDlg.h"

#include <cstdio>

using namespace Korvane;

namespace
{
// The automatic backlight filter apart from the reject window, which the user
// sets as "Sensitivity": four samples averaged, steps under 80 lux rejected,
// and the light sensor choosing its range itself.
const uint8_t averageWindowSize = 4;
const uint32_t rejectDeltaInLux = 80;
const LightsensorSamplingMode samplingMode = LIGHTSENSOR_AUTO_RANGE;
// The intensity follows the automatic backlight at this pace while shown.
constexpr int refreshIntervalMs = 500;
} // namespace

tabBacklightDlg::tabBacklightDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabBacklight>())
{
    ui->setupUi(this);
    m_refreshTimer = new PageTimer(this, refreshIntervalMs, &tabBacklightDlg::refresh);
    ui->groupBox_3->setTitle(tr("Button backlight dimming"));

    connect(ui->sliderBacklightLevel, &QSlider::valueChanged, this, &tabBacklightDlg::backlightChange);
    connect(ui->sliderSensitivity, &QSlider::valueChanged, this, &tabBacklightDlg::sensitivityChange);
    connect(ui->checkBoxABLEnable, &QCheckBox::clicked, this, &tabBacklightDlg::enableClicked);
    connect(ui->checkBoxLedDim, &QCheckBox::clicked, this, &tabBacklightDlg::ledDimClicked);
}

tabBacklightDlg::~tabBacklightDlg() = default;

void tabBacklightDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    onShow();
}

void tabBacklightDlg::onShow()
{
    bool softTransitions = false;
    double k = 0.0;
    eErr err = Backlight_getAutomaticBLParams(m_backlight, &softTransitions, &k);
    if (err != ERR_SUCCESS)
        showError(err, "getAutomaticBLParams");
    else
        ui->checkBoxABLSoftTransitions->setChecked(softTransitions);

    uint8_t averageWindow = 0;
    uint8_t rejectWindow = 0;
    uint32_t rejectDelta = 0;
    LightsensorSamplingMode mode = LIGHTSENSOR_STANDARD_RANGE;
    err = Backlight_getAutomaticBLFilter(m_backlight, &averageWindow, &rejectWindow, &rejectDelta, &mode);
    if (err != ERR_SUCCESS)
        showError(err, "getAutomaticBLFilter");
    else
        ui->sliderSensitivity->setValue(rejectWindow);

    uint8_t running = 0;
    err = Backlight_getAutomaticBLStatus(m_backlight, &running);
    if (err != ERR_SUCCESS) {
        showError(err, "getAutomaticBLStatus");
    } else {
        // The parameters are written when automatic backlight starts, so they
        // stay greyed while it runs.
        ui->checkBoxABLEnable->setChecked(running != 0);
        ui->checkBoxABLSoftTransitions->setEnabled(running == 0);
        ui->sliderSensitivity->setEnabled(running == 0);
    }

    ZuStatus dimming = ZU_DISABLED;
    err = Backlight_getLedDimming(m_backlight, &dimming);
    if (err != ERR_SUCCESS)
        showError(err, "getLedDimming");
    else
        ui->checkBoxLedDim->setChecked(dimming == ZU_ENABLED);
}

void tabBacklightDlg::refresh()
{
    uint8_t intensity = 0;
    const Read read = takeRead(
        this, Backlight_getIntensity(m_backlight, &intensity), "getIntensity", { ui->sliderBacklightLevel });
    if (read == Read::Value && intensity != m_lastIntensity) {
        // Moving the slider writes the intensity straight back to the unit;
        // harmless, and it keeps slider and hardware in step.
        ui->sliderBacklightLevel->setValue(intensity);
        ui->labelBLLevel->setText(QString::number(intensity));
        m_lastIntensity = intensity;
    } else if (read == Read::Failed) {
        ui->labelBLLevel->setText(QStringLiteral("0"));
        m_refreshTimer->stop();
    }

    // Texts that every tick sets are built on the stack: a tick that changes
    // nothing allocates nothing.
    char text[24];
    std::snprintf(text, sizeof text, "%d", ui->sliderSensitivity->value());
    showLatin1(ui->labelKLevel, text);

    bool hardwareOk = false;
    const eErr statusErr = Backlight_getHWStatus(m_backlight, &hardwareOk);
    if (statusErr == ERR_SUCCESS) {
        showLatin1(ui->label_hwstatus1, hardwareOk ? "status: OK" : "status: ERROR");
    } else if (statusErr != ERR_NOT_SUPPORTED) {
        std::snprintf(text, sizeof text, "Error: %d", static_cast<int>(statusErr));
        showLatin1(ui->label_hwstatus1, text);
    }
}

void tabBacklightDlg::backlightChange(int value)
{
    ui->labelBLLevel->setText(QString::number(value));
    showError(Backlight_setIntensity(m_backlight, static_cast<uint8_t>(value & 0xFF)), "setIntensity");
}

void tabBacklightDlg::sensitivityChange(int value)
{
    // Reaches the unit only when automatic backlight is switched on.
    ui->labelKLevel->setText(QString::number(value));
}

void tabBacklightDlg::ledDimClicked(bool checked)
{
    showError(Backlight_setLedDimming(m_backlight, checked ? ZU_ENABLED : ZU_DISABLED), "setLedDimming");
}

void tabBacklightDlg::updateParam()
{
    showError(Backlight_setAutomaticBLParams(m_backlight, ui->checkBoxABLSoftTransitions->isChecked()),
        "setAutomaticBLParams");
    const auto rejectWindow = static_cast<uint8_t>(ui->sliderSensitivity->value() & 0xFF);
    showError(Backlight_setAutomaticBLFilter(
                  m_backlight, averageWindowSize, rejectWindow, rejectDeltaInLux, samplingMode),
        "setAutomaticBLFilter");
}

void tabBacklightDlg::enableClicked(bool checked)
{
    if (checked) {
        updateParam();
        showError(Backlight_startAutomaticBL(m_backlight), "startAutomaticBL");
    } else {
        showError(Backlight_stopAutomaticBL(m_backlight), "stopAutomaticBL");
    }
    // Greyed even after a failed start: the check box still says "on", and
    // the user unchecks it to get the parameters back.
    ui->checkBoxABLSoftTransitions->setEnabled(!checked);
    ui->sliderSensitivity->setEnabled(!checked);
}
