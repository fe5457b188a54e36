#include "tabs/tabOnOffDlg.h"

#include "ui_tabOnOffDlg.h"

#include <QIntValidator>
#include <QRegularExpressionValidator>

#include <iterator>

using namespace Korvane;

namespace
{
// The start-up trigger list: its captions and trigger bit sets, by index.
struct Trigger {
    const char* caption;
    int bits;
};
constexpr Trigger triggers[] = { { "Button", 1 }, { "ON/OFF signal", 2 }, { "Button & signal", 3 },
    { "CAN & button", 5 }, { "CAN & signal", 6 }, { "CAN, button & signal", 7 }, { "CI & button", 9 },
    { "CI & signal", 10 }, { "CI, button & signal", 11 }, { "CI, CAN & button", 13 },
    { "CI, CAN & signal", 14 }, { "All Events", 15 } };
constexpr int triggerCount = static_cast<int>(std::size(triggers));
} // namespace

tabOnOffDlg::tabOnOffDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabOnOff>())
{
    ui->setupUi(this);
    ui->groupButton_2->setTitle(tr("Short press - action trigger button"));
    ui->groupButton_3->setTitle(tr("Long press - action trigger button"));

    uint16_t minutes = 0;
    m_suspendSupported = Config_getSuspendMaxTime(m_config, &minutes) != ERR_NOT_SUPPORTED;
    ui->groupSuspend->setVisible(m_suspendSupported);

    QStringList actions { QStringLiteral("No Action"), QStringLiteral("Shut down") };
    if (m_suspendSupported)
        actions.insert(1, QStringLiteral("Suspend"));
    for (QComboBox* combo : { ui->comboBox_4, ui->comboBox_3, ui->comboBox_2 })
        combo->addItems(actions);
    for (const Trigger& trigger : triggers)
        ui->comboBox->addItem(QString::fromLatin1(trigger.caption));

    ui->editButtonPressTime->setValidator(new QIntValidator(0, 65535, this));
    const QRegularExpression digits(QStringLiteral("[0-9]{0,10}"));
    ui->editTimeSignal->setValidator(new QRegularExpressionValidator(digits, this));
    ui->editTimeSuspend->setValidator(new QRegularExpressionValidator(digits, this));

    connect(ui->pushButton, &QPushButton::clicked, this, &tabOnOffDlg::ApplyClicked);
}

tabOnOffDlg::~tabOnOffDlg() = default;

// Without suspend the lists lack their second entry, so "Shut down" moves up.
void tabOnOffDlg::showAction(
    QComboBox* combo, QWidget* group, eErr err, PowerAction action, const char* where)
{
    if (!acceptRead(this, err, where, { group })) {
        group->setEnabled(false);
        return;
    }
    group->setEnabled(true);
    if (action == POWER_ACTION_NONE)
        combo->setCurrentIndex(0);
    else if (action == POWER_ACTION_SUSPEND && m_suspendSupported)
        combo->setCurrentIndex(1);
    else if (action == POWER_ACTION_SHUTDOWN)
        combo->setCurrentIndex(m_suspendSupported ? 2 : 1);
}

PowerAction tabOnOffDlg::actionOf(const QComboBox* combo) const
{
    const int index = combo->currentIndex();
    return static_cast<PowerAction>(m_suspendSupported || index == 0 ? index : index + 1);
}

template <typename Value>
void tabOnOffDlg::showTime(QLineEdit* field, QWidget* group, eErr err, Value value, const char* where)
{
    if (err != ERR_SUCCESS)
        group->setEnabled(false);
    field->setText(err == ERR_SUCCESS ? QStringLiteral("%1").arg(value) : fieldError(where, err));
}

void tabOnOffDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);

    PowerAction action = POWER_ACTION_NONE;
    eErr err = Config_getShortButtonPressAction(m_config, &action);
    showAction(ui->comboBox_4, ui->groupButton_2, err, action, "getShortButtonPressAction");
    action = POWER_ACTION_NONE;
    err = Config_getLongButtonPressAction(m_config, &action);
    showAction(ui->comboBox_3, ui->groupButton_3, err, action, "getLongButtonPressAction");
    action = POWER_ACTION_NONE;
    err = Config_getOnOffSigAction(m_config, &action);
    showAction(ui->comboBox_2, ui->groupSignal, err, action, "getOnOffSigAction");

    TriggerConf trigger = TRIGGER_FRONT_BUTTON;
    err = Config_getStartupTriggerConfig(m_config, &trigger);
    if (acceptRead(this, err, "getStartupTriggerConfig", { ui->comboBox })) {
        for (int index = 0; index < triggerCount; ++index) {
            if (triggers[index].bits == trigger)
                ui->comboBox->setCurrentIndex(index);
        }
    }
    const bool triggerRead = err == ERR_SUCCESS;

    uint16_t pressTime = 0;
    err = Config_getFrontBtnTrigTime(m_config, &pressTime);
    showTime(ui->editButtonPressTime, ui->groupButton_3, err, pressTime, "getFrontBtnTrigTime");
    uint32_t signalTime = 0;
    err = Config_getExtOnOffSigTrigTime(m_config, &signalTime);
    showTime(ui->editTimeSignal, ui->groupSignal, err, signalTime, "getExtOnOffSigTrigTime");
    if (m_suspendSupported) {
        uint16_t minutes = 0;
        err = Config_getSuspendMaxTime(m_config, &minutes);
        showTime(ui->editTimeSuspend, ui->groupSuspend, err, minutes, "getSuspendMaxTime");
    }

    // The trigger and the power-on start-up share the start-up group: a failed
    // read of either disables it, a power-on start the unit lacks only hides
    // its check box.
    ZuStatus on = ZU_DISABLED;
    err = Config_getPowerOnStartup(m_config, &on);
    if (acceptRead(this, err, "getPowerOnStartup", { ui->checkBoxPowerOnStartup }))
        ui->checkBoxPowerOnStartup->setChecked(on == ZU_ENABLED);
    ui->groupButton->setEnabled(triggerRead && (err == ERR_SUCCESS || err == ERR_NOT_SUPPORTED));
}

// An unsigned decimal number; a text that is none is reported and taken as 0.
unsigned tabOnOffDlg::parsed(const QLineEdit* field, const char* formatMessage)
{
    bool ok = false;
    const unsigned value = field->text().toUInt(&ok, 10);
    if (ok)
        return value;
    showError(QString::fromLatin1(formatMessage));
    return 0;
}

void tabOnOffDlg::ApplyClicked()
{
    const int index = ui->comboBox->currentIndex();
    const auto trigger
        = static_cast<TriggerConf>(index >= 0 && index < triggerCount ? triggers[index].bits : index + 1);
    const auto minutes = m_suspendSupported
        ? static_cast<uint16_t>(parsed(ui->editTimeSuspend, "Supend time invalid format.") & 0xFFFF)
        : uint16_t(0);
    const auto pressTime = static_cast<uint16_t>(
        parsed(ui->editButtonPressTime, "ON/OFF button time - invalid format.") & 0xFFFF);
    const uint32_t signalTime = parsed(ui->editTimeSignal, "ON/OFF signal time - invalid format.");

    showError(
        Config_setLongButtonPressAction(m_config, actionOf(ui->comboBox_3)), "setLongButtonPressAction");
    showError(
        Config_setShortButtonPressAction(m_config, actionOf(ui->comboBox_4)), "setShortButtonPressAction");
    showError(Config_setOnOffSigAction(m_config, actionOf(ui->comboBox_2)), "setOnOffSigAction");
    const eErr err = Config_setStartupTriggerConfig(m_config, trigger);
    if (err == ERR_STARTUP_TRIGGER_CONFLICT)
        showError(
            QStringLiteral("Start-up trigger not allowed in combination with the button settings. Check "
                           "Buttons tab.\r\nIf the signal is not set as start-up trigger, at least one "
                           "of the buttons must be."));
    else
        showError(err, "setStartupTriggerConfig");
    if (m_suspendSupported)
        showError(Config_setSuspendMaxTime(m_config, minutes), "setSuspendMaxTime");
    // Reported under the name the unit's service staff know it by.
    showError(Config_setFrontBtnTrigTime(m_config, pressTime), "setFrontBtnShutDownTrigTime");
    showError(Config_setExtOnOffSigTrigTime(m_config, signalTime), "setExtOnOffSigTrigTime");
    showError(
        Config_setPowerOnStartup(m_config, ui->checkBoxPowerOnStartup->isChecked()), "setPowerOnStartup");
}
