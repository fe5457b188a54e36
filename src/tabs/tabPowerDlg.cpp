#include "tabs/tabPowerDlg.h"

#include "hwsupport/OSSleep.h"
#include "ui_tabPowerDlg.h"

#include <iterator>

using namespace Korvane;

std::atomic<bool> MyThread::runThread { false };

namespace
{
enum Mode { AtStartup = 0, Now = 1 };

QString chargingText(uint8_t status)
{
    switch (status) {
    case 0:
        return QStringLiteral("Battery is not being charged\n");
    case 1:
        return QStringLiteral("Battery is being charged\n");
    case 2:
        return QStringLiteral("Battery is fully charged\n");
    case 3:
        return QStringLiteral("Temperature is too low to charge the battery\n");
    case 4:
        return QStringLiteral("Temperature is too high to charge the battery\n");
    default:
        return QStringLiteral("Could not get battery charging status\n");
    }
}

QString powerSourceText(eErr err, uint8_t source)
{
    if (err != ERR_SUCCESS)
        return QStringLiteral("Power source: Unknown");
    return source == 0 ? QStringLiteral("Power source: Battery")
                       : QStringLiteral("Power source: External power");
}

QString batteryError(const char* pattern, eErr err)
{
    return QString::fromLatin1(pattern)
        .arg(static_cast<int>(err))
        .arg(QString::fromLatin1(GetErrorStringA(err)));
}

// Three seconds in pauses of 100 ms; false as soon as the monitor is stopped.
bool longPause()
{
    for (int i = 0; i < 30; ++i) {
        OSSleep(100);
        if (!MyThread::runThread)
            return false;
    }
    return true;
}

// One second in pauses of 100 ms, of which a stop skips all but the first;
// the cycle goes on after it either way.
void shortPause()
{
    OSSleep(100);
    for (int i = 1; i < 10 && MyThread::runThread; ++i)
        OSSleep(100);
}
} // namespace

void MyThread::run()
{
    BatteryRef battery;
    bool present = false;
    if (Battery_isBatteryPresent(battery, &present) != ERR_SUCCESS || !present)
        runThread = false;

    while (runThread) {
        if (!longPause())
            break;

        uint8_t status = 0;
        const eErr charging = Battery_getBatteryChargingStatus(battery, &status);
        emit newCharge(charging == ERR_SUCCESS ? chargingText(status)
                                               : QStringLiteral("Could not get battery charging status\n"));
        shortPause();

        uint8_t source = 0;
        const eErr sourceErr = Battery_getPowerSource(battery, &source);
        emit newLabel(powerSourceText(sourceErr, source));
        shortPause();

        uint8_t level = 0;
        const eErr levelErr = Battery_getBatteryVoltageStatus(battery, &level);
        emit newLevel(levelErr == ERR_SUCCESS ? level : 0);
    }
}

tabPowerDlg::tabPowerDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabPower>())
{
    ui->setupUi(this);
    m_video = { ui->checkBoxVideo_1, ui->checkBoxVideo_2, ui->checkBoxVideo_3, ui->checkBoxVideo_4 };
    connect(ui->comboBoxMode, &QComboBox::currentIndexChanged, this, &tabPowerDlg::modeIndexChanged);
    ui->comboBoxMode->addItem(QStringLiteral("Power settings at start-up"));
    ui->comboBoxMode->addItem(QStringLiteral("Current power settings"));
    connect(ui->checkBoxCAN, &QCheckBox::clicked, this, &tabPowerDlg::CANClicked);
    connect(ui->checkBoxExtFan, &QCheckBox::clicked, this, &tabPowerDlg::ExtFanClicked);
    for (QCheckBox* box : m_video)
        connect(box, &QCheckBox::clicked, this, &tabPowerDlg::VideoClicked);
    updateStatusForNow();

    m_thread = std::make_unique<MyThread>();
    connect(m_thread.get(), &MyThread::newLevel, ui->progressBar, &QProgressBar::setValue);
    connect(m_thread.get(), &MyThread::newLabel, ui->label_4, &QLabel::setText);
    connect(m_thread.get(), &MyThread::newCharge, ui->label_3, &QLabel::setText);
    // Set here rather than by the thread, so that a page destroyed before
    // its thread got going still stops it.
    MyThread::runThread = true;
    m_thread->start(QThread::InheritPriority);
    m_ready = true;
}

tabPowerDlg::~tabPowerDlg()
{
    MyThread::runThread = false;
    m_thread->wait();
}

void tabPowerDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    ui->comboBoxMode->setCurrentIndex(Now);
    updateStatusForNow();

    bool present = false;
    if (Battery_isBatteryPresent(m_battery, &present) == ERR_SUCCESS && present) {
        UpdateBatteryTab();
    } else {
        ui->tabWidget_2Page2->setEnabled(false);
        ui->tabWidget_2->removeTab(1);
    }
}

void tabPowerDlg::modeIndexChanged(int index)
{
    if (!m_ready)
        return;
    if (index == AtStartup)
        updateStatusForStartup();
    else if (index == Now)
        updateStatusForNow();
}

// Bit i of `bits` checks box i. Code 2 hides the boxes without a word; other
// failures leave them as they were, disabled.
void tabPowerDlg::showBoxes(eErr err, const char* where, const QList<QCheckBox*>& boxes, unsigned bits)
{
    for (int i = 0; i < boxes.size(); ++i) {
        QCheckBox* box = boxes[i];
        if (err == ERR_SUCCESS)
            box->setChecked((bits >> i) & 1U);
        box->setVisible(err != ERR_NOT_SUPPORTED);
        box->setEnabled(err == ERR_SUCCESS);
    }
    if (err != ERR_NOT_SUPPORTED)
        showError(err, where);
}

void tabPowerDlg::updateStatusForNow()
{
    ZuStatus status = ZU_DISABLED;
    eErr err = Power_getCanPowerStatus(m_power, &status);
    showBoxes(err, "getCanPowerStatus", { ui->checkBoxCAN }, status == ZU_ENABLED);
    status = ZU_DISABLED;
    err = Power_getExtFanPowerStatus(m_power, &status);
    showBoxes(err, "getExtFanPowerStatus", { ui->checkBoxExtFan }, status == ZU_ENABLED);
    uint8_t mask = 0;
    err = Power_getVideoPowerStatus(m_power, &mask);
    showBoxes(err, "getVideoPowerStatus", m_video, mask);
}

void tabPowerDlg::updateStatusForStartup()
{
    ZuStatus status = ZU_DISABLED;
    eErr err = Config_getCanStartupPowerConfig(m_config, &status);
    showBoxes(err, "getCanStartupPowerConfig", { ui->checkBoxCAN }, status == ZU_ENABLED);
    status = ZU_DISABLED;
    err = Config_getExtFanStartupPowerConfig(m_config, &status);
    showBoxes(err, "getExtFanStartupPowerConfig", { ui->checkBoxExtFan }, status == ZU_ENABLED);
    uint8_t mask = 0;
    err = Config_getVideoStartupPowerConfig(m_config, &mask);
    // The unit's service staff know this failure under the live getter's name.
    showBoxes(err, "getVideoPowerStatus", m_video, mask);
}

void tabPowerDlg::BacklightClicked(bool on)
{
    showError(Power_setBLPowerStatus(m_power, on), "setBLPowerStatus");
}

void tabPowerDlg::CANClicked(bool on)
{
    const int mode = ui->comboBoxMode->currentIndex();
    if (mode == AtStartup)
        showError(Config_setCanStartupPowerConfig(m_config, on), "setCanPowerStatus");
    else if (mode == Now)
        showError(Power_setCanPowerStatus(m_power, on), "setCanPowerStatus");
}

void tabPowerDlg::ExtFanClicked(bool on)
{
    const int mode = ui->comboBoxMode->currentIndex();
    if (mode == AtStartup)
        showError(Config_setExtFanStartupPowerConfig(m_config, on), "setExtFanPowerStatus");
    else if (mode == Now)
        showError(Power_setExtFanPowerStatus(m_power, on), "setExtFanPowerStatus");
}

uint8_t tabPowerDlg::videoMask() const
{
    uint8_t mask = 0;
    for (int i = 0; i < m_video.size(); ++i) {
        if (m_video[i]->isChecked())
            mask |= static_cast<uint8_t>(1U << i);
    }
    return mask;
}

void tabPowerDlg::VideoClicked()
{
    const int mode = ui->comboBoxMode->currentIndex();
    if (mode == AtStartup)
        showError(Config_setVideoStartupPowerConfig(m_config, videoMask()), "setVideoPowerStatus");
    else if (mode == Now)
        showError(Power_setVideoPowerStatus(m_power, videoMask()), "setVideoPowerStatus");
}

void tabPowerDlg::UpdateBatteryTab()
{
    static const char* const errorTexts[]
        = { "", "Battery error! The thermistor temp sensor is not working\n",
              "Battery error! The secondary temp sensor is not working\n", "Battery error! Charging failed\n",
              "Battery error! Overcurrent detected\n", "Battery error! Battery not initiated\n" };
    const char* const unknownError = "Could not get battery error status code. Error(%1) %2\n";

    uint16_t hwStatus = 0;
    eErr err = Battery_getHwErrorStatus(m_battery, &hwStatus);
    if (err != ERR_SUCCESS)
        ui->label_2->setText(batteryError(unknownError, err));
    else if (hwStatus < std::size(errorTexts))
        ui->label_2->setText(QString::fromLatin1(errorTexts[hwStatus]));
    else // an unknown status is told with the code of the successful call
        ui->label_2->setText(batteryError(unknownError, ERR_SUCCESS));

    uint8_t charging = 0;
    err = Battery_getBatteryChargingStatus(m_battery, &charging);
    ui->label_3->setText(err == ERR_SUCCESS
            ? chargingText(charging)
            : batteryError("Could not get battery charging status. Error(%1) %2\n", err));

    uint8_t source = 0;
    err = Battery_getPowerSource(m_battery, &source);
    ui->label_4->setText(powerSourceText(err, source));

    uint8_t level = 0;
    err = Battery_getBatteryVoltageStatus(m_battery, &level);
    if (err == ERR_SUCCESS) {
        ui->progressBar->setValue(level);
    } else {
        ui->progressBar->setValue(0);
        ui->label->setText(batteryError("Could not get battery power status. Error(%1) %2\n", err));
    }
}
