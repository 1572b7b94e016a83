#include "MenuRow.h"

#include "Look.h"

#include <QPainter>

namespace {

constexpr int numberWidth = 24;
constexpr int submenuRoom = 14;
constexpr int checkRoom = 22;
constexpr int padding = 8;

} // namespace

MenuRow::MenuRow(const QString& text, int id, QWidget* parent)
    : QPushButton(text, parent), m_id(id) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MenuRow::setHighlighted(bool highlighted) {
    m_highlighted = highlighted;
    update();
}

QSize MenuRow::sizeHint() const {
    const int text = QFontMetrics(lookFont(Measure::menuFont)).horizontalAdvance(this->text());
    return QSize(numberWidth + text + markRoom() + padding + Measure::grid,
                 scaled(Measure::menuRow));
}

int MenuRow::markRoom() const {
    if (isCheckable())
        return scaled(checkRoom);
    return m_submenu ? submenuRoom : 0;
}

QSize MenuRow::minimumSizeHint() const {
    return QSize(1, sizeHint().height()); // a text that does not fit is made smaller
}

void MenuRow::paintEvent(QPaintEvent*) {
    const Palette& palette = colours();
    const bool lit = m_highlighted && isEnabled();
    const QColor ink = !isEnabled() ? palette.disabledText : lit ? palette.focusText : palette.text;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (lit) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.focus);
        painter.drawRoundedRect(rect(), Measure::grid, Measure::grid);
    }
    painter.setPen(lit ? palette.focusSecondaryText : palette.disabledText);
    const QRect number(padding, 0, numberWidth - padding, height());
    paintFitted(painter, number, Qt::AlignLeft, QString::number(m_number % 10), Measure::hintFont,
                QFont::Normal);

    painter.setPen(ink);
    paintFitted(painter, rect().adjusted(numberWidth, 0, -padding - markRoom(), 0), Qt::AlignLeft,
                text(), Measure::menuFont, QFont::Normal);
    const QRect end = rect().adjusted(0, 0, -padding, 0);
    if (m_submenu)
        paintFitted(painter, end, Qt::AlignRight, QString(QChar(0x203A)), Measure::menuFont + 4,
                    QFont::DemiBold);
    if (isCheckable()) {
        const int size = scaled(Measure::checkBox) - Measure::grid;
        const QRect box(end.right() - size + 1, (height() - size) / 2, size, size);
        paintCheckBox(painter, box, isChecked(), lit);
    }
}
