// The "Touch Screen" page: whether the touch screen acts as a touch screen or
// as a mouse, its right-click time and advanced click settings, written by
// Apply, and the calibration of the touch screen by an external program.
#ifndef TABTOUCHDLG_H
#define TABTOUCHDLG_H

#include "tabs/PageSupport.h"

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QSpinBox;
class Ui_tabTouch;

class tabTouchDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabTouchDlg(QWidget* parent = nullptr);
    ~tabTouchDlg() override;

public slots:
    void buttonApplyClicked();
    void buttonCalibrateClicked();

protected:
    void showEvent(QShowEvent* event) override;

private:
    // A number setting: its controls and the value the unit holds, none when
    // it could not be read.
    struct Setting {
        QLabel* label;
        QSpinBox* spin;
        std::optional<uint16_t> held;
    };

    void showProfile(Korvane::eErr err, Korvane::TouchScreenMode mode);
    bool showSetting(Setting& setting, Korvane::eErr err, uint16_t value, const char* where);
    bool write(Setting& setting, const std::function<Korvane::eErr(uint16_t)>& setter, const char* where);

    std::unique_ptr<Ui_tabTouch> ui;
    TouchScreenRef m_touch;
    // Whether the unit works as a touch screen, as last read or written; none
    // when unknown.
    std::optional<bool> m_touchProfile;
    Setting m_rightClick;
    Setting m_advanced[4];
};

#endif // TABTOUCHDLG_H
