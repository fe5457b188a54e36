#include "tabs/tabAboutDlg.h"

#include "dialogs/Dialogs.h"
#include "hwsupport/HwHandle.h"
#include "report/Sections.h"
#include "report/SystemReport.h"
#include "ui_tabAboutDlg.h"

#include <QFile>
#include <QIcon>
#include <QTextStream>

tabAboutDlg::tabAboutDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(new Ui_tabAbout)
    , initialised(false)
{
    ui->setupUi(this);
    connect(
        ui->comboBoxSelection, &QComboBox::currentIndexChanged, this, &tabAboutDlg::selectionIndexChanged);
    connect(ui->pushButtonSaveAs, &QPushButton::clicked, this, &tabAboutDlg::SaveFileAs);

    const BatteryRef battery;
    ui->textEditInfo->setReadOnly(true);
    ui->comboBoxSelection->insertItem(0, QIcon(), tr("EEPROM data"));
    ui->comboBoxSelection->insertItem(1, QIcon(), tr("Diagnostic data"));
    ui->comboBoxSelection->insertItem(2, QIcon(), tr("ADC values"));
    ui->comboBoxSelection->insertItem(3, QIcon(), tr("CPU board data"));
    ui->comboBoxSelection->insertItem(4, QIcon(), tr("System report"));
    bool present = false;
    if (Korvane::Battery_isBatteryPresent(battery, &present) == Korvane::ERR_SUCCESS && present)
        ui->comboBoxSelection->insertItem(5, QIcon(), tr("Battery data"));

    initialised = true;
    selectionIndexChanged(0);
}

tabAboutDlg::~tabAboutDlg() = default;

void tabAboutDlg::selectionIndexChanged(int index)
{
    if (!initialised)
        return;
    ui->textEditInfo->clear();
    switch (index) {
    case 0:
        ui->textEditInfo->setPlainText(readEeprom());
        break;
    case 1:
        ui->textEditInfo->setPlainText(readDiag());
        break;
    case 2:
        ui->textEditInfo->setPlainText(readAdc());
        break;
    case 3:
        ui->textEditInfo->setPlainText(readCpuBoardInfo());
        break;
    case 4:
        ui->textEditInfo->setPlainText(SystemReport());
        break;
    case 5:
        ui->textEditInfo->setPlainText(readBatteryInfo());
        break;
    default:
        break;
    }
}

void tabAboutDlg::SaveFileAs()
{
    const QString fileName
        = Dialogs::saveFileName(this, tr("Save Data"), QString(), tr("Text Files (*.txt);;All Files (*)"));
    if (fileName.isEmpty())
        return;

    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        Dialogs::message(
            this, QMessageBox::Information, tr("Unable to open file"), file.errorString(), QMessageBox::Ok);
        return;
    }
    // The file holds 8-bit text: the degree sign is the single byte 0xB0.
    QTextStream stream(&file);
    stream.setEncoding(QStringConverter::Latin1);
    stream << ui->textEditInfo->document()->toPlainText();
}

void tabAboutDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
}
