#include "app/TitleLabel.h"

#include <QPainter>
#include <QStyle>

namespace
{
// Below this share of its own size the title is cut rather than shrunk further.
constexpr qreal smallestScale = 0.6;
} // namespace

QSize TitleLabel::minimumSizeHint() const
{
    return { 0, QLabel::minimumSizeHint().height() };
}

QString TitleLabel::shownText(QFont& font) const
{
    font = this->font();
    const int room = contentsRect().width();
    const int needed = QFontMetrics(font).horizontalAdvance(text());
    if (needed > room && room > 0) {
        const qreal scale = qMax(smallestScale, qreal(room) / needed);
        if (font.pixelSize() > 0)
            font.setPixelSize(qMax(1, int(font.pixelSize() * scale)));
        else
            font.setPointSizeF(font.pointSizeF() * scale);
    }
    return QFontMetrics(font).elidedText(text(), Qt::ElideRight, room);
}

void TitleLabel::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QFont font;
    const QString shown = shownText(font);
    QPainter painter(this);
    painter.setFont(font);
    style()->drawItemText(
        &painter, contentsRect(), int(alignment()), palette(), isEnabled(), shown, foregroundRole());
}
