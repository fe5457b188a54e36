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

void tabVersionDlg::fill(
    Getter getter, QLineEdit* field, const char* where, std::initializer_list<QWidget*> hide, Missing missing)
{
    uint8_t major = 0, minor = 0, release = 0, build = 0;
    if (takeReadInField(field, getter(version, &major, &minor, &release, &build), where, hide, missing)
        == Read::Value)
        field->setText(QStringLiteral("v%1.%2.%3.%4").arg(major).arg(minor).arg(release).arg(build));
}

void tabVersionDlg::showEvent(QShowEvent* event)
{
    using namespace Korvane;
    // A component that is not fitted takes its row away, except the System
    // Supervisor, whose label stays; API and OS always show something.
    fill(AuxVersion_getFPGAVersion, ui->editFPGA, "getFPGAVersion", { ui->editFPGA, ui->labelFPGA });
    fill(AuxVersion_getSSVersion, ui->editSS, "getSSVersion", { ui->editSS });
    fill(AuxVersion_getFrontVersion, ui->editFront, "getFrontVersion", { ui->editFront, ui->labelFront });
    fill(AuxVersion_getZuAuxVersion, ui->editZuAux, "getZuAuxVersion", {}, Missing::Report);
    ui->editZuSettings->setText(QStringLiteral("v%1").arg(QLatin1String(zusettingsVersion)));
    fill(AuxVersion_getZuAuxDrvVersion, ui->editZuAuxDrv, "getZuAuxDrvVersion",
        { ui->editZuAuxDrv, ui->labelZuAuxDrv });
    fill(AuxVersion_getOSVersion, ui->editOS, "getOSVersion", {}, Missing::Report);
    tabDlg::showEvent(event);
}
