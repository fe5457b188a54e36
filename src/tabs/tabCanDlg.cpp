#include "tabs/tabCanDlg.h"

#include "ui_tabCanDlg.h"

#include <QSignalBlocker>

#include <iterator>

using namespace Korvane;

namespace
{
// The rates offered, by index; a rate read that is none of them is added
// behind them, at this index.
constexpr uint16_t rates[] = { 100, 125, 250, 500, 800, 1000 };
constexpr int extraRateIndex = static_cast<int>(std::size(rates));
} // namespace

tabCanDlg::tabCanDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabCan>())
{
    ui->setupUi(this);
    ui->comboBoxFrameType->addItems(
        { QStringLiteral("Standard"), QStringLiteral("Extended"), QStringLiteral("Standard Extended") });
    for (uint16_t rate : rates)
        ui->comboBoxBaudRate->addItem(QString::number(rate));

    {
        AboutRef about;
        uint8_t count = 0;
        m_nets = About_getNrOfCANConnections(about, &count) == ERR_SUCCESS ? count : 2;
    }
    AddDevices();

    connect(ui->comboBoxDevice, &QComboBox::currentIndexChanged, this, &tabCanDlg::deviceIndexChanged);
    connect(ui->buttonApply, &QPushButton::clicked, this, &tabCanDlg::buttonApplyClicked);
}

tabCanDlg::~tabCanDlg() = default;

// A net is listed when its baud rate can be read; the first one that cannot
// ends the list, and when that is the first net the page has nothing to offer.
void tabCanDlg::AddDevices()
{
    m_noNets = true;
    for (int net = 1; net <= m_nets; ++net) {
        uint16_t kbits = 0;
        const eErr err = CanSetting_getBaudrate(m_can, static_cast<uint8_t>(net), &kbits);
        if (err != ERR_SUCCESS) {
            if (net == 1)
                ui->comboBoxDevice->insertItem(
                    0, QStringLiteral("getBaudrate: %1").arg(QString::fromLatin1(GetErrorStringA(err))));
            break;
        }
        ui->comboBoxDevice->insertItem(net - 1, QStringLiteral("CAN%1").arg(net));
        m_noNets = false;
    }
    if (!m_noNets)
        return;
    const QString none = QStringLiteral("No Can nets available");
    for (QComboBox* combo : { ui->comboBoxBaudRate, ui->comboBoxFrameType }) {
        combo->insertItem(0, none);
        combo->setCurrentIndex(0);
    }
    for (QWidget* control : std::initializer_list<QWidget*> {
             ui->comboBoxBaudRate, ui->comboBoxDevice, ui->comboBoxFrameType, ui->buttonApply })
        control->setEnabled(false);
    ui->comboBoxFrameType->hide();
    ui->labelFramType->hide();
}

// Every showing reads the first net again.
void tabCanDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    if (m_noNets)
        return;
    {
        const QSignalBlocker quiet(ui->comboBoxDevice);
        ui->comboBoxDevice->setCurrentIndex(0);
    }
    deviceIndexChanged(0);
}

void tabCanDlg::deviceIndexChanged(int index)
{
    if (m_noNets)
        return;
    updateCanNet(index + 1);
    ui->groupBoxSettings->setTitle(QStringLiteral("Settings for %1").arg(ui->comboBoxDevice->currentText()));
}

void tabCanDlg::updateCanNet(int net)
{
    CanFrameType type = CAN_FRAME_STANDARD;
    const eErr typeErr = CanSetting_getFrameType(m_can, static_cast<uint8_t>(net), &type);
    if (acceptRead(this, typeErr, "getFrameType")) {
        ui->comboBoxFrameType->setCurrentIndex(
            type >= CAN_FRAME_STANDARD && type <= CAN_FRAME_STANDARD_EXTENDED ? static_cast<int>(type) : 0);
    } else {
        // Once the frame type could not be read the row stays away.
        ui->comboBoxFrameType->hide();
        ui->labelFramType->hide();
    }

    // A reading that is not one of the offered rates, an error text or the
    // empty text of a missing rate is added at the extra index, in front of
    // the extras of earlier readings.
    uint16_t kbits = 0;
    const eErr err = CanSetting_getBaudrate(m_can, static_cast<uint8_t>(net), &kbits);
    QString text;
    if (err == ERR_SUCCESS) {
        text = QString::number(kbits);
        ui->labelBaudRate->show();
        ui->comboBoxBaudRate->show();
    } else if (err == ERR_NOT_SUPPORTED) {
        ui->labelBaudRate->hide();
        ui->comboBoxBaudRate->hide();
    } else {
        text = fieldError("getBaudrate", err);
        ui->comboBoxBaudRate->insertItem(extraRateIndex, text);
        ui->comboBoxBaudRate->setCurrentIndex(extraRateIndex);
    }
    for (int index = 0; index < extraRateIndex; ++index) {
        if (text == QString::number(rates[index])) {
            ui->comboBoxBaudRate->setCurrentIndex(index);
            return;
        }
    }
    ui->comboBoxBaudRate->insertItem(extraRateIndex, text);
    ui->comboBoxBaudRate->setCurrentIndex(extraRateIndex);
}

void tabCanDlg::buttonApplyClicked()
{
    if (!m_noNets)
        applyCanNet(ui->comboBoxDevice->currentIndex() + 1);
}

// The frame type first: when it cannot be written, neither is the rate.
void tabCanDlg::applyCanNet(int net)
{
    const auto netNumber = static_cast<uint8_t>(net);
    const QString invalidIndex = QStringLiteral("Invalid frametype, net %1.").arg(net);
    if (!ui->comboBoxFrameType->isHidden()) {
        const int type = ui->comboBoxFrameType->currentIndex();
        if (type < CAN_FRAME_STANDARD || type > CAN_FRAME_STANDARD_EXTENDED) {
            showError(invalidIndex);
            return;
        }
        const eErr err = CanSetting_setFrameType(m_can, netNumber, static_cast<CanFrameType>(type));
        if (err != ERR_SUCCESS) {
            showError(err, "setFrameType");
            return;
        }
    }
    if (ui->comboBoxBaudRate->isHidden())
        return;
    const int index = ui->comboBoxBaudRate->currentIndex();
    uint16_t kbits = 0;
    if (index >= 0 && index < extraRateIndex) {
        kbits = rates[index];
    } else if (index == extraRateIndex) {
        bool ok = false;
        kbits = static_cast<uint16_t>(ui->comboBoxBaudRate->currentText().toUInt(&ok, 10) & 0xFFFF);
        if (!ok) {
            showError(QStringLiteral("Baud rate invalid format, net %1.").arg(net));
            return;
        }
    } else {
        // The frame type's message, as the unit's service staff know it.
        showError(invalidIndex);
        return;
    }
    showError(CanSetting_setBaudrate(m_can, netNumber, kbits), "setBaudrate");
}
