// The phone between the window and other programs.
#include "Waiting.h"
#include "ZScreen.h"
#include "dialogs.h"
#include "discovery.h"
#include "language.h"
#include "lock.h"
#include "zBaseGUI.h"

#include <QApplication>

bool zBaseGUI::eventFilter(QObject* watched, QEvent* event) {
    const bool isActivated = event->type() == QEvent::WindowActivate && !m_hasPhone;
    if (isActivated && watched == &ZScreen::instance())
        QTimer::singleShot(0, this, &zBaseGUI::showChanges);
    if (!isInput(*event) && event->type() != QEvent::Close)
        return ZKbMainWidget::eventFilter(watched, event);
    const bool isRelease =
        event->type() == QEvent::KeyRelease || event->type() == QEvent::MouseButtonRelease;
    const bool isTrue = m_isAnnounced || m_hasPhone || m_isTaking || (!isRelease && takePhone());
    if (m_isAnnounced || !isTrue) {
        event->ignore();
        return true;
    }
    m_idle.start();
    return ZKbMainWidget::eventFilter(watched, event);
}

bool zBaseGUI::takePhone() {
    constexpr int patience = 500; // ms
    m_isTaking = true;
    m_hasPhone = lockPhone(patience);
    const bool isTrue = m_hasPhone && appsState() == m_appsState;
    if (!m_hasPhone)
        showNotice("Quiver", ::tr("TXT_PHONE_BUSY"));
    else if (!isTrue) {
        loadFolder(QString());
        refreshList(true);
    }
    m_isTaking = false;
    m_idle.start();
    return isTrue;
}

/// Where something lies over the list, the next key comes before that is closed.
void zBaseGUI::yieldPhone() {
    if (isWorking())
        return m_idle.start();
    if (!m_hasPhone || m_multiSelect || ZScreen::instance().isCovered())
        return;
    m_appsState = appsState();
    m_hasPhone = false;
    unlockPhone();
}

/// When the user comes back to the window, which may not be the next to press a key in.
void zBaseGUI::showChanges() {
    if (!m_hasPhone && !m_isTaking && appsState() != m_appsState && lockPhone(0))
        takePhone();
}
