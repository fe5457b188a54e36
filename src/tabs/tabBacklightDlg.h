// The "Display" page: backlight intensity, automatic backlight and button
// backlight dimming.
#ifndef TABBACKLIGHTDLG_H
#define TABBACKLIGHTDLG_H

#include "tabs/PageSupport.h"

#include <memory>

#include <cstdint>

class Ui_tabBacklight;

class tabBacklightDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabBacklightDlg(QWidget* parent);
    ~tabBacklightDlg() override;

public slots:
    void backlightChange(int value);
    void sensitivityChange(int value);
    void refresh();
    void enableClicked(bool checked);
    void ledDimClicked(bool checked);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void onShow();
    void updateParam();

    std::unique_ptr<Ui_tabBacklight> ui;
    BacklightRef m_backlight;
    PageTimer* m_refreshTimer;
    uint8_t m_lastIntensity = 0;
};

#endif // TABBACKLIGHTDLG_H
