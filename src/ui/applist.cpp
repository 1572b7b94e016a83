#include "Bytes.h"
#include "PhoneRoot.h"
#include "Waiting.h"
#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "discovery.h"
#include "entries.h"
#include "language.h"
#include "upgrade.h"
#include "zBaseGUI.h"

#include <sys/stat.h>

namespace {

constexpr int textWidth = 50;
constexpr int showPriority = 2;

bool isFile(const QString& path) {
    struct stat info = {};
    return stat(toBytes(path).constData(), &info) == 0 && !S_ISDIR(info.st_mode);
}

ZListItem nameLine(const ZPK_App& app, const QPixmap& place) {
    return {app.shownName(), QString(), place, textWidth, showPriority};
}

} // namespace

/// What rows show beside their words, looked for once for all of them.
struct zBaseGUI::RowIcons {
    QPixmap onPhone;
    QPixmap onCard;
    QPixmap inMenu;
    QPixmap application;

    const QPixmap& placeOf(const ZPK_App& app) const {
        return app.location == phoneMemory ? onPhone : onCard;
    }
};

zBaseGUI::RowIcons zBaseGUI::rowIcons() const {
    const auto marker = [&](const char* name) {
        return m_icons.getIcon(name, Measure::markerIcon);
    };
    return {marker("ctact_mobile_tab.bmp"), marker("fm_memory_card_tab.bmp"),
            marker("cli_ptt_favorite_small.bmp"), m_icons.getIcon("yes_no_pop.bmp")};
}

bool zBaseGUI::ViewFilter::shows(const ZPK_App& app) const {
    if (app.location == memoryCard && !card)
        return false;
    if (app.location == phoneMemory && !phone)
        return false;
    return !registeredOnly || app.registeredInMenu;
}

zBaseGUI::ViewFilter zBaseGUI::viewFilter() {
    const ZOptionsMenu* menu = getViewMenu();
    return {menu->isItemChecked(OnCardEntry), menu->isItemChecked(OnPhoneEntry),
            menu->isItemChecked(OnlyRegisteredEntry)};
}

bool zBaseGUI::refreshList(bool showProgress) {
    setBusy(true);
    if (showProgress) {
        setMainWidgetTitle(::tr("TXT_LOADING"));
        // The list and its records go on belonging together until all have been found.
        Apps apps;
        runBeside([&apps] {
            mendUpgrades(); // a card may have come back since the start
            apps = findApps();
            return 0;
        });
        AppMap = std::move(apps);
    }
    setMainWidgetTitle(::tr("TXT_REFRESHING"));
    m_appList->clear();
    const ViewFilter filter = viewFilter();
    const RowIcons icons = rowIcons();
    for (const auto& [key, app] : AppMap) {
        if (filter.shows(*app))
            appendApp(*app, icons);
    }
    enableMainMenu();
    showEmptyNotice();
    showCheckedCount();
    if (m_appList->count() > 0)
        m_appList->setCurrentItem(0);
    if (m_tabs->currentPageIndex() == AppsPage)
        m_appList->viewport()->update();
    setBusy(false);
    setMainWidgetTitle("Quiver");
    return true;
}

void zBaseGUI::appendApp(const ZPK_App& app, const RowIcons& icons) {
    auto* item = new ZListBoxItem(m_appList);
    const QString icon = hostPath(app.path + '/' + app.icon);
    if (isFile(icon))
        item->setPixmapFile(m_appList->iconColumn(), icon, icons.application);
    else
        item->setPixmap(m_appList->iconColumn(), icons.application);

    const QPixmap menuIcon = app.registeredInMenu ? icons.inMenu : QPixmap();
    const int column = m_appList->textColumn();
    item->appendSubItem(column, nameLine(app, icons.placeOf(app)));
    item->appendSubItem(column, {QString(), app.author, menuIcon, textWidth, showPriority});
    m_appList->insertItem(item, -1);
}

/// Refresh and about stay as they are; the view stays in reach when its filters hide every row.
void zBaseGUI::enableMainMenu() {
    const bool nonEmpty = m_appList->count() > 0;
    ZOptionsMenu* menu = getMainMenu();
    menu->setItemEnabled(MoveEntry, nonEmpty && SdPresent);
    for (int id = RenameEntry; id <= MultiSelectEntry; ++id)
        menu->setItemEnabled(id, nonEmpty);
    menu->setItemEnabled(ViewEntry, !AppMap.empty());
}

void zBaseGUI::showEmptyNotice() {
    const bool hidden = !AppMap.empty();
    m_appList->setEmptyNotice(m_icons.getIcon("Mpkgbox_Big.g", Measure::noticeIcon),
                              ::tr(hidden ? "TXT_ALL_HIDDEN" : "TXT_NO_APPS"),
                              ::tr(hidden ? "TXT_ALL_HIDDEN_HINT" : "TXT_NO_APPS_HINT"), 0);
}

int zBaseGUI::checkedCount() const {
    int checked = 0;
    for (int row = 0; row < m_appList->count(); ++row)
        checked += m_appList->item(row)->isChecked() ? 1 : 0;
    return checked;
}

void zBaseGUI::showCheckedCount() {
    setTitleBadge(m_multiSelect ? QString::number(checkedCount()) : QString());
}

void zBaseGUI::updateRow(int row, const ZPK_App& app) {
    if (ZListBoxItem* item = m_appList->item(row))
        item->setSubItem(m_appList->textColumn(), nameLine(app, rowIcons().placeOf(app)));
}

void zBaseGUI::removeRow(int row) {
    m_appList->removeItem(row);
    m_appList->setCurrentItem(qMin(row, m_appList->count() - 1));
    enableMainMenu();
    showEmptyNotice();
}

/// Only with both locations in view does a moved application stay in the list.
bool zBaseGUI::isMovedAppShown() {
    const ViewFilter filter = viewFilter();
    return filter.card && filter.phone && SdPresent;
}

ZPK_App* zBaseGUI::getApp(int row) {
    const ViewFilter filter = viewFilter();
    int visible = 0;
    for (const auto& [key, app] : AppMap) {
        if (filter.shows(*app) && visible++ == row)
            return app.get();
    }
    return nullptr;
}

/// -1 where the view does not show it.
int zBaseGUI::rowOf(const ZPK_App& app) {
    int row = m_appList->count() - 1;
    while (row >= 0 && getApp(row) != &app)
        --row;
    return row;
}

ZPK_App* zBaseGUI::currentApp() {
    return getApp(m_appList->currentItem());
}

void zBaseGUI::mainSubOptM_ViewSDPH() {
    refreshList(false);
}

void zBaseGUI::mainSubOptM_ViewRegistered() {
    refreshList(false);
}

void zBaseGUI::mainOptM_Refresh() {
    refreshList(true);
}
