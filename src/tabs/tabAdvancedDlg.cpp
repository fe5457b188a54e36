#include "tabs/tabAdvancedDlg.h"

#include "dialogs/Dialogs.h"
#include "hwsupport/OSSleep.h"
#include "report/WriteDefaultValues.h"
#include "ui_tabAdvancedDlg.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <unistd.h>

using namespace Korvane;

struct tabAdvancedDlg::Target {
    const char* suffix;
    bool supervisor; // the SS: root only, with its own questions and messages
    bool serialLine; // reached over the serial line the console uses
    eErr (*upgrade)(FirmwareUpgradeHandle, const char*, bool);
    const char* upgradeName;
    eErr (*verify)(FirmwareUpgradeHandle, const char*, bool);
    const char* verifyName;
};

QString tabAdvancedDlg::opendir;

bool (*tabAdvancedDlg::runsAsRoot)() = [] { return getuid() == 0; };

namespace
{
const tabAdvancedDlg::Target fpga { "mcs", false, false, FirmwareUpgrade_startFpgaUpgrade, "startFpgaUpgrade",
    FirmwareUpgrade_startFpgaVerification, "startFpgaVerification" };
const tabAdvancedDlg::Target front { "hex", false, true, FirmwareUpgrade_startFrontUpgrade,
    "startFrontUpgrade", FirmwareUpgrade_startFrontVerification, "startFrontVerification" };
const tabAdvancedDlg::Target supervisor { "hex", true, true, FirmwareUpgrade_startSSUpgrade, "startSSUpgrade",
    FirmwareUpgrade_startSSVerification, "startSSVerification" };

const QString progressTitle = QStringLiteral("Update progress");
const QString verifyTitle = QStringLiteral("Verify");
const QString defaultsTitle = QStringLiteral("Default Settings");

// The progress dialog's label for a state, or the state's name in the
// message of a failed run.
QString stateText(int state, bool inMessage)
{
    static const char* const names[] = { "Initiating", "Preparing communication", "Reading File",
        "Converting file", "Flashing", "Verifying", "Done" };
    if (state >= UPGRADE_INITIATING && state <= UPGRADE_DONE)
        return QString::fromLatin1(names[state]);
    if (state == UPGRADE_COMPLETE_WITH_ERROR)
        return inMessage ? QStringLiteral("Complete with error") : QStringLiteral("Done - ERROR");
    return QStringLiteral("Unknown state");
}
} // namespace

tabAdvancedDlg::tabAdvancedDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabAdvanced>())
    , m_upgrade(std::in_place)
{
    ui->setupUi(this);
    connect(ui->buttonFile, &QPushButton::clicked, this, &tabAdvancedDlg::clickedOpenFile);
    connect(ui->checkBox, &QCheckBox::stateChanged, this, &tabAdvancedDlg::checkBoxStateChanged);
    connect(ui->buttonProgFPGA, &QPushButton::clicked, this, &tabAdvancedDlg::clickedProgFPGA);
    connect(ui->buttonProgFront, &QPushButton::clicked, this, &tabAdvancedDlg::clickedProgFront);
    connect(ui->buttonProgSS, &QPushButton::clicked, this, &tabAdvancedDlg::clickedProgSS);
    connect(ui->buttonShutdown, &QPushButton::clicked, this, &tabAdvancedDlg::clickedShutdown);
    connect(ui->buttonDefaults, &QPushButton::clicked, this, &tabAdvancedDlg::clickedDefaults);
}

tabAdvancedDlg::~tabAdvancedDlg() = default;

void tabAdvancedDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    ui->checkBox->setText(QStringLiteral("Verify only"));
}

void tabAdvancedDlg::clickedOpenFile()
{
    const QString file = Dialogs::openFileName(this, tr("Open File"), opendir,
        QStringLiteral("All (*.*);;mcs (FPGA) (*.MCS);;hex (Front, SS) (*.HEX)"));
    if (file.isEmpty())
        return;
    ui->editFileName->setText(file);
    opendir = QFileInfo(file).absolutePath();
}

void tabAdvancedDlg::checkBoxStateChanged(int state)
{
    const bool verify = state == Qt::Checked;
    ui->buttonProgFPGA->setText(verify ? QStringLiteral("Verify FPGA") : QStringLiteral("Program FPGA"));
    ui->buttonProgFront->setText(
        verify ? QStringLiteral("Verify Front uC") : QStringLiteral("Program Front uC"));
    ui->buttonProgSS->setText(verify ? QStringLiteral("Verify SS") : QStringLiteral("Program SS"));
}

void tabAdvancedDlg::clickedProgFPGA()
{
    program(fpga);
}

void tabAdvancedDlg::clickedProgFront()
{
    program(front);
}

void tabAdvancedDlg::clickedProgSS()
{
    program(supervisor);
}

// The suffix is compared as typed: "update.HEX" is no hex file here.
bool tabAdvancedDlg::isFileNameOk(const QString& file, const QString& suffix)
{
    if (file.endsWith(suffix, Qt::CaseSensitive))
        return true;
    const QString text = ui->checkBox->isChecked()
        ? QStringLiteral("The file to verify must be a .%1 file!")
        : QStringLiteral("The file to program must be a .%1 file!");
    showError(text.arg(suffix));
    return false;
}

void tabAdvancedDlg::program(const Target& target)
{
    m_upgrade.reset();
    m_upgrade.emplace();

    const QString file = ui->editFileName->text();
    if (!isFileNameOk(file, QString::fromLatin1(target.suffix)))
        return;
    if (target.supervisor && !runsAsRoot()) {
        showError(ERR_FAILED, "This operation requires superuser priviledges");
        return;
    }
    const bool verify = ui->checkBox->isChecked();
    bool go = true;
    if (!verify)
        go = target.supervisor ? showWarningAndContinueSS() : showWarningAndContinue();
    else if (target.supervisor)
        go = showWarningAndContinueSSVerify();
    if (!go)
        return;
    if (target.serialLine)
        disableSerialConsole();

    const QByteArray name = file.toLatin1();
    const eErr err = (verify ? target.verify : target.upgrade)(*m_upgrade, name.constData(), false);
    if (err != ERR_SUCCESS) {
        showError(err, verify ? target.verifyName : target.upgradeName);
        return;
    }
    if (!showUpdateProgress())
        return;
    if (verify && target.supervisor)
        showSuccessMessageVerifySS();
    else if (verify)
        showSuccessMessageVerify();
    else if (target.supervisor)
        showSuccessMessageSS();
    else
        showSuccessMessage();
}

std::unique_ptr<Dialogs::Progress> tabAdvancedDlg::getProgressDlg()
{
    return std::make_unique<Dialogs::Progress>(
        this, progressTitle, QStringLiteral("Fetching data..."), -1, 100);
}

// Follows the run until it is done or fails; the status call itself sets the
// pace. A status that cannot be read ends the run as failed, with the code of
// the call, in the last state read.
bool tabAdvancedDlg::showUpdateProgress()
{
    const std::unique_ptr<Dialogs::Progress> progress = getProgressDlg();
    progress->setValue(0);
    UpgradeStatus status { UPGRADE_INITIATING, 0, ERR_SUCCESS };
    do {
        UpgradeStatus read = status;
        const eErr err = FirmwareUpgrade_getUpgradeStatus(*m_upgrade, &read, true);
        if (err == ERR_SUCCESS)
            status = read;
        else
            status.errorCode = err;
        progress->setValue(status.percent);
        progress->setLabelText(stateText(status.state, false));
        QCoreApplication::processEvents();
    } while (status.state <= UPGRADE_VERIFYING && status.errorCode == ERR_SUCCESS);
    progress->reset();
    OSSleep(200);
    if (status.errorCode == ERR_SUCCESS)
        return true;
    showUpgradeError(status);
    return false;
}

void tabAdvancedDlg::showUpgradeError(const UpgradeStatus& status)
{
    Dialogs::message(this, QMessageBox::Critical, progressTitle,
        QStringLiteral("Upgrade failed in state: %1 (%2%). \nError: %3")
            .arg(stateText(status.state, true), QString::number(status.percent),
                QString::fromLatin1(GetErrorStringA(status.errorCode))));
}

bool tabAdvancedDlg::ask(const QString& title, const QString& text)
{
    return Dialogs::message(this, QMessageBox::Warning, title, text, QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes;
}

bool tabAdvancedDlg::showWarningAndContinue()
{
    return ask(progressTitle,
        QStringLiteral("This operation may cause harm to your device.\nDo you want to continue?"));
}

// The SS must not lose its power while it is programmed.
bool tabAdvancedDlg::showWarningAndContinueSS()
{
    BatteryRef battery;
    uint8_t source = 1;
    if (Battery_getPowerSource(battery, &source) == ERR_SUCCESS && source == 0) {
        Dialogs::message(this, QMessageBox::Warning, QStringLiteral("Warning. Battery Power"),
            QStringLiteral("Please use external power when updating SS!"));
        return false;
    }
    return ask(progressTitle,
        QStringLiteral(
            "This operation may cause harm to your device.\nAfter the update, the unit power must be "
            "turned off and then on again.\nDo you want to continue?"));
}

bool tabAdvancedDlg::showWarningAndContinueSSVerify()
{
    return ask(verifyTitle,
        QStringLiteral(
            "After verifying SS, the unit power must be turned off and then on again.\n\nIf you are "
            "verifying after an upgrade, or after another verification, the process may fail in "
            "the state preparing communication. In this case, it may work to retry.\n\nDo you want "
            "to continue?"));
}

void tabAdvancedDlg::tell(const QString& title, const QString& text)
{
    Dialogs::message(this, QMessageBox::Information, title, text);
}

void tabAdvancedDlg::showSuccessMessage()
{
    tell(progressTitle,
        QStringLiteral("Software update succeeded!\nPlease shut down the computer in order for the update to "
                       "take effect."));
}

void tabAdvancedDlg::showSuccessMessageSS()
{
    tell(progressTitle,
        QStringLiteral(
            "Software update succeeded!\nPlease shut down or restart the OS for the update to take "
            "effect."));
}

void tabAdvancedDlg::showSuccessMessageVerify()
{
    tell(verifyTitle, QStringLiteral("Software verification succeeded!"));
}

void tabAdvancedDlg::showSuccessMessageVerifySS()
{
    tell(verifyTitle,
        QStringLiteral(
            "Software verification succeeded!\nPlease shut down or restart the OS to restore SS in "
            "operating state."));
}

// Frees the serial line to the front controller and the SS from the console
// service; whether the service script runs is not checked.
void tabAdvancedDlg::disableSerialConsole()
{
    Dialogs::startDetached(QStringLiteral("sudo"),
        { QStringLiteral("/bin/bash"), QStringLiteral("/usr/bin/stm32_flash_server.sh") });
}

void tabAdvancedDlg::clickedShutdown()
{
    showError(FirmwareUpgrade_shutDown(*m_upgrade), "shutDown");
}

void tabAdvancedDlg::clickedDefaults()
{
    if (!ask(defaultsTitle,
            QStringLiteral("This operation will reset all settings to the factory default state.\n\nThis "
                           "includes settings that are only available from the API and not from "
                           "Zusettings\n\nDo you want to continue?")))
        return;
    WriteDefaultValues();
    Dialogs::message(this, QMessageBox::Warning, defaultsTitle,
        QStringLiteral("Operation complete. Restart the system for all settings to take effect."));
}
