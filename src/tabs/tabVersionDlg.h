// The Version page: versions of the unit's firmware, library, driver,
// operating system and of this program, re-read whenever the page is shown.
#ifndef TABVERSIONDLG_H
#define TABVERSIONDLG_H

#include "hwsupport/HwHandle.h"
#include "tabs/tabDlg.h"

#include <memory>

class QLabel;
class QLineEdit;
class Ui_tabVersion;

class tabVersionDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabVersionDlg(QWidget* parent = nullptr);
    ~tabVersionDlg() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Getter = Korvane::eErr (*)(Korvane::AuxVersionHandle, uint8_t*, uint8_t*, uint8_t*, uint8_t*);
    // What a row shows when its component is absent (result 2).
    enum class Absent { HideRow, HideField, ShowError };

    void fill(Getter getter, QLineEdit* field, QLabel* label, Absent absent, const char* prefix);

    std::unique_ptr<Ui_tabVersion> ui;
    AuxVersionRef version;
};

#endif // TABVERSIONDLG_H
