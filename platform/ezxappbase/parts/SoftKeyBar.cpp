#include "SoftKeyBar.h"

#include "FlatButton.h"
#include "Look.h"

#include <QHBoxLayout>
#include <QPainter>

SoftKeyBar::SoftKeyBar(QWidget* parent)
    : QWidget(parent), m_left(new FlatButton(FlatButton::LeftSoftKey, this)),
      m_right(new FlatButton(FlatButton::RightSoftKey, this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_left);
    row->addWidget(m_right);
    setFixedHeight(scaled(Measure::softKeyBar));
    setTexts(QString(), QString());
    connect(m_left, &QPushButton::clicked, this, &SoftKeyBar::leftPressed);
    connect(m_right, &QPushButton::clicked, this, &SoftKeyBar::rightPressed);
}

QString SoftKeyBar::leftText() const {
    return m_left->text();
}

QString SoftKeyBar::rightText() const {
    return m_right->text();
}

void SoftKeyBar::setTexts(const QString& left, const QString& right) {
    m_left->setText(left);
    m_right->setText(right);
    m_left->setEnabled(!left.isEmpty());
    m_right->setEnabled(!right.isEmpty());
}

void SoftKeyBar::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), colours().bar);
}
