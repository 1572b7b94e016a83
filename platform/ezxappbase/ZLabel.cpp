#include "ZLabel.h"

#include "Look.h"

namespace {
constexpr int noticeClass = 1;
}

ZLabel::ZLabel(const QString& text, QWidget* parent, const char* name, int flags, int widgetClass)
    : QLabel(text, parent, Qt::WindowFlags(flags)) {
    setObjectName(QString::fromLatin1(name));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    const bool isNotice = widgetClass == noticeClass;
    setFont(lookFont(isNotice ? Measure::dialogFont : Measure::secondFont,
                     isNotice ? QFont::DemiBold : QFont::Normal));
    QPalette inks = palette();
    inks.setColor(QPalette::WindowText, isNotice ? colours().text : colours().secondaryText);
    inks.setColor(QPalette::Text, colours().text);
    setPalette(inks);
}
