#include "oneview.h"

#include "Look.h"
#include "PictureFile.h"
#include "ZApplication.h"
#include "ZSoftKey.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <cstdio>

OneView::OneView(const QString& title, QWidget* view, const QString& exitText)
    : ZKbMainWidget(nullptr, nullptr, 0), m_softKey(new ZSoftKey("CST_2A", this, this)) {
    setMainWidgetTitle(title);
    setTitleIcon(
        loadPicture(QCoreApplication::applicationDirPath() + "/icon.svg", Measure::titleIcon));
    getVBoxLayout()->addWidget(view);
    setFocusProxy(view);
    m_softKey->setText(ZSoftKey::Right, exitText);
    m_softKey->setClickedSlot(&QCoreApplication::quit);
    setSoftKey(m_softKey);
}

void OneView::setLeftKey(const QString& text, const std::function<void()>& action) {
    m_softKey->setText(ZSoftKey::Left, text);
    connect(m_softKey, &ZSoftKey::leftChosen, this, action);
}

void OneView::setLeftKey(const QString& text, ZOptionsMenu* menu, const QString& chooseText,
                         const QString& closeText) {
    m_softKey->setTextForOptMenuHide(text);
    m_softKey->setTextForOptMenuShow(chooseText, closeText);
    m_softKey->setOptMenu(menu);
}

int OneView::run() {
    static_cast<ZApplication*>(QCoreApplication::instance())->setMainWidget(this);
    if (ZApplication::hasDisplay())
        return QCoreApplication::exec();
    fputs("there is no display for this program\n", stderr);
    return 1;
}

void OneView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        m_softKey->pressRight();
    else
        ZKbMainWidget::keyPressEvent(event);
}
