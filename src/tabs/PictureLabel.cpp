#include "tabs/PictureLabel.h"

#include <QEvent>
#include <QFileInfo>
#include <QImageReader>
#include <QPixmapCache>

PictureLabel::PictureLabel(QWidget* parent)
    : QLabel(parent)
{
}

void PictureLabel::setPicture(const QString& file)
{
    m_picture = file;
    if (testAttribute(Qt::WA_WState_Polished))
        showPicture();
}

QSize PictureLabel::sizeHint() const
{
    ensurePolished();
    return QLabel::sizeHint();
}

QSize PictureLabel::minimumSizeHint() const
{
    ensurePolished();
    return QLabel::minimumSizeHint();
}

bool PictureLabel::event(QEvent* event)
{
    if (event->type() == QEvent::Polish && pixmap().isNull())
        showPicture();
    return QLabel::event(event);
}

void PictureLabel::showPicture()
{
    if (!m_picture.isEmpty())
        setPixmap(readPicture(m_picture));
}

QPixmap readPicture(const QString& file)
{
    QPixmap pixmap;
    if (QPixmapCache::find(file, &pixmap))
        return pixmap;
    QImageReader reader(file, QFileInfo(file).suffix().toLatin1());
    reader.setAutoDetectImageFormat(false);
    pixmap = QPixmap::fromImage(reader.read());
    if (!pixmap.isNull())
        QPixmapCache::insert(file, pixmap);
    return pixmap;
}
