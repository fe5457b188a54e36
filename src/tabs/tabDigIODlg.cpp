#include "tabs/tabDigIODlg.h"

#include "ui_tabDigIODlg.h"

using namespace Korvane;

tabDigIODlg::tabDigIODlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabDigIO>())
    , m_updateTimer(new PageTimer(this, updateIntervalMs, &tabDigIODlg::updateIOValues))
{
    ui->setupUi(this);
    ui->labelStatus->setText(QStringLiteral("Updated every %1 ms").arg(updateIntervalMs));

    QCheckBox* outputs[] = { ui->checkBoxDO_1, ui->checkBoxDO_2, ui->checkBoxDO_3, ui->checkBoxDO_4 };
    for (QCheckBox* box : outputs)
        connect(box, &QCheckBox::clicked, this, &tabDigIODlg::doclicked);

    // The outputs are offered only when the unit takes back what it reports.
    uint8_t mask = 0;
    if (DigIO_getDigIO(m_digIO, &mask) != ERR_SUCCESS || DigIO_setDigIO(m_digIO, mask) != ERR_SUCCESS) {
        dropOutputs();
        return;
    }
    for (int bit = 0; bit < 4; ++bit) {
        outputs[bit]->setCheckable(true);
        outputs[bit]->setEnabled(true);
        outputs[bit]->setChecked(mask & (1 << bit));
    }
}

tabDigIODlg::~tabDigIODlg() = default;

void tabDigIODlg::dropOutputs()
{
    ui->groupBoxStatus_2->setEnabled(false);
    ui->groupBoxStatus_2->hide();
}

void tabDigIODlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    updateIOValues();
}

// The boxes are touched only when the inputs changed.
void tabDigIODlg::updateIOValues()
{
    uint8_t mask = 0;
    const eErr err = DigIO_getDigIO(m_digIO, &mask);
    if (err == ERR_NOT_SUPPORTED) {
        ui->groupBoxStatus->hide();
        return;
    }
    if (err != ERR_SUCCESS) {
        // Polling starts again with the next showing.
        m_updateTimer->stop();
        showError(err, "getDigIO");
        return;
    }
    if (mask == m_inputs)
        return;
    QCheckBox* inputs[] = { ui->checkBoxDI_1, ui->checkBoxDI_2, ui->checkBoxDI_3, ui->checkBoxDI_4 };
    for (int bit = 0; bit < 4; ++bit)
        inputs[bit]->setChecked(mask & (1 << bit));
    m_inputs = mask;
}

void tabDigIODlg::doclicked(bool)
{
    const QCheckBox* outputs[] = { ui->checkBoxDO_1, ui->checkBoxDO_2, ui->checkBoxDO_3, ui->checkBoxDO_4 };
    uint8_t mask = 0;
    for (int bit = 0; bit < 4; ++bit) {
        if (outputs[bit]->isChecked())
            mask |= 1 << bit;
    }
    const eErr err = DigIO_setDigIO(m_digIO, mask);
    if (err == ERR_NOT_SUPPORTED)
        dropOutputs();
    else
        showError(err, "DigIO_setDigIO");
}
