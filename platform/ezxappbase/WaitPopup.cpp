#include "WaitPopup.h"

#include "SoftKeyBar.h"
#include "WaitBar.h"
#include "Waiting.h"
#include "ZLabel.h"

#include <QKeyEvent>

WaitPopup::WaitPopup(const Texts& texts)
    : ZPopup(1), m_texts(texts), m_label(new ZLabel(texts.wait, this, nullptr, 0, 1)) {
    m_label->setAlignment(Qt::AlignHCenter);
    insertChild(m_label, -1);
    insertChild(new WaitBar(this), -1);
    setAutoDismissTime(1);
    connect(softKeys(), &SoftKeyBar::rightPressed, this, cancelWork);
    m_timer.setInterval(frameMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &WaitPopup::showState);
    hide();
}

void WaitPopup::showState() {
    setSoftKeys(QString(), canCancelWork() ? m_texts.cancel : QString());
    m_label->setText(isCancellingWork() ? m_texts.cancelling : m_texts.wait);
}

void WaitPopup::keyPressEvent(QKeyEvent* event) {
    const bool cancels = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Escape ||
                         event->key() == Qt::Key_Backspace;
    if (!cancels)
        ZPopup::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        cancelWork();
}

void WaitPopup::showEvent(QShowEvent* event) {
    ZPopup::showEvent(event);
    showState();
    m_timer.start();
}

void WaitPopup::hideEvent(QHideEvent* event) {
    m_timer.stop();
    ZPopup::hideEvent(event);
}
