#include "ZSoftKey.h"

#include "ZOptionsMenu.h"

ZSoftKey::ZSoftKey(const QString& styleName, QWidget* parent, QObject* receiver)
    : SoftKeyBar(parent), m_receiver(receiver) {
    setObjectName(styleName);
    connect(this, &SoftKeyBar::leftPressed, this, &ZSoftKey::pressLeft);
}

void ZSoftKey::setText(Key key, const QString& text) {
    key == Left ? setTexts(text, rightText()) : setTexts(leftText(), text);
}

void ZSoftKey::setTextForOptMenuHide(const QString& left) {
    setText(Left, left);
}

void ZSoftKey::setTextForOptMenuShow(const QString& left, const QString& right) {
    m_leftWhileShown = left;
    m_rightWhileShown = right;
}

void ZSoftKey::setOptMenu(ZOptionsMenu* menu) {
    m_menu = menu;
}

ZOptionsMenu* ZSoftKey::optMenu() const {
    return m_menu;
}

void ZSoftKey::setClickedSlot(const std::function<void()>& slot) {
    connect(this, &SoftKeyBar::rightPressed, m_receiver, slot);
}

void ZSoftKey::pressLeft() {
    if (!m_menu) {
        emit leftChosen();
        return;
    }
    m_menu->setAccessibleName(leftText());
    m_menu->open(m_leftWhileShown, m_rightWhileShown);
}

void ZSoftKey::pressRight() {
    emit rightPressed();
}
