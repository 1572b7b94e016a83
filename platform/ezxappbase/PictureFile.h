#pragma once

#include <QPixmap>
#include <QString>

/// The picture in the file at `path` (of the machine), made to fit a square of `size` logical
/// pixels, sharp on the screen in use. Empty where there is none that can be shown: the file is
/// missing, not a regular one, over 4 MiB, broken, of more than 2048 pixels a side, an SVG that may
/// do harm (see `isSafeSvg`), or no BMP, GIF, JPEG, PNG, SVG or XPM.
QPixmap loadPicture(const QString& path, int size);

/// The same for the bytes of such a file.
QPixmap readPicture(QByteArray bytes, int size);
