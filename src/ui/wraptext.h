#pragma once

#include <QFont>
#include <QStringList>

/// Breaks `text` into lines narrower than `width` pixels in `font`, at blanks. Lines before the
/// last begin with a blank, and a word that has been placed is left out wherever it comes again; a
/// text that fits is one line, unchanged. Never ends where a word with a blank before it is not
/// narrower than `width`: see `breakWideWords`.
QStringList wrapText(const QString& text, int width, const QFont& font);

/// `text` with every word that `wrapText` could not place cut into pieces that it can.
QString breakWideWords(const QString& text, int width, const QFont& font);
