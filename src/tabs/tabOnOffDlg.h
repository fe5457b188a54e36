// The "On/Off" page: what starts the unit, what the on/off button and signal
// do, how long they must act, the longest suspend and start on power-up; all
// written together by Apply.
#ifndef TABONOFFDLG_H
#define TABONOFFDLG_H

#include "tabs/PageSupport.h"

#include <memory>

class QComboBox;
class QLineEdit;
class Ui_tabOnOff;

class tabOnOffDlg : public tabDlg
{
    Q_OBJECT
public:
    explicit tabOnOffDlg(QWidget* parent = nullptr);
    ~tabOnOffDlg() override;

public slots:
    void ApplyClicked();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showAction(
        QComboBox* combo, QWidget* group, Korvane::eErr err, Korvane::PowerAction action, const char* where);
    Korvane::PowerAction actionOf(const QComboBox* combo) const;
    template <typename Value>
    void showTime(QLineEdit* field, QWidget* group, Korvane::eErr err, Value value, const char* where);
    unsigned parsed(const QLineEdit* field, const char* formatMessage);

    std::unique_ptr<Ui_tabOnOff> ui;
    ConfigRef m_config;
    bool m_suspendSupported;
};

#endif // TABONOFFDLG_H
