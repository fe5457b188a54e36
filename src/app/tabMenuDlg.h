// The menu page: a grid of icon buttons, one per page of the main window.
#ifndef TABMENUDLG_H
#define TABMENUDLG_H

#include "tabs/tabDlg.h"

#include <memory>

class QLabel;
class QPushButton;
class Ui_tabMenu;

class tabMenuDlg : public tabDlg
{
    Q_OBJECT
public:
    // Page numbers of the main window.
    enum eTab {
        MENU = 0,
        VERSION = 1,
        TEMPERATURE = 2,
        DISPLAY = 3,
        POWER = 4,
        SYSCONFIG = 5,
        ABOUT = 6,
        LED = 7,
        BUZZER = 8,
        CAN = 9,
        ADVANCED = 10,
        DIGIO = 11,
        LIGHTSENSOR = 12,
        TOUCH = 13,
        ONOFF = 14,
        TELEMATICS = 15
    };
    static constexpr int tabCount = 16;

    explicit tabMenuDlg(QWidget* parent = nullptr);
    ~tabMenuDlg() override;

    // The icon button and its caption for a page; null for MENU.
    QPushButton* button(eTab tab) const;
    QLabel* caption(eTab tab) const;

    // Changes the caption beneath a button; the button's accessible name
    // follows, since the button itself shows only an icon.
    void setCaption(eTab tab, const QString& text);
    // Shows the resource image `file` (under ":/ZuSettings/Resources/") on a
    // button, read when the button is first drawn: an icon replaced before
    // that is never read.
    void setIcon(eTab tab, const QString& file);
    // Marks a missing feature: the grey icon (when `greyFile` is not empty),
    // 60 x 60 icon size, tool tip, disabled, button and caption half transparent.
    void grey(eTab tab, const QString& greyFile, const QString& toolTip);

signals:
    void tabSelectionChanged(int index);

public slots:
    void buttonVersionClicked();
    void buttonTempClicked();
    void buttonDisplayClicked();
    void buttonPowerClicked();
    void buttonSysConfigClicked();
    void buttonAboutClicked();
    void buttonLedClicked();
    void buttonBuzzerClicked();
    void buttonCanClicked();
    void buttonAdvancedClicked();
    void buttonDigIOClicked();
    void buttonLightSensorClicked();
    void buttonTouchClicked();
    void buttonOnOffSettingsClicked();
    void buttonTelematicsClicked();

private:
    std::unique_ptr<Ui_tabMenu> ui;
};

#endif // TABMENUDLG_H
