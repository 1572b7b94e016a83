#include "FlatButton.h"

#include "Look.h"

#include <QPainter>

FlatButton::FlatButton(Kind kind, QWidget* parent) : QPushButton(parent), m_kind(kind) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool FlatButton::isSoftKey() const {
    return m_kind == LeftSoftKey || m_kind == RightSoftKey;
}

QSize FlatButton::sizeHint() const {
    const int height = isSoftKey() ? Measure::softKeyBar : Measure::button;
    return QSize(2 * scaled(height), scaled(height));
}

QSize FlatButton::minimumSizeHint() const {
    return sizeHint();
}

void FlatButton::paintEvent(QPaintEvent*) {
    const Palette& palette = colours();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = isSoftKey()            ? palette.bar
                          : m_kind == MainAction ? palette.focus
                                                 : palette.button;
    const QColor ink = isSoftKey()            ? palette.barText
                       : m_kind == MainAction ? palette.focusText
                                              : palette.text;
    const bool pressed = isDown() && !text().isEmpty();
    painter.setPen(Qt::NoPen);
    painter.setBrush(pressed ? palette.tabBar : ground);
    const int radius = isSoftKey() ? 0 : Measure::radius;
    painter.drawRoundedRect(rect(), radius, radius);

    painter.setPen(pressed ? palette.barText : ink);
    const Qt::Alignment side = m_kind == LeftSoftKey    ? Qt::AlignLeft
                               : m_kind == RightSoftKey ? Qt::AlignRight
                                                        : Qt::AlignHCenter;
    paintFitted(painter, rect().adjusted(10, 0, -10, 0), side, text(), Measure::softKeyFont,
                QFont::DemiBold);
}
