#include "tabs/PictureLabel.h"

#include <QEvent>
#include <QFileInfo>
#include <QIconEngine>
#include <QImageReader>
#include <QPixmapCache>

#include <algorithm>
#include <utility>

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

namespace
{
const PredecodedPicture* predecoded(const QString& file)
{
    const PredecodedPicture* end = predecodedPictures + predecodedPictureCount;
    const PredecodedPicture* found = std::lower_bound(
        predecodedPictures, end, file, [](const PredecodedPicture& picture, const QString& path) {
            return QLatin1StringView(picture.path) < path;
        });
    return found != end && QLatin1StringView(found->path) == file ? found : nullptr;
}
} // namespace

QPixmap readPicture(const QString& file)
{
    QPixmap pixmap;
    if (QPixmapCache::find(file, &pixmap))
        return pixmap;
    if (const PredecodedPicture* picture = predecoded(file)) {
        // The pixmap draws from the program's own read-only pixels.
        pixmap = QPixmap::fromImage(QImage(reinterpret_cast<const uchar*>(picture->argb), picture->width,
            picture->height, picture->width * 4, QImage::Format_ARGB32_Premultiplied));
    } else {
        QImageReader reader(file, QFileInfo(file).suffix().toLatin1());
        reader.setAutoDetectImageFormat(false);
        pixmap = QPixmap::fromImage(reader.read());
    }
    if (!pixmap.isNull())
        QPixmapCache::insert(file, pixmap);
    return pixmap;
}

namespace
{
// Hands every request to the icon of the file, read at the first of them.
class IconOnUseEngine : public QIconEngine
{
public:
    explicit IconOnUseEngine(QString fileName)
        : m_fileName(std::move(fileName))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        icon().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return icon().pixmap(size, mode, state);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override
    {
        return icon().pixmap(size, scale, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return icon().actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override
    {
        return icon().availableSizes(mode, state);
    }
    QIconEngine* clone() const override { return new IconOnUseEngine(*this); }

private:
    const QIcon& icon()
    {
        if (m_icon.isNull())
            m_icon = QIcon(readPicture(m_fileName));
        return m_icon;
    }

    QString m_fileName;
    QIcon m_icon;
};
} // namespace

QIcon iconOnUse(const QString& fileName)
{
    return QIcon(new IconOnUseEngine(fileName));
}
