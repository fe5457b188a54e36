// The Version page: versions of the unit's firmware, library, driver,
// operating system and of this program, re-read whenever the page is shown.
#ifndef TABVERSIONDLG_H
#define TABVERSIONDLG_H

#include "tabs/PageSupport.h"

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
    // Shows a component's version in `field`, or its read error there. An
    // absent component (result 2) takes away `hide`, or is an error too.
    void fill(Getter getter, QLineEdit* field, const char* where, std::initializer_list<QWidget*> hide,
        Missing missing = Missing::HideExactly);

    std::unique_ptr<Ui_tabVersion> ui;
    AuxVersionRef version;
};

#endif // TABVERSIONDLG_H
