#include "PictureFile.h"

#include "RegularFile.h"
#include "SafeSvg.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>

namespace {

constexpr qint64 largestFile = 4 * 1024 * 1024;
constexpr int longestSide = 2048;

/// Pictures come with applications from anywhere, so no decoder is asked that an icon does not
/// need; a compressed SVG is none of these.
bool isSafePicture(const QByteArray& format, const QByteArray& bytes) {
    static const QByteArrayList rasters = {"bmp", "gif", "jpeg", "png", "xpm"};
    return format == "svg" ? isSafeSvg(bytes) : rasters.contains(format);
}

} // namespace

QPixmap loadPicture(const QString& path, int size) {
    QByteArray bytes;
    return readRegularFile(path, largestFile, bytes) ? readPicture(bytes, size) : QPixmap();
}

QPixmap readPicture(QByteArray bytes, int size) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    if (!isSafePicture(reader.format(), bytes))
        return QPixmap();
    const QSize natural = reader.size();
    if (natural.isEmpty() || natural.width() > longestSide || natural.height() > longestSide)
        return QPixmap();
    const qreal ratio = qGuiApp->devicePixelRatio();
    const QSize room(qRound(size * ratio), qRound(size * ratio));
    reader.setScaledSize(natural.scaled(room, Qt::KeepAspectRatio));
    QImage image = reader.read();
    image.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(image);
}
