#include "ZOverlay.h"

#include "SoftKeyBar.h"
#include "ZScreen.h"

#include <QEvent>
#include <QScrollArea>
#include <QScroller>

ZOverlay::ZOverlay(QWidget* parent)
    : QWidget(parent ? parent : &ZScreen::instance()), m_softKeys(new SoftKeyBar(this)) {
    hide();
    setFocusPolicy(Qt::StrongFocus);
}

QRect ZOverlay::area() const {
    return rect().adjusted(0, 0, 0, -m_softKeys->height());
}

QScrollArea* ZOverlay::makeScrollArea(QWidget* content, QWidget* parent) {
    auto* area = new QScrollArea(parent);
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    QScroller::grabGesture(area->viewport(), QScroller::TouchGesture);
    return area;
}

bool ZOverlay::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        // Nothing below may see what was meant for the overlay.
        QWidget::event(event);
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

bool ZOverlay::focusNextPrevChild(bool) {
    return true;
}

void ZOverlay::showEvent(QShowEvent*) {
    // The window knows its focus also before the display has made it the active one.
    m_focusBefore = window()->focusWidget();
    setGeometry(parentWidget()->rect());
    raise();
    setFocus();
}

void ZOverlay::hideEvent(QHideEvent*) {
    if (m_focusBefore)
        m_focusBefore->setFocus();
}

void ZOverlay::resizeEvent(QResizeEvent*) {
    const int bar = m_softKeys->height();
    m_softKeys->setGeometry(0, height() - bar, width(), bar);
}
