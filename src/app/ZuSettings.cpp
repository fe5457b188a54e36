#include "app/ZuSettings.h"

#include "tabs/tabAboutDlg.h"
#include "tabs/tabBacklightDlg.h"
#include "tabs/tabButtonsDlg.h"
#include "tabs/tabBuzzerDlg.h"
#include "tabs/tabLEDDlg.h"
#include "tabs/tabLightSensorDlg.h"
#include "tabs/tabOnOffDlg.h"
#include "tabs/tabSysConfDlg.h"
#include "tabs/tabTempDlg.h"
#include "tabs/tabVersionDlg.h"
#include "ui_ZuSettings.h"

#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

// A page that only names itself, for a page class not offered yet: offering
// one is a change of its addTab line in the constructor.
tabDlg* titled(QWidget* parent, const char* title)
{
    auto* page = new tabDlg(parent);
    page->setWindowTitle(QString::fromLatin1(title));
    return page;
}

// A query the library cannot answer counts as "present": a page is rather
// offered than hidden when the unit cannot tell.
bool answered(Korvane::eErr result, bool present)
{
    return result != Korvane::ERR_SUCCESS || present;
}

} // namespace

ZuSettings::ZuSettings(QWidget* parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
    , ui(new Ui_ZuSettingsClass)
    , pageLayout(new QVBoxLayout)
    , about(Korvane::GetAbout())
{
    using namespace Korvane;

    bool gprs = false;
    About_getIsGPRSMounted(about, &gprs);

    uint8_t count = 0;
    eErr result = About_getNrOfCANConnections(about, &count);
    const bool hasCan = answered(result, count != 0);
    count = 0;
    result = About_getNrOfDigIOConnections(about, &count);
    const bool hasDigIO = answered(result, count != 0);
    bool available = false;
    result = About_getIsDisplayAvailable(about, &available);
    const bool hasDisplay = answered(result, available);
    bool hasTouch = false;
    if (hasDisplay) {
        available = false;
        result = About_getIsTouchScreenAvailable(about, &available);
        hasTouch = answered(result, available);
    }

    ConfigHandle config = GetConfig();
    int16_t limit = 0;
    const bool hasHeater = Config_getHeatingTempLimit(config, &limit) != ERR_NOT_SUPPORTED;
    Config_release(config);

    ui->setupUi(this);
    setStyleSheet(applicationStyleSheet());
    connect(ui->buttonExit, &QPushButton::clicked, this, &ZuSettings::exit);
    connect(ui->buttonMenu, &QPushButton::clicked, this, &ZuSettings::menuClicked);

    auto* menu = new tabMenuDlg(this);
    addTab(menu, tabMenuDlg::MENU);
    addTab(new tabVersionDlg(this), tabMenuDlg::VERSION);
    addTab(new tabTempDlg(this), tabMenuDlg::TEMPERATURE);

    if (hasDisplay) {
        addTab(new tabBacklightDlg(this), tabMenuDlg::DISPLAY);
    } else {
        addTab(new tabDlg(this), tabMenuDlg::DISPLAY);
        menu->grey(tabMenuDlg::DISPLAY, QStringLiteral("backgroundGrey.png"), tr("Display is not available"));
    }

    addTab(new tabDlg(this), tabMenuDlg::POWER);
    menu->grey(tabMenuDlg::POWER, QStringLiteral("energyGrey.png"), tr("Power is not available"));

    if (hasHeater) {
        addTab(new tabSysConfDlg(this), tabMenuDlg::SYSCONFIG);
    } else {
        addTab(new tabDlg(this), tabMenuDlg::SYSCONFIG);
        menu->grey(tabMenuDlg::SYSCONFIG, QStringLiteral("heaterGrey.png"), tr("Heater is not available"));
    }

    addTab(titled(this, "Advanced"), tabMenuDlg::ADVANCED);

    addTab(new tabLEDDlg(this), tabMenuDlg::LED);
    menu->setCaption(tabMenuDlg::LED, QStringLiteral("Btn backlight"));

    if (hasDisplay) {
        addTab(new tabBuzzerDlg(this), tabMenuDlg::BUZZER);
    } else {
        // Registered under the Display number, not the Buzzer one: it takes
        // the place of the Display placeholder and leaves the Buzzer entry empty.
        addTab(new tabDlg(this), tabMenuDlg::DISPLAY);
        menu->grey(tabMenuDlg::BUZZER, QString(), tr("Buzzer is not available"));
    }

    addTab(new tabAboutDlg(this), tabMenuDlg::ABOUT);

    if (hasCan) {
        addTab(titled(this, "CAN"), tabMenuDlg::CAN);
    } else {
        addTab(new tabDlg(this), tabMenuDlg::CAN);
        menu->grey(tabMenuDlg::CAN, QString(), tr("Can is not available"));
    }

    if (hasDigIO) {
        menu->setCaption(tabMenuDlg::DIGIO, QCoreApplication::translate("tabMenu", "I/O"));
        menu->setIcon(tabMenuDlg::DIGIO, QStringLiteral("IO.png"));
        addTab(titled(this, "Configurable Inputs - PWM Outputs"), tabMenuDlg::DIGIO);
    } else {
        addTab(new tabDlg(this), tabMenuDlg::DIGIO);
        menu->grey(tabMenuDlg::DIGIO, QString(), tr("Digital Input is not available"));
    }

    if (hasDisplay) {
        addTab(new tabLightSensorDlg(this), tabMenuDlg::LIGHTSENSOR);
    } else {
        addTab(new tabDlg(this), tabMenuDlg::LIGHTSENSOR);
        menu->grey(
            tabMenuDlg::LIGHTSENSOR, QStringLiteral("FullGrey.png"), tr("Light sensor is not available"));
    }

    addTab(new tabDlg(this), tabMenuDlg::TOUCH);
    menu->grey(tabMenuDlg::TOUCH, QStringLiteral("tabletGrey.png"),
        hasTouch ? tr("Touch Screen calibration from start menu") : tr("Touch Screen is not available"));

    addTab(new tabOnOffDlg(this), tabMenuDlg::ONOFF);

    menu->setCaption(tabMenuDlg::TELEMATICS, QCoreApplication::translate("tabMenu", "Buttons"));
    menu->setIcon(tabMenuDlg::TELEMATICS, QStringLiteral("Buttons.png"));
    addTab(new tabButtonsDlg(this), tabMenuDlg::TELEMATICS);

    ui->tabWidget->setLayout(pageLayout);
    connect(menu, &tabMenuDlg::tabSelectionChanged, this, &ZuSettings::showTab);
    showTab(tabMenuDlg::MENU);
}

ZuSettings::~ZuSettings()
{
    Korvane::About_release(about);
    delete ui;
}

QString applicationStyleSheet()
{
    QFile style(QStringLiteral(":/ZuSettings/Resources/ZuSettings.qss"));
    return style.open(QIODevice::ReadOnly) ? QString::fromLatin1(style.readAll()) : QString();
}

void ZuSettings::addTab(tabDlg* page, tabMenuDlg::eTab index)
{
    page->hide();
    pageLayout->addWidget(page);
    pages[index] = page;
}

tabDlg* ZuSettings::page(int index) const
{
    return index >= 0 && index < tabMenuDlg::tabCount ? pages[index] : nullptr;
}

tabMenuDlg* ZuSettings::menu() const
{
    return static_cast<tabMenuDlg*>(pages[tabMenuDlg::MENU]);
}

void ZuSettings::showTab(int index)
{
    tabDlg* next = page(index);
    if (!next)
        return;
    if (pages[current])
        pages[current]->hide();
    next->show();
    ui->tabTitle->setText(next->windowTitle());
    current = index;
}

void ZuSettings::menuClicked()
{
    showTab(tabMenuDlg::MENU);
}

void ZuSettings::exit()
{
    close();
}

void ZuSettings::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        event->ignore();
        return;
    }
    event->accept();
    if (current != tabMenuDlg::MENU)
        showTab(tabMenuDlg::MENU);
    else
        close();
}
