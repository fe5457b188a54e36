#include "tabs/tabTelematicsDlg.h"

#include "hwsupport/OSSleep.h"
#include "telematics/GsmConsole.h"
#include "telematics/MyGPSThread.h"
#include "ui_tabTelematicsDlg.h"

#include <QDeadlineTimer>

#include <cstdio>

using namespace Korvane;

bool bRaw = true;

namespace
{
// Sub-page indices of the form.
const int gpsPage = 1;
const int modemPage = 2;
const int gpsStopMs = 10000;
const unsigned long portSettleMs = 50;

struct RadioOps {
    const char* key; // as in the operation names, "getGPRSPowerStatus"
    const char* title; // as the user knows it
    eErr (*getPower)(TelematicsHandle, ZuStatus*);
    eErr (*setPower)(TelematicsHandle, bool);
    eErr (*getStartUp)(TelematicsHandle, ZuStatus*);
    eErr (*setStartUp)(TelematicsHandle, ZuStatus);
};

// Indexed by tabTelematicsDlg::Radio.
const RadioOps radios[] = {
    { "GPRS", "GSM/GPRS", Telematics_getGPRSPowerStatus, Telematics_setGPRSPowerStatus,
        Telematics_getGPRSStartUpPowerStatus, Telematics_setGPRSStartUpPowerStatus },
    { "WLAN", "WLAN", Telematics_getWLANPowerStatus, Telematics_setWLANPowerStatus,
        Telematics_getWLANStartUpPowerStatus, Telematics_setWLANStartUpPowerStatus },
    { "BT", "Bluetooth", Telematics_getBTPowerStatus, Telematics_setBTPowerStatus,
        Telematics_getBTStartUpPowerStatus, Telematics_setBTStartUpPowerStatus },
    { "GPS", "GPS", Telematics_getGPSPowerStatus, Telematics_setGPSPowerStatus,
        Telematics_getGPSStartUpPowerStatus, Telematics_setGPSStartUpPowerStatus },
};

QByteArray operation(const char* verb, const RadioOps& radio, const char* what)
{
    return QByteArray(verb) + radio.key + what;
}

bool fitted(eErr (*query)(AboutHandle, bool*), AboutHandle about)
{
    bool mounted = false;
    return query(about, &mounted) == ERR_SUCCESS && mounted;
}

QString fileSetting(ZuAuxPrivateHandle files, const char* key, const char* fallback)
{
    char buffer[255] = {};
    if (ZuAuxPrivate_getFileSetting(files, key, buffer, sizeof buffer) != ERR_SUCCESS || buffer[0] == 0)
        return QLatin1String(fallback);
    return QString::fromLatin1(buffer, static_cast<qsizetype>(strnlen(buffer, sizeof buffer)));
}

void closeModemPort()
{
    if (serial_dev_gsm)
        serial_close(serial_dev_gsm);
    serial_dev_gsm = nullptr;
}
} // namespace

tabTelematicsDlg::tabTelematicsDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabTelematics>())
{
    ui->setupUi(this);
    m_console = std::make_unique<GsmConsole>(this,
        GsmConsole::Controls { ui->textEditGSM, ui->editNetworkStatus, ui->editPinStatus, ui->editPin,
            ui->editNumber, ui->editSMStext, ui->editCustomAT });
    ChangeGPSGui(true);
    ui->buttonToggleData->hide();

    {
        ZuAuxPrivateRef files;
        ui->lineEditGSMdev->setText(fileSetting(files, "ZusettingsGsmPort", "/dev/ttyUSB0"));
        ui->lineEditGPSdev->setText(fileSetting(files, "ZusettingsGpsPort", "/dev/ttyUSB1"));
    }

    {
        AboutRef about;
        m_fitted[Wlan] = fitted(About_getIsWLANMounted, about);
        m_fitted[Gps] = fitted(About_getIsGPSMounted, about);
        m_fitted[Gprs] = fitted(About_getIsGPRSMounted, about);
        m_fitted[Bt] = fitted(About_getIsBTMounted, about);
    }

    for (Radio radio : { Gprs, Wlan, Bt, Gps }) {
        if (m_fitted[radio])
            continue;
        const QString tip = QLatin1String(radios[radio].title) + QLatin1String(" is not available");
        for (QCheckBox* box : { powerBox(radio), startUpBox(radio) }) {
            box->setEnabled(false);
            box->hide();
            box->setToolTip(tip);
        }
    }
    // The modem's sub-page goes first, so that both indices are the form's.
    if (!m_fitted[Gprs]) {
        ui->lineEditGSMdev->hide();
        ui->label_9->hide();
        ui->tabWidget->removeTab(modemPage);
    }
    if (!m_fitted[Gps]) {
        ui->lineEditGPSdev->hide();
        ui->label_8->hide();
        ui->tabWidget->removeTab(gpsPage);
    }

    QString available;
    for (Radio radio : { Bt, Wlan, Gprs, Gps }) {
        const QLatin1String title(radios[radio].title);
        if (!m_fitted[radio] || available.contains(title))
            continue;
        available = available.isEmpty() ? QStringLiteral("%1").arg(title)
                                        : QStringLiteral("%1, %2").arg(available, title);
    }
    ui->lineEditAvailInterfaces->setText(QStringLiteral("Available interfaces: %1").arg(available));

    connect(ui->checkBoxGPRS, &QCheckBox::clicked, this, &tabTelematicsDlg::GPRSClicked);
    connect(ui->checkBoxGPRS_Startup, &QCheckBox::clicked, this, &tabTelematicsDlg::GPRS_StartupClicked);
    connect(ui->checkBoxWLAN, &QCheckBox::clicked, this, &tabTelematicsDlg::WLANClicked);
    connect(ui->checkBoxWLAN_Startup, &QCheckBox::clicked, this, &tabTelematicsDlg::WLAN_StartupClicked);
    connect(ui->checkBoxBT, &QCheckBox::clicked, this, &tabTelematicsDlg::BTClicked);
    connect(ui->checkBoxBT_Startup, &QCheckBox::clicked, this, &tabTelematicsDlg::BT_StartupClicked);
    connect(ui->checkBoxGPS, &QCheckBox::clicked, this, &tabTelematicsDlg::GPSClicked);
    connect(ui->checkBoxGPS_Startup, &QCheckBox::clicked, this, &tabTelematicsDlg::GPS_StartupClicked);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &tabTelematicsDlg::TabChanged);
    connect(ui->buttonToggleData, &QPushButton::clicked, this, &tabTelematicsDlg::GPSModeClicked);
    connect(ui->pushButtonGetPIN, &QPushButton::clicked, this, &tabTelematicsDlg::GetPinStatusClicked);
    connect(ui->pushButtonSetPin, &QPushButton::clicked, this, &tabTelematicsDlg::SetPinClicked);
    connect(
        ui->pushButtonGetNetwork, &QPushButton::clicked, this, &tabTelematicsDlg::GetNetworkStatusClicked);
    connect(ui->pushButtonCall, &QPushButton::clicked, this, &tabTelematicsDlg::CallClicked);
    connect(ui->pushButtonCustomExec, &QPushButton::clicked, this, &tabTelematicsDlg::CustomExecClicked);
}

tabTelematicsDlg::~tabTelematicsDlg()
{
    stopGpsThread();
    ZuAuxPrivateRef files;
    showError(ZuAuxPrivate_setFileSetting(
                  files, "ZusettingsGsmPort", ui->lineEditGSMdev->text().toLatin1().constData()),
        "setFileSetting ZusettingsGsmPort");
    showError(ZuAuxPrivate_setFileSetting(
                  files, "ZusettingsGpsPort", ui->lineEditGPSdev->text().toLatin1().constData()),
        "setFileSetting ZusettingsGpsPort");
    closeModemPort();
}

QCheckBox* tabTelematicsDlg::powerBox(Radio radio) const
{
    QCheckBox* const boxes[] = { ui->checkBoxGPRS, ui->checkBoxWLAN, ui->checkBoxBT, ui->checkBoxGPS };
    return boxes[radio];
}

QCheckBox* tabTelematicsDlg::startUpBox(Radio radio) const
{
    QCheckBox* const boxes[] = { ui->checkBoxGPRS_Startup, ui->checkBoxWLAN_Startup, ui->checkBoxBT_Startup,
        ui->checkBoxGPS_Startup };
    return boxes[radio];
}

void tabTelematicsDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    ReadAllData();
}

void tabTelematicsDlg::ReadAllData()
{
    for (Radio radio : { Gprs, Wlan, Bt, Gps }) {
        QCheckBox* box = powerBox(radio);
        if (!m_fitted[radio]) {
            box->setChecked(false);
            continue;
        }
        ZuStatus state = ZU_DISABLED;
        const eErr err = radios[radio].getPower(m_telematics, &state);
        if (err == ERR_SUCCESS)
            box->setChecked(state == ZU_ENABLED);
        else if (err == ERR_NOT_SUPPORTED && radio == Gprs)
            box->hide();
        else if (err != ERR_NOT_SUPPORTED)
            showError(err, operation("get", radios[radio], "PowerStatus").constData());
    }
    for (Radio radio : { Gprs, Wlan, Gps, Bt }) {
        ZuStatus state = ZU_DISABLED;
        const bool on = m_fitted[radio] && radios[radio].getStartUp(m_telematics, &state) == ERR_SUCCESS
            && state == ZU_ENABLED;
        startUpBox(radio)->setChecked(on);
    }
}

// The box keeps the state the user gave it, also when the unit refused it.
void tabTelematicsDlg::setPower(Radio radio, bool on)
{
    showError(
        radios[radio].setPower(m_telematics, on), operation("set", radios[radio], "PowerStatus").constData());
}

void tabTelematicsDlg::setStartUp(Radio radio, bool on)
{
    showError(radios[radio].setStartUp(m_telematics, on ? ZU_ENABLED : ZU_DISABLED),
        operation("set", radios[radio], "StartUpPowerStatus").constData());
}

void tabTelematicsDlg::GPRSClicked(bool on)
{
    setPower(Gprs, on);
}

void tabTelematicsDlg::GPRS_StartupClicked(bool on)
{
    setStartUp(Gprs, on);
}

void tabTelematicsDlg::WLANClicked(bool on)
{
    setPower(Wlan, on);
}

void tabTelematicsDlg::WLAN_StartupClicked(bool on)
{
    setStartUp(Wlan, on);
}

void tabTelematicsDlg::BTClicked(bool on)
{
    setPower(Bt, on);
}

void tabTelematicsDlg::BT_StartupClicked(bool on)
{
    setStartUp(Bt, on);
}

void tabTelematicsDlg::GPSClicked(bool on)
{
    setPower(Gps, on);
}

void tabTelematicsDlg::GPS_StartupClicked(bool on)
{
    setStartUp(Gps, on);
}

serial_t* tabTelematicsDlg::openPort(const QLineEdit* path, serial_baud_t baud)
{
    char device[256];
    std::snprintf(device, sizeof device, "%s", path->text().toLatin1().constData());
    serial_t* port = serial_open(device);
    if (!port) {
        showError(QStringLiteral("Could not open serial port: ") + path->text());
        return nullptr;
    }
    // A device that takes no line setting stays unconfigured: nothing is
    // then read from it or written to it.
    serial_setup(port, baud, SERIAL_BITS_8, SERIAL_PARITY_NONE, SERIAL_STOPBIT_1);
    return port;
}

void tabTelematicsDlg::InitGsmSerialPort()
{
    serial_dev_gsm = openPort(ui->lineEditGSMdev, SERIAL_BAUD_57600);
}

void tabTelematicsDlg::InitGpsSerialPort()
{
    serial_dev_gps = openPort(ui->lineEditGPSdev, SERIAL_BAUD_9600);
}

void tabTelematicsDlg::TabChanged(int)
{
    ReadAllData();
    ui->textEditGSM->clear();
    ui->textEdit->clear();
    // The accuracy keeps its last value.
    for (QLineEdit* field :
        { ui->editGpsDate, ui->editGpsPos, ui->editGpsSat, ui->editGpsAlt, ui->editGpsSpeed })
        field->setText(tr("INVALID"));

    const int index = ui->tabWidget->currentIndex();
    if (index == modemPage)
        enterModemPage();
    else if (m_fitted[Gprs])
        closeModemPort();

    if (index == gpsPage) {
        enterGpsPage();
    } else {
        ui->buttonToggleData->hide();
        if (m_fitted[Gps])
            stopGpsThread();
    }
}

void tabTelematicsDlg::setModemButtons(bool enabled, const QString& tip)
{
    for (QPushButton* button : { ui->pushButtonCall, ui->pushButtonCustomExec, ui->pushButtonGetNetwork,
             ui->pushButtonGetPIN, ui->pushButtonSetPin }) {
        button->setEnabled(enabled);
        button->setToolTip(tip);
    }
    if (!enabled)
        ui->textEditGSM->appendPlainText(tip);
}

void tabTelematicsDlg::enterModemPage()
{
    ZuStatus power = ZU_DISABLED;
    if (Telematics_getGPRSPowerStatus(m_telematics, &power) == ERR_SUCCESS && power != ZU_ENABLED) {
        setModemButtons(false, QStringLiteral("Please enable GSM/GPRS power!"));
    } else if (m_fitted[Gprs]) {
        setModemButtons(true, QString());
        if (!serial_dev_gsm)
            InitGsmSerialPort();
        OSSleep(portSettleMs);
    } else {
        setModemButtons(false, QStringLiteral("GSM/GPRS is not available!"));
    }
}

void tabTelematicsDlg::enterGpsPage()
{
    ZuStatus power = ZU_DISABLED;
    if (Telematics_getGPSPowerStatus(m_telematics, &power) == ERR_SUCCESS && power != ZU_ENABLED) {
        ui->buttonToggleData->setEnabled(false);
        ui->editGpsDate->setText(QStringLiteral("Please enable GPS Power!"));
        return;
    }
    if (!m_fitted[Gps]) {
        ui->buttonToggleData->setEnabled(false);
        ui->editGpsDate->setText(QStringLiteral("GPS is not available!"));
        return;
    }
    ui->buttonToggleData->setEnabled(true);
    ui->editGpsDate->setText(tr("INVALID"));
    if (!serial_dev_gps)
        InitGpsSerialPort();
    ui->buttonToggleData->show();
    OSSleep(portSettleMs);

    m_gpsThread = new MyGPSThread;
    m_gpsThread->start(QThread::InheritPriority);
    connect(m_gpsThread, &MyGPSThread::newText, ui->textEdit, &QPlainTextEdit::insertPlainText);
    connect(m_gpsThread, &MyGPSThread::newTime, ui->editGpsDate, &QLineEdit::setText);
    connect(m_gpsThread, &MyGPSThread::newPos, ui->editGpsPos, &QLineEdit::setText);
    connect(m_gpsThread, &MyGPSThread::newSat, ui->editGpsSat, &QLineEdit::setText);
    connect(m_gpsThread, &MyGPSThread::newAlt, ui->editGpsAlt, &QLineEdit::setText);
    connect(m_gpsThread, &MyGPSThread::newSpeed, ui->editGpsSpeed, &QLineEdit::setText);
    connect(m_gpsThread, &MyGPSThread::newAcc, ui->editGpsAcc, &QLineEdit::setText);
}

// The thread sees the cleared flag within one read time-out and closes the
// receiver's port on its way out.
void tabTelematicsDlg::stopGpsThread()
{
    gpsThreadRunning = false;
    if (!m_gpsThread)
        return;
    if (m_gpsThread->wait(QDeadlineTimer(gpsStopMs)))
        delete m_gpsThread;
    else // still reading: it goes when it is done
        connect(m_gpsThread, &QThread::finished, m_gpsThread, &QObject::deleteLater);
    m_gpsThread = nullptr;
}

void tabTelematicsDlg::GPSModeClicked()
{
    ChangeGPSGui(!bRaw);
}

void tabTelematicsDlg::ChangeGPSGui(bool decoded)
{
    ui->textEdit->setVisible(!decoded);
    if (!decoded)
        ui->textEdit->setGeometry(16, 30, 400, 180);
    for (QWidget* widget : std::initializer_list<QWidget*> { ui->labelGpsDate, ui->editGpsDate,
             ui->labelGpsPos, ui->editGpsPos, ui->labelGpsSat, ui->editGpsSat, ui->labelGpsAlt,
             ui->editGpsAlt, ui->labelGpsSpeed, ui->editGpsSpeed, ui->labelGpsAcc, ui->editGpsAcc })
        widget->setVisible(decoded);
    ui->buttonToggleData->setText(decoded ? QStringLiteral("Serial data") : QStringLiteral("GPS data"));
    ui->groupBox_2->setTitle(decoded ? QStringLiteral("GPS data") : QStringLiteral("Serial data"));
    bRaw = decoded;
}

void tabTelematicsDlg::GetNetworkStatusClicked()
{
    m_console->getNetworkStatus();
}

void tabTelematicsDlg::GetPinStatusClicked()
{
    m_console->getPinStatus();
}

void tabTelematicsDlg::HangUpClicked()
{
    m_console->hangUp();
}

void tabTelematicsDlg::SetPinClicked()
{
    m_console->setPin();
}

void tabTelematicsDlg::CallClicked()
{
    m_console->sendSms();
}

void tabTelematicsDlg::CustomExecClicked()
{
    m_console->sendCommand();
}
