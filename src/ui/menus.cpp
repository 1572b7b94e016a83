#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "ZSoftKey.h"
#include "language.h"
#include "zBaseGUI.h"

#include <cstdio>

namespace {

constexpr int menuSkin = 55;

/// One entry of a menu; its id is its place in the table.
struct Entry {
    const char* key;
    const char* slot; ///< null for an entry that does nothing or opens a submenu
    bool enabled = true;
    ZOptionsMenu* submenu = nullptr;
};

struct CheckEntry {
    const char* key;
    const char* slot;
    bool enabled;
    bool checked;
};

ZOptionsMenu* makeMenu(QWidget* parent) {
    return new ZOptionsMenu(QRect(), parent, nullptr, 0, menuSkin, true);
}

int addEntry(ZOptionsMenu* menu, const Entry& entry) {
    const int id = menu->count();
    menu->insertItem(::tr(entry.key), entry.submenu, QPixmap(), entry.enabled, id, id);
    return id;
}

int addEntry(ZOptionsMenu* menu, const CheckEntry& entry) {
    const int id = menu->count();
    menu->insertItem(::tr(entry.key), QPixmap(), nullptr, entry.enabled, true, entry.checked, id,
                     id);
    return id;
}

template<typename AnyEntry, size_t size>
void fillMenu(ZOptionsMenu* menu, QObject* receiver, const AnyEntry (&entries)[size]) {
    for (const AnyEntry& entry : entries) {
        const int id = addEntry(menu, entry);
        if (entry.slot)
            menu->connectItem(id, receiver, entry.slot);
    }
}

} // namespace

ZSoftKey* zBaseGUI::getSoftKey() {
    if (m_softKey)
        return m_softKey;
    m_softKey = new ZSoftKey(tr("CST_2A"), this, this);
    m_softKey->setText(ZSoftKey::Left, ::tr("SK_OPT"));
    m_softKey->setText(ZSoftKey::Right, ::tr("SK_EXIT"));
    m_softKey->setTextForOptMenuHide(::tr("SK_OPT"));
    m_softKey->setTextForOptMenuShow(::tr("SK_SEL"), ::tr("SK_CANCEL"));
    m_softKey->setOptMenu(getCurrentMenu());
    m_softKey->setClickedSlot(SLOT(quit()));
    return m_softKey;
}

ZOptionsMenu* zBaseGUI::getMainMenu() {
    if (m_mainMenu)
        return m_mainMenu;
    m_mainMenu = makeMenu(getSoftKey());
    const Entry entries[] = {
        {"APP_MOVE", SLOT(mainOptM_Move())},
        {"APP_RENAME", SLOT(mainOptM_Rename())},
        {"APP_DELETE", SLOT(mainOptM_Delete())},
        {"APP_PROPERTIES", SLOT(mainOptM_Properties())},
        {"APP_UN_REGISTER_APP_MENU", SLOT(mainOptM_RegisterAppMenu())},
        {"APP_SAVE_AS_ZPK_TO", nullptr, true, getSaveAsMenu()},
        {"APP_VIEW", nullptr, true, getViewMenu()},
        {"APP_MULTI_SELECT", SLOT(mainOptM_MultiSelect())},
        {"APP_REFRESH", SLOT(mainOptM_Refresh())},
        {"APP_ABOUT", SLOT(OptM_About())},
    };
    fillMenu(m_mainMenu, this, entries);
    return m_mainMenu;
}

ZOptionsMenu* zBaseGUI::getSaveAsMenu() {
    if (m_saveAsMenu)
        return m_saveAsMenu;
    m_saveAsMenu = makeMenu(this);
    const Entry entries[] = {
        {"APP_SAVE_IN_SD", SLOT(mainSubOptM_SaveAs_SD()), SdPresent},
        {"APP_SAVE_IN_PH", SLOT(mainSubOptM_SaveAs_PH())},
        {"APP_SAVE_IN_FM_LOC", SLOT(mainSubOptM_SaveAs_FM())},
    };
    fillMenu(m_saveAsMenu, this, entries);
    return m_saveAsMenu;
}

ZOptionsMenu* zBaseGUI::getViewMenu() {
    if (m_viewMenu)
        return m_viewMenu;
    m_viewMenu = makeMenu(this);
    const CheckEntry entries[] = {
        {"APP_APPS_IN_SD", SLOT(mainSubOptM_ViewSDPH()), SdPresent, true},
        {"APP_APPS_IN_PH", SLOT(mainSubOptM_ViewSDPH()), true, true},
        {"APP_ONLY_REGISTERED_APPS", SLOT(mainSubOptM_ViewRegistered()), true, false},
    };
    fillMenu(m_viewMenu, this, entries);
    return m_viewMenu;
}

ZOptionsMenu* zBaseGUI::getMultiSelectMenu() {
    if (m_multiSelectMenu)
        return m_multiSelectMenu;
    m_multiSelectMenu = makeMenu(this);
    const Entry entries[] = {
        {"APP_MOVE", SLOT(mainOptMMS_Move()), SdPresent},
        {"APP_DELETE", SLOT(mainOptMMS_Delete())},
        {"APP_UN_REGISTER_APP_MENU", nullptr, false},
        {"APP_SELECT_ALL", SLOT(mainOptMMS_SelectAll())},
        {"APP_UNSELECT_ALL", SLOT(mainOptMMS_UnselectAll())},
        {"APP_CANCEL", SLOT(mainOptM_MultiSelect())},
    };
    fillMenu(m_multiSelectMenu, this, entries);
    return m_multiSelectMenu;
}

ZOptionsMenu* zBaseGUI::getPackageMenu() {
    if (m_packageMenu)
        return m_packageMenu;
    m_packageMenu = makeMenu(getSoftKey());
    const Entry install[] = {{"ZPK_INSTALL", SLOT(zpkOptM_Install())}};
    const CheckEntry showAll[] = {{"APP_SHOW_ALL", SLOT(zpkOptM_ShowAll()), true, false}};
    const Entry others[] = {
        {"APP_GO_MEMORY_CARD", SLOT(zpkOptM_GoToSD()), SdPresent},
        {"APP_GO_PHONE_MEMORY", SLOT(zpkOptM_GoToPH())},
        {"APP_ABOUT", SLOT(OptM_About())},
    };
    fillMenu(m_packageMenu, this, install);
    fillMenu(m_packageMenu, this, showAll);
    fillMenu(m_packageMenu, this, others);
    return m_packageMenu;
}

ZOptionsMenu* zBaseGUI::getCurrentMenu() {
    return m_tabs->currentPageIndex() == 1 ? getPackageMenu() : getMainMenu();
}

void zBaseGUI::tabSelected(const QString&) {
    getSoftKey()->setOptMenu(getCurrentMenu());
    markPackagesAgain();
}

void zBaseGUI::mainOptM_MultiSelect() {
    m_multiSelect = !m_multiSelect;
    m_appList->clear();
    m_appList->setItemLayout(m_multiSelect ? "%C%I%M" : "%I%M");
    getSoftKey()->setText(ZSoftKey::Right, ::tr(m_multiSelect ? "SK_CANCEL" : "SK_EXIT"));
    getSoftKey()->setOptMenu(m_multiSelect ? getMultiSelectMenu() : getMainMenu());
    refreshList(false);
    puts("DEBUG:: Select Multiple APPs");
}
