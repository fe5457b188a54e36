// Base of every page of the main window, and the error presentation shared by
// pages and by the windowless factory-defaults mode.
#ifndef TABDLG_H
#define TABDLG_H

#include "zuaux2.h"

#include <QDialog>
#include <QString>

class tabDlg : public QDialog {
    Q_OBJECT
public:
    explicit tabDlg(QWidget* parent = nullptr);

    // Shows "Error(<err>) in <where>: <library text>" unless err is 0.
    void showError(Korvane::eErr err, const char* where);
    // Shows a ready-made text.
    void showError(QString text);

protected:
    QString m_caption;
};

// As tabDlg::showError without a parent, silent for 0 and for 2 (a setting the
// unit lacks); meant for sequences of writes that go on after a failure.
void showErr(Korvane::eErr err, const char* where);

// Sleeps `milliseconds`; true when the sleep was not interrupted.
bool OSSleep(unsigned long milliseconds);

// "Error(<err>) in <where>: <library text>"
QString errorText(Korvane::eErr err, const char* where);

#endif // TABDLG_H
