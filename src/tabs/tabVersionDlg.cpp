#include "tabs/tabVersionDlg.h"

#include "hwsupport/Version.h"
#include "ui_tabVersionDlg.h"

tabVersionDlg::tabVersionDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(new Ui_tabVersion)
{
    ui->setupUi(this);
}

tabVersionDlg::~tabVersionDlg() = default;

void tabVersionDlg::fill(Getter getter, QLineEdit* field, QLabel* label, Absent absent, const char* prefix)
{
    uint8_t major = 0, minor = 0, release = 0, build = 0;
    const Korvane::eErr result = getter(version, &major, &minor, &release, &build);
    if (result == Korvane::ERR_SUCCESS) {
        field->setText(QStringLiteral("v%1.%2.%3.%4").arg(major).arg(minor).arg(release).arg(build));
    } else if (result == Korvane::ERR_NOT_SUPPORTED && absent != Absent::ShowError) {
        // The component is not fitted. The System Supervisor row keeps its
        // label, the others disappear whole; neither comes back later.
        field->setVisible(false);
        if (absent == Absent::HideRow)
            label->setVisible(false);
        field->setText(QString());
    } else {
        field->setText(QStringLiteral("%1 %2").arg(
            QString::fromLatin1(prefix), QString::fromLatin1(Korvane::GetErrorStringA(result))));
    }
}

void tabVersionDlg::showEvent(QShowEvent* event)
{
    using namespace Korvane;
    fill(AuxVersion_getFPGAVersion, ui->editFPGA, ui->labelFPGA, Absent::HideRow, "getFPGAVersion: Error: ");
    fill(AuxVersion_getSSVersion, ui->editSS, ui->labelSS, Absent::HideField, "getSSVersion: Error: ");
    fill(AuxVersion_getFrontVersion, ui->editFront, ui->labelFront, Absent::HideRow,
        "getFrontVersion: Error: ");
    fill(AuxVersion_getZuAuxVersion, ui->editZuAux, ui->labelZuAux, Absent::ShowError,
        "getZuAuxVersion: Error: ");
    ui->editZuSettings->setText(QStringLiteral("v%1").arg(QLatin1String(zusettingsVersion)));
    fill(AuxVersion_getZuAuxDrvVersion, ui->editZuAuxDrv, ui->labelZuAuxDrv, Absent::HideRow,
        "getZuAuxDrvVersion: Error: ");
    fill(AuxVersion_getOSVersion, ui->editOS, ui->labelOS, Absent::ShowError, "getOSVersion: Error: ");
    tabDlg::showEvent(event);
}
