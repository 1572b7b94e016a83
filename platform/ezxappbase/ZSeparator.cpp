#include "ZSeparator.h"

#include "Look.h"

#include <QPainter>

ZSeparator::ZSeparator(QWidget* parent) : QWidget(parent) {
    setFixedHeight(1);
}

void ZSeparator::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), colours().line);
}
