// Base of every page of the main window.
#ifndef TABDLG_H
#define TABDLG_H

#include "hwsupport/ErrorReport.h"
#include "zuaux2.h"

#include <QDialog>
#include <QString>

class HeldPolish;

class tabDlg : public QDialog
{
    Q_OBJECT
public:
    explicit tabDlg(QWidget* parent = nullptr);

    // Shows "Error(<err>) in <where>: <library text>" unless err is 0.
    void showError(Korvane::eErr err, const char* where);
    // Shows a ready-made text.
    void showError(QString text);

    // Keeps a hidden page's widgets unpolished until the page is first shown,
    // where they are polished with the style they have then.
    void holdUntilShown();
    void setVisible(bool visible) override;

protected:
    QString m_caption;

private:
    HeldPolish* m_held = nullptr;
};

#endif // TABDLG_H
