#include "wraptext.h"

#include <QFontMetrics>
#include <QTextBoundaryFinder>

namespace {

/// The longest beginning of `word` that fits a line, of whole characters. Letters that combine
/// count as one character however many they are; where that alone is too wide, it is cut as well.
qsizetype fittingLength(const QString& word, int width, const QFontMetrics& metrics) {
    const auto fits = [&](qsizetype length) {
        return metrics.horizontalAdvance(' ' + word.left(length)) < width;
    };
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, word);
    qsizetype length = 0;
    for (qsizetype next = finder.toNextBoundary(); next > 0 && fits(next);
         next = finder.toNextBoundary())
        length = next;
    if (length > 0)
        return length;
    length = word.at(0).isHighSurrogate() ? 2 : 1;
    for (qsizetype next = length + 1; next < word.size() && fits(next); ++next) {
        if (!word.at(next).isLowSurrogate())
            length = next;
    }
    return length;
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
