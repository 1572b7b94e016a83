#include "zBaseGUI.h"

#include "ZGlobal.h"
#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZScreen.h"
#include "ZSoftKey.h"
#include "language.h"
#include "packageinfo.h"
#include "paths.h"

#include <QApplication>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>

namespace {

constexpr int scrollStep = 20;
constexpr int tabSkin = 63;
constexpr int listSkin = 40;
constexpr int firstRefreshDelay = 10; // ms; the empty window is on the screen by then
constexpr int idleAfter = 500;        // ms
constexpr int announcedDelay = 10;    // ms; the question has left the screen by then
const QString packageIcon = "Mpkgbox_Small.g";

} // namespace

zBaseGUI::zBaseGUI() : ZKbMainWidget(nullptr, nullptr, 0) {
    puts("DEBUG:: zBaseGUI Contructor");
    setMainWidgetTitle("Quiver");
    setTitleIcon(m_icons.getIcon(packageIcon, Measure::titleIcon));
    setWindowIcon(m_icons.getIcon("Mpkgbox_Big.g", Measure::noticeIcon));

    m_tabs = new ZNavTabWidget(this, tabSkin);
    m_tabs->setGeometry(QRect(m_tabs->mapFromGlobal(ZGlobal::getContentR().topLeft()),
                              ZGlobal::getContentR().size()));
    m_tabs->stopNextWhenKeyRepeat(false);
    getVBoxLayout()->addWidget(m_tabs);
    m_appList = addListPage("fm_small.bmp", tr("all"));
    m_packageList = addListPage(packageIcon, tr("zpk"));
    m_packageList->setCompact(true);

    connect(m_tabs, &ZNavTabWidget::selected, this, &zBaseGUI::tabSelected);
    connect(m_appList, &ZListBox::selected, this, &zBaseGUI::app_selected);
    connect(m_packageList, &ZListBox::highlighted, this, &zBaseGUI::zpk_highlighted);
    connect(m_packageList, &ZListBox::selected, this, &zBaseGUI::zpk_selected);
    connect(m_packageList->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &zBaseGUI::markNextPackage);
    connect(m_appList, &ZListBox::checksChanged, this, &zBaseGUI::showCheckedCount);
    makeMenus();
    makeSoftKey();
    setFocusProxy(m_appList);
    m_idle.setSingleShot(true);
    m_idle.setInterval(idleAfter);
    connect(&m_idle, &QTimer::timeout, this, &zBaseGUI::yieldPhone);
    qApp->installEventFilter(this);
    QTimer::singleShot(firstRefreshDelay, this, &zBaseGUI::firstRefresh);
    puts("DEBUG:: zBaseGUI Contructor - End");
}

zBaseGUI::~zBaseGUI() {
    puts("DEBUG:: zBaseGUI Destructor");
}

ZListBox* zBaseGUI::addListPage(const QString& iconName, const QString& label) {
    auto* list = new ZListBox("%I%M", m_tabs, listSkin);
    list->setAccessibleName(label);
    list->verticalScrollBar()->setSingleStep(scrollStep);
    m_tabs->addTab(list, m_icons.getIcon(iconName, Measure::tabIcon), label);
    return list;
}

int zBaseGUI::getStepInScrollPanel() const {
    return scrollStep;
}

bool zBaseGUI::showToolBar() const {
    return false;
}

QSize zBaseGUI::sizeHint() const {
    return geometry().size();
}

void zBaseGUI::firstRefresh() {
    ZScreen::instance().waitUntilPainted();
    loadFolder(SdPresent ? Path::cardMount : Path::phoneFiles);
    refreshList(true);
    m_idle.start();
}

void zBaseGUI::announce(void (zBaseGUI::*work)()) {
    m_isAnnounced = true;
    QTimer::singleShot(announcedDelay, this, [this, work] {
        m_isAnnounced = false;
        (this->*work)();
    });
}
