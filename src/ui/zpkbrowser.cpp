#include "PhoneRoot.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "browser.h"
#include "entries.h"
#include "install.h"
#include "language.h"
#include "packageinfo.h"
#include "paths.h"
#include "question.h"
#include "zBaseGUI.h"

#include <cstdio>

namespace {

constexpr int pathRow = 0;
constexpr int parentRow = 1;

QString nameAt(const ZListBox* list, int row) {
    const ZListBoxItem* item = list->item(row);
    return item ? item->subItemText(list->textColumn()) : QString();
}

/// The nearest folder above `folder` that is still there; at the latest the phone's files.
void enterNearest(QString folder) {
    while (folder.lastIndexOf('/') > 0) {
        folder.truncate(folder.lastIndexOf('/'));
        if (enterFolder(folder))
            return;
    }
    enterFolder(Path::phoneFiles);
}

} // namespace

void zBaseGUI::loadFolder(const QString& path) {
    setBusy(true);
    const bool isGone = currentFolder().isEmpty();
    if (isGone)
        enterNearest(browserFolder());
    if (!path.isEmpty() && !(isGone && path == u".."))
        enterFolder(path);
    m_packageList->clear();
    setMainWidgetTitle(::tr("TXT_LOADING"));
    const QList<FolderEntry> entries = listFolder(m_packageMenu->isItemChecked(ShowAllEntry));
    setMainWidgetTitle(::tr("TXT_REFRESHING"));

    auto* header = new ZListBoxItem(m_packageList);
    header->setEnabled(false);
    header->appendSubItem(m_packageList->textColumn(), {.text = currentFolder()});
    m_packageList->insertItem(header, -1);
    auto* parent = new ZListBoxItem(m_packageList);
    parent->setPixmap(0, m_icons.getIcon("gen_back_to_arrw_small.bmp", Measure::compactIcon));
    parent->appendSubItem(m_packageList->textColumn(), {.text = "..", .strong = false});
    m_packageList->insertItem(parent, -1);
    for (const FolderEntry& entry : entries)
        appendEntry(entry);

    m_packageList->setEmptyNotice(m_icons.getIcon("Mpkgbox_Big.g", Measure::noticeIcon),
                                  ::tr("TXT_EMPTY_FOLDER"), ::tr("TXT_EMPTY_FOLDER_HINT"),
                                  parentRow + 1);
    setBusy(false);
    setMainWidgetTitle("Quiver");
    m_packageList->setCurrentItem(parentRow);
    markPackagesAgain();
}

void zBaseGUI::followBrowsedFolder() {
    if (currentFolder() != browserFolder())
        loadFolder(QString());
}

QString zBaseGUI::browserFolder() const {
    return nameAt(m_packageList, pathRow);
}

void zBaseGUI::appendEntry(const FolderEntry& entry) {
    const char* icon = entry.isFolder                ? "fm_folder_thb.bmp"
                       : entry.name.contains(".zpk") ? "Mpkgbox_Big.g"
                                                     : "fm_unknown_thb.bmp";
    auto* item = new ZListBoxItem(m_packageList);
    item->setPixmap(0, m_icons.getIcon(icon, Measure::compactIcon));
    item->appendSubItem(
        m_packageList->textColumn(),
        {.text = entry.name, .strong = !entry.isFolder && isPackageName(entry.name)});
    if (!entry.isFolder)
        item->appendSubItem(m_packageList->textColumn(),
                            {.text = entry.size ? sizeText(*entry.size) : QString()});
    m_packageList->insertItem(item, -1);
}

void zBaseGUI::zpk_selected(int row) {
    const QString name = nameAt(m_packageList, row);
    if (row == parentRow) {
        loadFolder(name);
        return;
    }
    if (row != pathRow && isFolderEntry(name)) {
        loadFolder(name);
        return;
    }
    if (row != pathRow && isPackageName(name))
        confirmInstall();
    printf("DEBUG:: ZPK selected index : %d\n", row);
}

void zBaseGUI::zpk_highlighted(int row) {
    const bool isPackage = row > parentRow && isPackageName(nameAt(m_packageList, row));
    m_packageMenu->setItemEnabled(InstallEntry, isPackage);
}

void zBaseGUI::confirmInstall() {
    const QString name = nameAt(m_packageList, m_packageList->currentItem());
    // A second touch on the row may come in before the first installation has begun.
    if (m_confirmedPackage)
        return;
    setBusy(true);
    auto package = std::make_unique<Package>(packageAt(hostPath(browserFolder() + '/' + name)));
    setBusy(false);
    const QString text = ::tr("POP_INSTALL_ZPK_CONFIRM_TEXT").replace("%1", name);
    if (!askToInstall(::tr("POP_INSTALL_ZPK_TITLE"), text, *package))
        return;
    m_confirmedPackage = std::move(package);
    announce(&zBaseGUI::cmd_InstallZPK);
    puts("DEBUG:: Install ZPK");
}

void zBaseGUI::cmd_InstallZPK() {
    const QString name = nameAt(m_packageList, m_packageList->currentItem());
    const Package package = m_confirmedPackage ? *m_confirmedPackage
                                               : packageAt(hostPath(browserFolder() + '/' + name));
    if (installZpk(package, m_multiSelect))
        refreshList(true);
    m_confirmedPackage.reset();
    markPackagesAgain();
}

void zBaseGUI::zpkOptM_Install() {
    confirmInstall();
}

void zBaseGUI::zpkOptM_GoToSD() {
    loadFolder(Path::cardMount);
    puts("DEBUG:: Go to Memory Card");
}

void zBaseGUI::zpkOptM_GoToPH() {
    loadFolder(Path::phoneFiles);
    puts("DEBUG:: Go to Phone Memory");
}

void zBaseGUI::zpkOptM_ShowAll() {
    loadFolder(QString());
    puts("DEBUG:: Show All Files");
}
