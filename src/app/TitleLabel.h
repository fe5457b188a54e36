// The page title in the title bar. Its text stays the page's whole title; what
// it paints fits the room the logo and the buttons leave it: the title in a
// smaller font while that is still readable, cut short with an ellipsis
// beyond. A long title never pushes on the buttons or spills under them.
#ifndef TITLELABEL_H
#define TITLELABEL_H

#include <QLabel>

class TitleLabel : public QLabel
{
    Q_OBJECT
public:
    using QLabel::QLabel;

    // Laid out by the room it gets, not by the length of the title.
    QSize minimumSizeHint() const override;

    // What is painted: the text, shortened if need be, and `font` set to the
    // font it is painted in.
    QString shownText(QFont& font) const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

#endif // TITLELABEL_H
