#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "ZSoftKey.h"
#include "entries.h"
#include "language.h"
#include "zBaseGUI.h"

#include <cstdio>

namespace {

constexpr int menuSkin = 55;

using Slot = void (zBaseGUI::*)();

enum Kind { Plain, Unchecked, Checked };

struct Entry {
    int id;
    const char* key;
    Slot slot; ///< null for an entry that does nothing or opens a submenu
    bool enabled = true;
    Kind kind = Plain;
    ZOptionsMenu* submenu = nullptr;
};

void addEntry(ZOptionsMenu* menu, const Entry& entry) {
    const QString text = ::tr(entry.key);
    if (entry.kind == Plain)
        menu->insertItem(text, entry.submenu, QPixmap(), entry.enabled, entry.id, entry.id);
    else
        menu->insertItem(text, QPixmap(), nullptr, entry.enabled, true, entry.kind == Checked,
                         entry.id, entry.id);
}

ZOptionsMenu* makeMenu(zBaseGUI* window, const QList<Entry>& entries) {
    auto* menu = new ZOptionsMenu(QRect(), window, nullptr, 0, menuSkin, true);
    for (const Entry& entry : entries) {
        addEntry(menu, entry);
        if (entry.slot)
            menu->connectItem(entry.id, window, [window, slot = entry.slot] { (window->*slot)(); });
    }
    return menu;
}

} // namespace

void zBaseGUI::makeMenus() {
    m_saveAsMenu = makeMenu(
        this, {{SaveOnCardEntry, "APP_SAVE_IN_SD", &zBaseGUI::mainSubOptM_SaveAs_SD, SdPresent},
               {SaveOnPhoneEntry, "APP_SAVE_IN_PH", &zBaseGUI::mainSubOptM_SaveAs_PH},
               {SaveInBrowserEntry, "APP_SAVE_IN_FM_LOC", &zBaseGUI::mainSubOptM_SaveAs_FM}});
    const Slot viewCard = &zBaseGUI::mainSubOptM_ViewSDPH;
    m_viewMenu = makeMenu(this, {{OnCardEntry, "APP_APPS_IN_SD", viewCard, SdPresent, Checked},
                                 {OnPhoneEntry, "APP_APPS_IN_PH", viewCard, true, Checked},
                                 {OnlyRegisteredEntry, "APP_ONLY_REGISTERED_APPS",
                                  &zBaseGUI::mainSubOptM_ViewRegistered, true, Unchecked}});
    m_mainMenu = makeMenu(
        this, {{MoveEntry, "APP_MOVE", &zBaseGUI::mainOptM_Move},
               {RenameEntry, "APP_RENAME", &zBaseGUI::mainOptM_Rename},
               {DeleteEntry, "APP_DELETE", &zBaseGUI::mainOptM_Delete},
               {PropertiesEntry, "APP_PROPERTIES", &zBaseGUI::mainOptM_Properties},
               {RegisterEntry, "APP_UN_REGISTER_APP_MENU", &zBaseGUI::mainOptM_RegisterAppMenu},
               {SaveAsEntry, "APP_SAVE_AS_ZPK_TO", nullptr, true, Plain, m_saveAsMenu},
               {ViewEntry, "APP_VIEW", nullptr, true, Plain, m_viewMenu},
               {MultiSelectEntry, "APP_MULTI_SELECT", &zBaseGUI::mainOptM_MultiSelect},
               {RefreshEntry, "APP_REFRESH", &zBaseGUI::mainOptM_Refresh},
               {AboutEntry, "APP_ABOUT", &zBaseGUI::OptM_About}});
    m_multiSelectMenu =
        makeMenu(this, {{MoveCheckedEntry, "APP_MOVE", &zBaseGUI::mainOptMMS_Move, SdPresent},
                        {DeleteCheckedEntry, "APP_DELETE", &zBaseGUI::mainOptMMS_Delete},
                        {RegisterCheckedEntry, "APP_UN_REGISTER_APP_MENU", nullptr, false},
                        {SelectAllEntry, "APP_SELECT_ALL", &zBaseGUI::mainOptMMS_SelectAll},
                        {UnselectAllEntry, "APP_UNSELECT_ALL", &zBaseGUI::mainOptMMS_UnselectAll},
                        {CancelEntry, "APP_CANCEL", &zBaseGUI::mainOptM_MultiSelect}});
    m_packageMenu =
        makeMenu(this, {{InstallEntry, "ZPK_INSTALL", &zBaseGUI::zpkOptM_Install},
                        {ShowAllEntry, "APP_SHOW_ALL", &zBaseGUI::zpkOptM_ShowAll, true, Unchecked},
                        {GoToCardEntry, "APP_GO_MEMORY_CARD", &zBaseGUI::zpkOptM_GoToSD, SdPresent},
                        {GoToPhoneEntry, "APP_GO_PHONE_MEMORY", &zBaseGUI::zpkOptM_GoToPH},
                        {AboutPackagesEntry, "APP_ABOUT", &zBaseGUI::OptM_About}});
}

void zBaseGUI::makeSoftKey() {
    m_softKey = new ZSoftKey(tr("CST_2A"), this, this);
    m_softKey->setText(ZSoftKey::Left, ::tr("SK_OPT"));
    m_softKey->setText(ZSoftKey::Right, ::tr("SK_EXIT"));
    m_softKey->setTextForOptMenuHide(::tr("SK_OPT"));
    m_softKey->setTextForOptMenuShow(::tr("SK_SEL"), ::tr("SK_CANCEL"));
    m_softKey->setOptMenu(getCurrentMenu());
    m_softKey->setClickedSlot([this] { quit(); });
    setSoftKey(m_softKey);
}

ZOptionsMenu* zBaseGUI::getCurrentMenu() const {
    return m_tabs->currentPageIndex() == PackagesPage ? m_packageMenu : m_mainMenu;
}

void zBaseGUI::tabSelected(const QString&) {
    m_softKey->setOptMenu(getCurrentMenu());
    markPackagesAgain();
}

void zBaseGUI::mainOptM_MultiSelect() {
    setMultiSelect(!m_multiSelect);
}

void zBaseGUI::setMultiSelect(bool on) {
    m_multiSelect = on;
    m_appList->clear();
    m_appList->setItemLayout(on ? "%C%I%M" : "%I%M");
    m_softKey->setText(ZSoftKey::Right, ::tr(on ? "SK_CANCEL" : "SK_EXIT"));
    m_softKey->setOptMenu(on ? m_multiSelectMenu : m_mainMenu);
    refreshList(false);
    puts("DEBUG:: Select Multiple APPs");
}
