#include "PictureFile.h"

#include "RegularFile.h"
#include "SvgPicture.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageReader>
#include <QSemaphore>
#include <QThreadPool>

namespace {

constexpr qint64 largestFile = 4 * 1024 * 1024;
constexpr int longestMoment = 2000; // ms

/// Pictures come with applications from anywhere, so no decoder is asked that an icon does not
/// need; a compressed SVG is none of these.
QImage readRaster(QByteArray& bytes, int pixels) {
    static const QByteArrayList formats = {"bmp", "gif", "jpeg", "png", "xpm"};
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    if (!formats.contains(reader.format()))
        return QImage();
    const QSize natural = reader.size();
    if (natural.isEmpty() || natural.width() > longestPictureSide ||
        natural.height() > longestPictureSide)
        return QImage();
    reader.setScaledSize(natural.scaled(pixels, pixels, Qt::KeepAspectRatio));
    return reader.read();
}

QImage readImage(QByteArray bytes, int size, qreal ratio) {
    const int pixels = qRound(size * ratio);
    QImage image = looksLikeSvg(bytes) ? readSvg(bytes, pixels) : readRaster(bytes, pixels);
    image.setDevicePixelRatio(ratio);
    return image;
}

QImage loadImage(const QString& path, int size, qreal ratio) {
    QByteArray bytes;
    return readRegularFile(path, largestFile, bytes) == Reading::Whole
               ? readImage(bytes, size, ratio)
               : QImage();
}

} // namespace

struct PictureLoad::Job {
    QImage image;
    QSemaphore end;
    QElapsedTimer clock;
};

PictureLoad::PictureLoad(const std::function<QImage()>& read) : m_job(std::make_shared<Job>()) {
    // Shared, so that a long list does not start a thread for every row; of its own, since what
    // else runs beside the event loop takes long.
    static QThreadPool readers;
    m_job->clock.start();
    readers.start([job = m_job, read] {
        job->image = read();
        job->end.release();
    });
}

PictureLoad::PictureLoad(const QString& path, int size)
    : PictureLoad([path, size, ratio = qGuiApp->devicePixelRatio()] {
          return loadImage(path, size, ratio);
      }) {}

bool PictureLoad::isOver(int milliseconds) const {
    constexpr qint64 longest = 2000;
    if (!m_job->end.tryAcquire(1, milliseconds))
        return m_job->clock.elapsed() > longest;
    m_job->end.release();
    return true;
}

QPixmap PictureLoad::picture() const {
    return m_job->end.available() > 0 ? QPixmap::fromImage(m_job->image) : QPixmap();
}

QPixmap loadPicture(const QString& path, int size) {
    const PictureLoad load(path, size);
    return load.isOver(longestMoment) ? load.picture() : QPixmap();
}

QPixmap readPicture(const QByteArray& bytes, int size) {
    const PictureLoad load([bytes, size, ratio = qGuiApp->devicePixelRatio()] {
        return readImage(bytes, size, ratio);
    });
    return load.isOver(longestMoment) ? load.picture() : QPixmap();
}
