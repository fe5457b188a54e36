#include "tabs/tabSysConfDlg.h"

#include "ui_tabSysConfDlg.h"

#include <QIntValidator>
#include <QSignalBlocker>

using namespace Korvane;

namespace
{
constexpr int lowestLimit = -25;
constexpr int highestLimit = 5;

// Fills `target` from the number in `source`, converted and truncated toward
// zero, without `target` converting back.
void convert(const QLineEdit* source, QLineEdit* target, double (*conversion)(int))
{
    bool ok = false;
    const int value = source->text().toInt(&ok, 10);
    const QSignalBlocker quiet(target);
    target->setText(ok ? QString::number(static_cast<int>(conversion(value))) : QString());
}
} // namespace

tabSysConfDlg::tabSysConfDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabSysConf>())
{
    ui->setupUi(this);
    ui->editHeatingTemp->setValidator(new QIntValidator(lowestLimit, highestLimit, this));
    connect(ui->editHeatingTemp, &QLineEdit::textChanged, this, &tabSysConfDlg::UpdateFahrenheit);
    connect(ui->editHeatingTemp_2, &QLineEdit::textChanged, this, &tabSysConfDlg::UpdateCelsius);
    connect(ui->pushButton, &QPushButton::clicked, this, &tabSysConfDlg::ApplyClicked);
}

tabSysConfDlg::~tabSysConfDlg() = default;

void tabSysConfDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);

    int16_t celsius = 0;
    const Read read = takeReadInField(ui->editHeatingTemp, Config_getHeatingTempLimit(m_config, &celsius),
        "getHeatingTempLimit", { ui->groupHeating, ui->pushButton }, Missing::HideExactly);
    if (read == Read::Value) {
        ui->editHeatingTemp->setText(QString::number(celsius));
    } else if (read == Read::Failed) {
        ui->groupHeating->setEnabled(false);
        ui->groupHeating->setToolTip(QStringLiteral("Requires newer SS version"));
    }
}

void tabSysConfDlg::UpdateFahrenheit()
{
    convert(ui->editHeatingTemp, ui->editHeatingTemp_2, [](int celsius) { return celsius * 1.8 + 32; });
}

void tabSysConfDlg::UpdateCelsius()
{
    convert(
        ui->editHeatingTemp_2, ui->editHeatingTemp, [](int fahrenheit) { return (fahrenheit - 32) / 1.8; });
}

void tabSysConfDlg::ApplyClicked()
{
    if (!ui->groupHeating->isEnabled())
        return;
    bool ok = false;
    const int entered = ui->editHeatingTemp->text().toInt(&ok, 10);
    if (!ok) {
        showError(QStringLiteral("Heating temperature - invalid format."));
        return;
    }
    // The range applies to the 16 bits the unit takes: 65511 is -25.
    const auto celsius = static_cast<int16_t>(entered & 0xFFFF);
    if (celsius < lowestLimit || celsius > highestLimit) {
        showError(QStringLiteral("Heating temperature out of allowed range (-25°C to +5°C)."));
        return;
    }
    showError(Config_setHeatingTempLimit(m_config, celsius), "setHeatingTempLimit");
}
