#include "PictureFile.h"

#include "RegularFile.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>

namespace {

constexpr qint64 largestFile = 4 * 1024 * 1024;
constexpr int longestSide = 4096;

} // namespace

QPixmap loadPicture(const QString& path, int size) {
    QByteArray bytes;
    return readRegularFile(path, largestFile, bytes) ? readPicture(bytes, size) : QPixmap();
}

QPixmap readPicture(QByteArray bytes, int size) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
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
