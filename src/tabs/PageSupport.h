// What the settings pages have in common beyond tabDlg: the library handles a
// page holds for its whole life, the one way of taking a getter's result,
// the polling timer that runs while the page is shown, the On/Off caption of a
// checkable switch, and texts that polling rewrites.
#ifndef PAGESUPPORT_H
#define PAGESUPPORT_H

#include "hwsupport/HwHandle.h"
#include "tabs/tabDlg.h"

#include <QTimer>

#include <initializer_list>

class QAbstractButton;
class QLineEdit;
class QWidget;

// How a page takes a getter's result code. Success: the caller shows the
// value. Code 2 (the unit lacks the setting): the widgets named go away
// without a word, as `Missing` says. Anything else: reported as `where`, in a
// box on the page or, with takeReadInField, as the field's own text.
enum class Read { Value, Missing, Failed };

enum class Missing {
    HideControls, // the widgets, with their labels and a group left empty (hideMissing)
    HideExactly, // the widgets named and nothing else: a row's field and label, or a field alone
    Report, // no quiet way out: code 2 is reported like any other failure
};

Read takeRead(tabDlg* page, Korvane::eErr err, const char* where, std::initializer_list<QWidget*> hide = {},
    Missing missing = Missing::HideControls);

// The same with the failure written into `field` (fieldError) instead of a
// box; a missing setting leaves the field empty.
Read takeReadInField(QLineEdit* field, Korvane::eErr err, const char* where,
    std::initializer_list<QWidget*> hide = {}, Missing missing = Missing::HideControls);

// The usual case: true when the value may be shown.
inline bool acceptRead(
    tabDlg* page, Korvane::eErr err, const char* where, std::initializer_list<QWidget*> hide = {})
{
    return takeRead(page, err, where, hide) == Read::Value;
}

// Hides controls the unit lacks, with what only describes them: the labels
// whose buddy they are, and a group box left with nothing else to show.
// Controls hidden already are passed over.
void hideMissing(std::initializer_list<QWidget*> widgets);

// What a field shows instead of a value it could not read: "<where>: Error: "
// and the library's text, joined by one more blank.
QString fieldError(const char* where, Korvane::eErr err);

// A page's polling timer: calls `tick` on the page every `interval` ms while
// the page is shown, and stops when it is hidden. The page may stop it sooner
// (after a failed read); the next showing starts it again.
class PageTimer : public QTimer
{
public:
    template <typename Page>
    PageTimer(Page* page, int interval, void (Page::*tick)())
        : QTimer(page)
    {
        setInterval(interval);
        connect(this, &QTimer::timeout, page, tick);
        page->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Checks or unchecks a switch button and captions it "On" or "Off" to match.
void showSwitch(QAbstractButton* button, bool on);

// Shows the Latin-1 `text` on a label or line edit unless it shows it
// already: polling pages call this on every tick, and a text that stays the
// same then costs no allocation.
template <class Field> void showLatin1(Field* field, const char* text)
{
    if (field->text() != QLatin1String(text))
        field->setText(QString::fromLatin1(text));
}

// The text a field shows for a reading, formatted again only when the
// reading differs from the last one: a tick that reads the same values
// neither formats nor allocates. `Reading` needs ==.
template <class Reading> class ReadingText
{
public:
    template <class Field, class Format> void show(Field* field, const Reading& reading, Format format)
    {
        if (!m_known || !(reading == m_reading)) {
            m_text = format();
            m_reading = reading;
            m_known = true;
        }
        if (field->text() != m_text)
            field->setText(m_text);
    }

private:
    Reading m_reading {};
    QString m_text;
    bool m_known = false;
};

#endif // PAGESUPPORT_H
