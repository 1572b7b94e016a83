#pragma once

#include <QImage>

class QSvgRenderer;

/// What `renderer` has loaded, drawn to fit a square of `pixels`, on nothing. Empty where that is
/// nothing, or more than `longestPictureSide` a side by itself.
QImage drawSvg(QSvgRenderer& renderer, int pixels);

/// The same for the text of a file from anywhere; empty, too, where it may do harm (see
/// `isSafeSvg`).
QImage readSvg(const QByteArray& text, int pixels);

/// True where what begins so is an SVG, or no picture at all.
bool looksLikeSvg(const QByteArray& bytes);

/// The same limit for every kind of picture.
constexpr int longestPictureSide = 2048;
