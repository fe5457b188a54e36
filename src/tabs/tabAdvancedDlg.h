// The "Advanced" page: programs or verifies the firmware of the FPGA, the
// front controller and the supervisory controller (SS) from a file, under a
// progress dialog; shuts the unit down; restores the factory settings.
#ifndef TABADVANCEDDLG_H
#define TABADVANCEDDLG_H

#include "tabs/PageSupport.h"

#include <memory>
#include <optional>

namespace Dialogs
{
class Progress;
}
class Ui_tabAdvanced;

class tabAdvancedDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabAdvancedDlg(QWidget* parent = nullptr);
    ~tabAdvancedDlg() override;

    // A device whose firmware the page programs or verifies.
    struct Target;

    // Whether the program runs as root (real user id 0), which an SS run
    // needs. Tests must see both answers whoever runs them, and a process
    // that gave up root could not take it back for the next test: so the
    // question is a pointer they can set.
    static bool (*runsAsRoot)();

public slots:
    void clickedOpenFile();
    void checkBoxStateChanged(int state);
    void clickedProgFPGA();
    void clickedProgFront();
    void clickedProgSS();
    void clickedShutdown();
    void clickedDefaults();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void program(const Target& target);
    bool isFileNameOk(const QString& file, const QString& suffix);
    std::unique_ptr<Dialogs::Progress> getProgressDlg();
    bool showUpdateProgress();
    void showUpgradeError(const Korvane::UpgradeStatus& status);
    bool ask(const QString& title, const QString& text);
    bool showWarningAndContinue();
    bool showWarningAndContinueSS();
    bool showWarningAndContinueSSVerify();
    void tell(const QString& title, const QString& text);
    void showSuccessMessage();
    void showSuccessMessageSS();
    void showSuccessMessageVerify();
    void showSuccessMessageVerifySS();
    void disableSerialConsole();

    std::unique_ptr<Ui_tabAdvanced> ui;
    // Taken afresh before each run.
    std::optional<FirmwareUpgradeRef> m_upgrade;
    // Where the next file chooser starts: the folder of the last file chosen.
    static QString opendir;
};

#endif // TABADVANCEDDLG_H
