#include "wraptext.h"

#include <QFontMetrics>
#include <QTextBoundaryFinder>

namespace {

/// The longest beginning of `word`, of whole characters, that fits a line.
qsizetype fittingLength(const QString& word, int width, const QFontMetrics& metrics) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, word);
    qsizetype length = finder.toNextBoundary();
    for (qsizetype next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary()) {
        if (metrics.horizontalAdvance(' ' + word.left(next)) >= width)
            break;
        length = next;
    }
    return length > 0 ? length : word.size();
}

} // namespace

QStringList wrapText(const QString& text, int width, const QFont& font) {
    const QFontMetrics metrics(font);
    QStringList result;
    QString rest = text;
    while (metrics.horizontalAdvance(rest) > width) {
        QStringList words = rest.split(' ', Qt::SkipEmptyParts);
        QString line;
        while (!words.isEmpty() && metrics.horizontalAdvance(line + ' ' + words.first()) < width) {
            const QString word = words.first();
            line += ' ' + word;
            words.removeAll(word);
        }
        result.append(line);
        rest = words.join(' ');
    }
    result.append(rest);
    return result;
}

QString breakWideWords(const QString& text, int width, const QFont& font) {
    const QFontMetrics metrics(font);
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    QStringList pieces;
    for (QString word : text.split(' ', Qt::SkipEmptyParts)) {
        while (metrics.horizontalAdvance(' ' + word) >= width) {
            const qsizetype length = fittingLength(word, width, metrics);
            pieces.append(word.left(length));
            word.remove(0, length);
        }
        if (!word.isEmpty())
            pieces.append(word);
    }
    return pieces.join(' ');
}
