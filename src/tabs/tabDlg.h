// Base of every page of the main window.
#ifndef TABDLG_H
#define TABDLG_H

#include "hwsupport/ErrorReport.h"
#include "zuaux2.h"

#include <QDialog>
#include <QString>

class tabDlg : public QDialog
{
    Q_OBJECT
public:
    explicit tabDlg(QWidget* parent = nullptr);

    // Shows "Error(<err>) in <where>: <library text>" unless err is 0.
    void showError(Korvane::eErr err, const char* where);
    // Shows a ready-made text.
    void showError(QString text);

    // Lays the page out when it is first shown, not before: until then its
    // layouts ignore the resize events that a window's first frame sends to
    // every widget in it, shown or not.
    void layOutWhenShown();
    void setVisible(bool visible) override;

protected:
    QString m_caption;

private:
    bool m_layoutHeld = false;
};

#endif // TABDLG_H
