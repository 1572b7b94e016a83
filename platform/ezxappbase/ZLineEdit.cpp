#include "ZLineEdit.h"

#include "Look.h"

#include <QPainter>

ZLineEdit::ZLineEdit(const QString& text, QWidget* parent, int) : QLineEdit(text, parent) {
    setFrame(false);
    setFont(lookFont(Measure::dialogFont));
    const int margin = 2 * Measure::grid;
    setTextMargins(margin, 0, margin, 0);
    QPalette inks = palette();
    inks.setColor(QPalette::Base, Qt::transparent);
    inks.setColor(QPalette::Text, colours().text);
    inks.setColor(QPalette::Highlight, colours().focus);
    inks.setColor(QPalette::HighlightedText, colours().focusText);
    setPalette(inks);
}

QSize ZLineEdit::sizeHint() const {
    return QSize(QLineEdit::sizeHint().width(), scaled(Measure::button));
}

void ZLineEdit::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hasFocus() ? colours().focus : colours().line, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), Measure::grid, Measure::grid);
    painter.end();
    QLineEdit::paintEvent(event);
}
