#pragma once

#include <QByteArray>

/// True where the SVG `text` holds nothing but what draws an icon, and not so much of it that
/// drawing could take long: simple shapes and gradients, at most 64 KiB, 16 of them paths. It is
/// false for whatever leads out of the text or multiplies within it: processing instructions,
/// entities, references to files, images, copies, patterns, filters, text, dashes.
bool isSafeSvg(const QByteArray& text);
