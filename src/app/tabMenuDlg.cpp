#include "app/tabMenuDlg.h"

#include "tabs/PictureLabel.h"
#include "ui_tabMenuDlg.h"

#include <QGraphicsOpacityEffect>

namespace
{
const QString resourceDir = QStringLiteral(":/ZuSettings/Resources/");

// The icon of each button, by page number.
const char* const icons[tabMenuDlg::tabCount] = { nullptr, "hwinfo.png", "thermometer.png", "background.png",
    "energy.png", "heater.png", "kblackbox.png", "ksame.png", "arts.png", "input_device.png", "chip.png",
    "package_settings.png", "Full.png", "tablet.png", "exit.png", "Globe.png" };

void fade(QWidget* widget)
{
    auto* effect = new QGraphicsOpacityEffect(widget);
    effect->setOpacity(0.5);
    widget->setGraphicsEffect(effect);
}
} // namespace

tabMenuDlg::tabMenuDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(new Ui_tabMenu)
{
    ui->setupUi(this);

    connect(ui->pushButtonVersion, &QPushButton::clicked, this, &tabMenuDlg::buttonVersionClicked);
    connect(ui->pushButtonTemp, &QPushButton::clicked, this, &tabMenuDlg::buttonTempClicked);
    connect(ui->pushButtonDisplay, &QPushButton::clicked, this, &tabMenuDlg::buttonDisplayClicked);
    connect(ui->pushButtonPower, &QPushButton::clicked, this, &tabMenuDlg::buttonPowerClicked);
    connect(ui->pushButtonSysConfig, &QPushButton::clicked, this, &tabMenuDlg::buttonSysConfigClicked);
    connect(ui->pushButtonAbout, &QPushButton::clicked, this, &tabMenuDlg::buttonAboutClicked);
    connect(ui->pushButtonLed, &QPushButton::clicked, this, &tabMenuDlg::buttonLedClicked);
    connect(ui->pushButtonBuzzer, &QPushButton::clicked, this, &tabMenuDlg::buttonBuzzerClicked);
    connect(ui->pushButtonCAN, &QPushButton::clicked, this, &tabMenuDlg::buttonCanClicked);
    connect(ui->pushButtonAdvanced, &QPushButton::clicked, this, &tabMenuDlg::buttonAdvancedClicked);
    connect(ui->pushButtonDigIO, &QPushButton::clicked, this, &tabMenuDlg::buttonDigIOClicked);
    connect(ui->pushButton, &QPushButton::clicked, this, &tabMenuDlg::buttonLightSensorClicked);
    connect(ui->pushButtonTouch, &QPushButton::clicked, this, &tabMenuDlg::buttonTouchClicked);
    connect(
        ui->pushButtonOnOffSettings, &QPushButton::clicked, this, &tabMenuDlg::buttonOnOffSettingsClicked);
    connect(ui->pushButtonTelematics, &QPushButton::clicked, this, &tabMenuDlg::buttonTelematicsClicked);

    for (int tab = VERSION; tab < tabCount; ++tab) {
        setIcon(eTab(tab), QString::fromLatin1(icons[tab]));
        button(eTab(tab))->setAccessibleName(caption(eTab(tab))->text());
    }
}

tabMenuDlg::~tabMenuDlg() = default;

QPushButton* tabMenuDlg::button(eTab tab) const
{
    switch (tab) {
    case MENU:
        break;
    case VERSION:
        return ui->pushButtonVersion;
    case TEMPERATURE:
        return ui->pushButtonTemp;
    case DISPLAY:
        return ui->pushButtonDisplay;
    case POWER:
        return ui->pushButtonPower;
    case SYSCONFIG:
        return ui->pushButtonSysConfig;
    case ABOUT:
        return ui->pushButtonAbout;
    case LED:
        return ui->pushButtonLed;
    case BUZZER:
        return ui->pushButtonBuzzer;
    case CAN:
        return ui->pushButtonCAN;
    case ADVANCED:
        return ui->pushButtonAdvanced;
    case DIGIO:
        return ui->pushButtonDigIO;
    case LIGHTSENSOR:
        return ui->pushButton;
    case TOUCH:
        return ui->pushButtonTouch;
    case ONOFF:
        return ui->pushButtonOnOffSettings;
    case TELEMATICS:
        return ui->pushButtonTelematics;
    }
    return nullptr;
}

QLabel* tabMenuDlg::caption(eTab tab) const
{
    switch (tab) {
    case MENU:
        break;
    case VERSION:
        return ui->label;
    case TEMPERATURE:
        return ui->label_2;
    case DISPLAY:
        return ui->label_3;
    case POWER:
        return ui->label_4;
    case SYSCONFIG:
        return ui->label_5;
    case ADVANCED:
        return ui->label_6;
    case LED:
        return ui->label_7;
    case BUZZER:
        return ui->label_8;
    case ABOUT:
        return ui->label_9;
    case CAN:
        return ui->label_10;
    case DIGIO:
        return ui->label_11;
    case LIGHTSENSOR:
        return ui->label_12;
    case TOUCH:
        return ui->label_13;
    case ONOFF:
        return ui->label_14;
    case TELEMATICS:
        return ui->label_15;
    }
    return nullptr;
}

void tabMenuDlg::setCaption(eTab tab, const QString& text)
{
    caption(tab)->setText(text);
    button(tab)->setAccessibleName(text);
}

void tabMenuDlg::setIcon(eTab tab, const QString& file)
{
    button(tab)->setIcon(iconOnUse(resourceDir + file));
}

void tabMenuDlg::grey(eTab tab, const QString& greyFile, const QString& toolTip)
{
    QPushButton* b = button(tab);
    if (!greyFile.isEmpty())
        setIcon(tab, greyFile);
    b->setIconSize(QSize(60, 60));
    b->setToolTip(toolTip);
    b->setEnabled(false);
    fade(b);
    fade(caption(tab));
}

void tabMenuDlg::buttonVersionClicked()
{
    emit tabSelectionChanged(VERSION);
}

void tabMenuDlg::buttonTempClicked()
{
    emit tabSelectionChanged(TEMPERATURE);
}

void tabMenuDlg::buttonDisplayClicked()
{
    emit tabSelectionChanged(DISPLAY);
}

void tabMenuDlg::buttonPowerClicked()
{
    emit tabSelectionChanged(POWER);
}

void tabMenuDlg::buttonSysConfigClicked()
{
    emit tabSelectionChanged(SYSCONFIG);
}

void tabMenuDlg::buttonAboutClicked()
{
    emit tabSelectionChanged(ABOUT);
}

void tabMenuDlg::buttonLedClicked()
{
    emit tabSelectionChanged(LED);
}

void tabMenuDlg::buttonBuzzerClicked()
{
    emit tabSelectionChanged(BUZZER);
}

void tabMenuDlg::buttonCanClicked()
{
    emit tabSelectionChanged(CAN);
}

void tabMenuDlg::buttonAdvancedClicked()
{
    emit tabSelectionChanged(ADVANCED);
}

void tabMenuDlg::buttonDigIOClicked()
{
    emit tabSelectionChanged(DIGIO);
}

void tabMenuDlg::buttonLightSensorClicked()
{
    emit tabSelectionChanged(LIGHTSENSOR);
}

void tabMenuDlg::buttonTouchClicked()
{
    emit tabSelectionChanged(TOUCH);
}

void tabMenuDlg::buttonOnOffSettingsClicked()
{
    emit tabSelectionChanged(ONOFF);
}

void tabMenuDlg::buttonTelematicsClicked()
{
    emit tabSelectionChanged(TELEMATICS);
}
