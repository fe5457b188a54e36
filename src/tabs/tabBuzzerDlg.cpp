#include "tabs/tabBuzzerDlg.h"

#include "ui_tabBuzzerDlg.h"

using namespace Korvane;

namespace
{
QString frequencyText(int hertz)
{
    return QStringLiteral("Freq\n %1 Hz").arg(hertz);
}

QString volumeText(int volume)
{
    return QStringLiteral("Volume\n %1").arg(volume);
}
} // namespace

tabBuzzerDlg::tabBuzzerDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabBuzzer>())
{
    ui->setupUi(this);
    ui->buttonOn->setText(QStringLiteral("Off"));

    connect(ui->buttonOn, &QPushButton::toggled, this, &tabBuzzerDlg::buttonOnToggled);
    connect(ui->sliderFreq, &QSlider::valueChanged, this, &tabBuzzerDlg::sliderFreqChanged);
    connect(ui->sliderVol, &QSlider::valueChanged, this, &tabBuzzerDlg::sliderVolChanged);
}

tabBuzzerDlg::~tabBuzzerDlg() = default;

// The controls write what they are set to, so a reading outside their range
// reaches the unit clamped just by showing the page.
void tabBuzzerDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);

    uint16_t hertz = 0;
    if (acceptRead(this, Buzzer_getFrequency(m_buzzer, &hertz), "getFrequency", { ui->sliderFreq })) {
        const int clamped
            = qBound(ui->sliderFreq->minimum(), static_cast<int>(hertz), ui->sliderFreq->maximum());
        ui->sliderFreq->setValue(clamped);
        ui->labelFreq->setText(frequencyText(clamped));
    }

    uint16_t volume = 0;
    if (acceptRead(this, Buzzer_getVolume(m_buzzer, &volume), "getVolume", { ui->sliderVol })) {
        const int clamped = qMin(static_cast<int>(volume), ui->sliderVol->maximum());
        ui->sliderVol->setValue(clamped);
        ui->labelVolume->setText(volumeText(clamped));
    }

    bool on = false;
    if (acceptRead(this, Buzzer_getTrigger(m_buzzer, &on), "getTrigger", { ui->buttonOn }))
        showSwitch(ui->buttonOn, on);
}

void tabBuzzerDlg::sliderFreqChanged(int value)
{
    ui->labelFreq->setText(frequencyText(value));
    showError(Buzzer_setFrequency(m_buzzer, static_cast<uint16_t>(value & 0xFFFF)), "setFrequency");
}

void tabBuzzerDlg::sliderVolChanged(int value)
{
    ui->labelVolume->setText(volumeText(value));
    showError(Buzzer_setVolume(m_buzzer, static_cast<uint16_t>(value & 0xFFFF)), "setVolume");
}

void tabBuzzerDlg::buttonOnToggled(bool on)
{
    const eErr err = Buzzer_setTrigger(m_buzzer, on);
    if (err != ERR_SUCCESS) {
        // The button stays as the user left it: the buzzer state is unknown.
        showError(err, "setTrigger");
        return;
    }
    showSwitch(ui->buttonOn, on);
}
