#include "tabs/tabTouchDlg.h"

#include "dialogs/Dialogs.h"
#include "ui_tabTouchDlg.h"

#include <QStandardPaths>

using namespace Korvane;

namespace
{
const QString calibrator = QStringLiteral("xinput_calibrator");
} // namespace

tabTouchDlg::tabTouchDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabTouch>())
{
    ui->setupUi(this);
    m_rightClick = { ui->labelRightClick, ui->spinRightClick, {} };
    m_advanced[TOUCH_RIGHT_CLICK_TIME] = { ui->labelAdvanced_0, ui->spinAdvanced_0, {} };
    m_advanced[TOUCH_DOUBLE_CLICK_TIME] = { ui->labelAdvanced_1, ui->spinAdvanced_1, {} };
    m_advanced[TOUCH_DOUBLE_CLICK_MAX_CLICK_TIME] = { ui->labelAdvanced_2, ui->spinAdvanced_2, {} };
    m_advanced[TOUCH_MAX_RIGHT_CLICK_DISTANCE] = { ui->labelAdvanced_3, ui->spinAdvanced_3, {} };
    connect(ui->buttonApply, &QPushButton::clicked, this, &tabTouchDlg::buttonApplyClicked);
    connect(ui->buttonCalibrate, &QPushButton::clicked, this, &tabTouchDlg::buttonCalibrateClicked);
}

tabTouchDlg::~tabTouchDlg() = default;

void tabTouchDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);

    // A result is taken before the value it delivers is passed on.
    TouchScreenMode mode = TOUCH_MODE_TOUCH;
    eErr err = TouchScreen_getMode(m_touch, &mode);
    showProfile(err, mode);
    uint16_t value = 0;
    err = TouchScreen_getMouseRightClickTime(m_touch, &value);
    showSetting(m_rightClick, err, value, "getMouseRightClickTime");
    // One box tells of a failure of the advanced settings: those after it are
    // not asked, and stay disabled like the failed one until the next showing.
    bool readable = true;
    for (int key = TOUCH_RIGHT_CLICK_TIME; key <= TOUCH_MAX_RIGHT_CLICK_DISTANCE; ++key) {
        Setting& setting = m_advanced[key];
        value = 0;
        if (readable) {
            err = TouchScreen_getAdvancedSetting(m_touch, static_cast<TouchScreenModeSettings>(key), &value);
            readable = showSetting(setting, err, value, "getAdvancedSetting") || err == ERR_NOT_SUPPORTED;
        } else {
            setting.held.reset();
            setting.spin->setEnabled(false);
        }
    }

    // A group with nothing left in it goes too.
    bool anyAdvanced = false;
    for (const Setting& setting : m_advanced)
        anyAdvanced = anyAdvanced || !setting.spin->isHidden();
    ui->groupBoxAdvanced->setVisible(anyAdvanced);
    ui->groupBoxProfile->setVisible(!ui->radioTouch->isHidden() || !ui->spinRightClick->isHidden());
    ui->buttonApply->setVisible(!ui->groupBoxProfile->isHidden() || anyAdvanced);
    ui->labelNoTouch->setVisible(ui->buttonApply->isHidden() && ui->buttonCalibrate->isHidden());
}

// Modes 0 and 1 are the mouse and touch profiles from the unit's next start.
void tabTouchDlg::showProfile(eErr err, TouchScreenMode mode)
{
    m_touchProfile.reset();
    // Without a touch screen there is nothing to calibrate either.
    if (!acceptRead(
            this, err, "getMode", { ui->radioTouch, ui->radioMouse, ui->labelProfile, ui->buttonCalibrate }))
        return;
    const bool known = mode >= TOUCH_MODE_MOUSE_NEXT_BOOT && mode <= TOUCH_MODE_TOUCH;
    if (known) {
        m_touchProfile = mode == TOUCH_MODE_TOUCH || mode == TOUCH_MODE_TOUCH_NEXT_BOOT;
        (*m_touchProfile ? ui->radioTouch : ui->radioMouse)->setChecked(true);
    } else {
        for (QRadioButton* radio : { ui->radioTouch, ui->radioMouse }) {
            radio->setAutoExclusive(false);
            radio->setChecked(false);
            radio->setAutoExclusive(true);
        }
    }
    if (!known)
        ui->labelProfile->setText(tr("The unit reports the unknown profile %1.").arg(static_cast<int>(mode)));
    else if (mode == TOUCH_MODE_MOUSE_NEXT_BOOT || mode == TOUCH_MODE_TOUCH_NEXT_BOOT)
        ui->labelProfile->setText(tr("The unit takes this profile at its next start."));
    else
        ui->labelProfile->clear();
    ui->labelProfile->setVisible(!ui->labelProfile->text().isEmpty());
}

// Shows a setting as the unit holds it; false when its read failed (code 2
// hides it).
bool tabTouchDlg::showSetting(Setting& setting, eErr err, uint16_t value, const char* where)
{
    setting.held.reset();
    const bool shown = acceptRead(this, err, where, { setting.label, setting.spin });
    setting.spin->setEnabled(shown);
    if (shown) {
        setting.spin->setValue(value);
        setting.held = value;
    }
    return shown;
}

// Writes a setting the user changed; a setting the unit could not tell is not
// written. False when the unit refused it.
bool tabTouchDlg::write(Setting& setting, const std::function<eErr(uint16_t)>& setter, const char* where)
{
    const auto value = static_cast<uint16_t>(setting.spin->value());
    if (!setting.held || *setting.held == value)
        return true;
    const eErr err = setter(value);
    if (err != ERR_SUCCESS) {
        showError(err, where);
        return false;
    }
    setting.held = value;
    return true;
}

// Writes what differs from the unit, in the order shown. The first refusal
// ends it, and the controls keep what the user chose.
void tabTouchDlg::buttonApplyClicked()
{
    const bool chosen = ui->radioTouch->isChecked() || ui->radioMouse->isChecked();
    if (!ui->radioTouch->isHidden() && chosen && m_touchProfile != ui->radioTouch->isChecked()) {
        const bool touch = ui->radioTouch->isChecked();
        const eErr err = TouchScreen_setMode(m_touch, touch ? TOUCH_MODE_TOUCH : TOUCH_MODE_MOUSE);
        if (err != ERR_SUCCESS) {
            showError(err, "setMode");
            return;
        }
        m_touchProfile = touch;
        ui->labelProfile->hide(); // the profile now holds as shown
    }
    if (!write(
            m_rightClick, [this](uint16_t ms) { return TouchScreen_setMouseRightClickTime(m_touch, ms); },
            "setMouseRightClickTime"))
        return;
    for (int key = TOUCH_RIGHT_CLICK_TIME; key <= TOUCH_MAX_RIGHT_CLICK_DISTANCE; ++key) {
        const auto setter = [this, key](uint16_t value) {
            return TouchScreen_setAdvancedSetting(m_touch, static_cast<TouchScreenModeSettings>(key), value);
        };
        if (!write(m_advanced[key], setter, "setAdvancedSetting"))
            return;
    }
}

void tabTouchDlg::buttonCalibrateClicked()
{
    const QString program = QStandardPaths::findExecutable(calibrator);
    if (program.isEmpty()) {
        Dialogs::message(this, QMessageBox::Information, m_caption,
            tr("Calibrating the touch screen needs the program %1, which is not installed.\nIt comes with "
               "the "
               "package xinput-calibrator.")
                .arg(calibrator));
        return;
    }
    if (!Dialogs::startDetached(program, {}))
        showError(tr("The program %1 could not be started.").arg(program));
}
