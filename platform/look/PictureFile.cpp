#include "PictureFile.h"

#include "RegularFile.h"
#include "SafeSvg.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageReader>
#include <QSemaphore>
#include <QThreadPool>

namespace {

constexpr qint64 largestFile = 4 * 1024 * 1024;
constexpr int longestSide = 2048;
constexpr int longestMoment = 2000; // ms

/// Pictures come with applications from anywhere, so no decoder is asked that an icon does not
/// need; a compressed SVG is none of these.
bool isSafePicture(const QByteArray& format, const QByteArray& bytes) {
    static const QByteArrayList rasters = {"bmp", "gif", "jpeg", "png", "xpm"};
    return format == "svg" ? isSafeSvg(bytes) : rasters.contains(format);
}

QImage readImage(QByteArray bytes, int size, qreal ratio) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    if (!isSafePicture(reader.format(), bytes))
        return QImage();
    const QSize natural = reader.size();
    if (natural.isEmpty() || natural.width() > longestSide || natural.height() > longestSide)
        return QImage();
    const QSize room(qRound(size * ratio), qRound(size * ratio));
    reader.setScaledSize(natural.scaled(room, Qt::KeepAspectRatio));
    QImage image = reader.read();
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
