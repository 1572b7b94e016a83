#include "ChoiceRow.h"

#include "Look.h"

#include <QMouseEvent>
#include <QPainter>

ChoiceRow::ChoiceRow(const QString& text, QWidget* parent) : QRadioButton(text, parent) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ChoiceRow::setPixmap(const QPixmap& icon) {
    m_icon = icon;
    update();
}

void ChoiceRow::setSecondText(const QString& text) {
    m_secondText = text;
    setAccessibleDescription(text);
    update();
}

QSize ChoiceRow::sizeHint() const {
    const int height = scaled(Measure::choiceRow);
    return QSize(4 * height, height);
}

bool ChoiceRow::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void ChoiceRow::mousePressEvent(QMouseEvent* event) {
    m_wasChosen = isChecked();
    QRadioButton::mousePressEvent(event);
}

void ChoiceRow::mouseReleaseEvent(QMouseEvent* event) {
    const bool again =
        m_wasChosen && hitButton(event->position().toPoint()) && event->button() == Qt::LeftButton;
    QRadioButton::mouseReleaseEvent(event);
    if (again)
        emit chosenAgain();
}

void ChoiceRow::paintEvent(QPaintEvent*) {
    const bool chosen = isChecked();
    const QColor ink = chosen ? colours().focusText : colours().text;
    const QColor quiet = chosen ? colours().focusText : colours().secondaryText;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(chosen ? colours().focus : colours().surface);
    painter.drawRoundedRect(rect(), Measure::radius, Measure::radius);

    const int padding = 2 * Measure::grid;
    const int mark = scaled(Measure::markerIcon);
    QRect text = rect().adjusted(padding, 0, -padding - mark - padding, 0);
    if (!m_icon.isNull()) {
        const int icon = scaled(Measure::markerIcon) + Measure::grid;
        painter.drawPixmap(QRect(text.left(), (height() - icon) / 2, icon, icon),
                           tinted(m_icon, quiet));
        text.setLeft(text.left() + icon + padding);
    }
    paintTexts(painter, text, ink);

    const QPointF centre(width() - padding - mark / 2.0, height() / 2.0);
    painter.setPen(QPen(quiet, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(centre, mark / 2.0 - 1, mark / 2.0 - 1);
    if (chosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        painter.drawEllipse(centre, mark / 4.0, mark / 4.0);
    }
}

/// Where the text does not fit on a line, both wrap together.
void ChoiceRow::paintTexts(QPainter& painter, const QRect& place, const QColor& ink) const {
    painter.setPen(ink);
    const QFont font = lookFont(Measure::dialogFont, QFont::DemiBold);
    if (m_secondText.isEmpty() || QFontMetrics(font).horizontalAdvance(text()) > place.width()) {
        const QString both = m_secondText.isEmpty() ? text() : text() + '\n' + m_secondText;
        painter.setFont(fittedFont(both, place.size(), Measure::dialogFont, QFont::DemiBold));
        painter.drawText(place, int(Qt::AlignVCenter | Qt::AlignLeft) | Qt::TextWordWrap, both);
        return;
    }
    const QRect upper(place.left(), place.top() + Measure::grid, place.width(),
                      place.height() / 2 - Measure::grid + 1);
    painter.setFont(font);
    painter.drawText(upper, Qt::AlignLeft | Qt::AlignVCenter, text());
    painter.setPen(isChecked() ? colours().focusSecondaryText : colours().secondaryText);
    paintFitted(painter, upper.translated(0, upper.height()), Qt::AlignLeft | Qt::AlignVCenter,
                m_secondText, Measure::secondFont, QFont::Normal);
}
