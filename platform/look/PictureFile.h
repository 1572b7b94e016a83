#pragma once

#include <QPixmap>
#include <QString>

#include <functional>
#include <memory>

class QImage;

/// The picture in the file at `path` (of the machine), made to fit a square of `size` logical
/// pixels, sharp on the screen in use. Empty where there is none that can be shown: the file is
/// missing, not a regular one, over 4 MiB, broken, of more than 2048 pixels a side, an SVG that may
/// do harm (see `isSafeSvg`), takes longer than a moment, or is no BMP, GIF, JPEG, PNG, SVG or XPM.
QPixmap loadPicture(const QString& path, int size);

/// The same for the bytes of such a file.
QPixmap readPicture(const QByteArray& bytes, int size);

/// As `loadPicture`, on another thread: a picture from anywhere may take long.
class PictureLoad {
public:
    PictureLoad(const QString& path, int size);

    /// For what `read` gives.
    explicit PictureLoad(const std::function<QImage()>& read);

    /// Waits for the end, but not longer than `milliseconds`. True when the picture has been read,
    /// and when it has taken so long that nobody waits for it any more.
    bool isOver(int milliseconds) const;

    /// Empty where `isOver` is false, or the picture is not to be shown.
    QPixmap picture() const;

private:
    struct Job;

    std::shared_ptr<Job> m_job;
};
