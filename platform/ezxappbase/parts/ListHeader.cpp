#include "ListHeader.h"

#include "Look.h"

#include <QPainter>

ListHeader::ListHeader(QWidget* parent) : QWidget(parent) {
    hide();
}

void ListHeader::setText(const QString& text) {
    m_text = text;
    setAccessibleName(text);
    update();
}

void ListHeader::paintEvent(QPaintEvent*) {
    constexpr int margin = 2 * Measure::grid;
    QPainter painter(this);
    painter.fillRect(rect(), colours().header);
    painter.setFont(lookFont(Measure::secondFont));
    painter.setPen(colours().secondaryText);
    const QRect place = rect().adjusted(margin + 2, 0, -margin, 0);
    painter.drawText(place, int(Qt::AlignVCenter) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(m_text, Qt::ElideMiddle, place.width()));
}
