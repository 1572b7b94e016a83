#include "SvgPicture.h"

#include "SafeSvg.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <array>

// Qt's plug-ins for SVG would do the same, but to ask them means to look at every plug-in that
// there is, which at the start of a small phone costs more than to draw the icons.

QImage drawSvg(QSvgRenderer& renderer, int pixels) {
    const QSize natural = renderer.defaultSize();
    if (!renderer.isValid() || natural.isEmpty() || natural.width() > longestPictureSide ||
        natural.height() > longestPictureSide)
        return QImage();
    QImage image(natural.scaled(pixels, pixels, Qt::KeepAspectRatio),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) // of a drawing that is much longer than wide
        return image;
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        renderer.render(&painter, QRectF(image.rect()));
    }
    return image;
}

QImage readSvg(const QByteArray& text, int pixels) {
    if (!isSafeSvg(text))
        return QImage();
    QSvgRenderer renderer(text);
    return drawSvg(renderer, pixels);
}

bool looksLikeSvg(const QByteArray& bytes) {
    constexpr std::array beginnings = {"<?xml", "<svg", "<!--", "<!DOCTYPE svg"};
    const QByteArray start = bytes.left(16); // there may be a mark of the byte order before it
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](const char* beginning) { return start.contains(beginning); });
}
