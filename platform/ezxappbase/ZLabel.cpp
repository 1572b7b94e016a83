#include "ZLabel.h"

#include "Look.h"

#include <QFontMetrics>

namespace {
constexpr int noticeClass = 1;

/// Lets a word that is wider than the smallest screen break: zero-width spaces keep every run
/// without blanks narrower.
QString breakable(const QString& text, const QFont& font) {
    constexpr int widestRun = 128;
    const QFontMetrics metrics(font);
    QString result;
    int run = 0;
    for (const QChar c : text) {
        const int width = metrics.horizontalAdvance(c);
        if (run + width > widestRun && !c.isLowSurrogate() && !c.isMark()) {
            result += QChar(0x200B);
            run = 0;
        }
        result += c;
        run = c.isSpace() ? 0 : run + width;
    }
    return result;
}

} // namespace

ZLabel::ZLabel(const QString& text, QWidget* parent, const char* name, int flags, int widgetClass)
    : QLabel(text, parent, Qt::WindowFlags(flags)) {
    setObjectName(QString::fromLatin1(name));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    const int room = scaled(Measure::overhang);
    setContentsMargins(room, 0, room, 0);
    const bool isNotice = widgetClass == noticeClass;
    setFont(lookFont(isNotice ? Measure::dialogFont : Measure::secondFont,
                     isNotice ? QFont::DemiBold : QFont::Normal));
    setForegroundRole(isNotice ? QPalette::Text : QPalette::PlaceholderText);
}

void ZLabel::setBreakableText(const QString& text) {
    setText(breakable(text, font()));
    setAccessibleName(text);
}
