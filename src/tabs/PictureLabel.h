// Pictures read when first used. The picture label of a form names its
// picture file and reads it when it is first polished, which is when its page
// is first shown: a page built hidden decodes no image. Icons likewise wait
// until they are first drawn.
#ifndef PICTURELABEL_H
#define PICTURELABEL_H

#include <QIcon>
#include <QLabel>
#include <QPixmap>

class PictureLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString picture READ picture WRITE setPicture)
public:
    explicit PictureLabel(QWidget* parent = nullptr);

    QString picture() const { return m_picture; }
    // The image file shown once the label is polished, unless a pixmap was
    // set on it meanwhile.
    void setPicture(const QString& file);

    // A size asked for polishes the label first, so that it counts the picture.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;

private:
    void showPicture();

    QString m_picture;
};

// The image of a compiled-in file, read once and then kept in the pixmap
// cache. The PNG pictures of the resources come decoded with the program
// (below); any other file is read by the reader of its suffix's format alone:
// Qt's reader would first load every image format plugin to ask each whether
// it reads the file.
QPixmap readPicture(const QString& file);

// A PNG picture of the resources, decoded when the program was built: its
// resource path, size and premultiplied ARGB pixels, the words of
// QImage::Format_ARGB32_Premultiplied, which pixmaps draw from as they stand.
// The table is sorted by path.
struct PredecodedPicture {
    const char* path;
    int width;
    int height;
    const unsigned int* argb;
};
extern const PredecodedPicture predecodedPictures[];
extern const int predecodedPictureCount;

// An icon whose image file is read when it is first drawn, not when it is
// made: the icons of a page cost nothing until the page is shown. Copies
// share the image once read.
QIcon iconOnUse(const QString& fileName);

#endif // PICTURELABEL_H
