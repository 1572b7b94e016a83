#include "menu.h"

#include "AM_AppRegistry.h"
#include "Bytes.h"
#include "PhoneRoot.h"
#include "appregistry.h"
#include "findings.h"
#include "paths.h"
#include "settings.h"
#include "storage.h"

#include <QSet>

namespace {

constexpr qsizetype uuidLength = 36;

QString itemsOf(const ZConfig& tree, const QString& folder) {
    return tree.readEntry(folder, "Items", QString());
}

bool isUuid(const QString& item) {
    return item.size() == uuidLength && !QUuid::fromString(item).isNull();
}

/// An item, or those that one without its semicolon was glued to.
QStringList itemsIn(const QString& item) {
    QStringList items;
    for (qsizetype at = 0; at < item.size(); at += uuidLength)
        items.append(item.mid(at, uuidLength));
    return items;
}

/// `items` with each of the usable ones once.
QString mended(const QString& items) {
    QStringList kept;
    for (const QString& item : items.split(';', Qt::SkipEmptyParts)) {
        for (const QString& part : itemsIn(item.trimmed())) {
            if (isUuid(part) && !kept.contains(part, Qt::CaseInsensitive))
                kept.append(part);
        }
    }
    return kept.isEmpty() ? QString() : kept.join(';') + ';';
}

void mendItems() {
    ZConfig tree(hostPath(Path::userMenuTree), false);
    tree.writeEntry(MenuUuid, "Items", mended(itemsOf(tree, MenuUuid)));
    tree.flush();
}

void checkItems(const PhoneState& state, Findings& findings) {
    const QString items = itemsOf(state.tree, MenuUuid);
    const auto append = [&](const char* kind, const QString& item, const char* text) {
        findings.append({kind, item, text, "put the folder's list in order", mendItems});
    };
    if (!items.isEmpty() && !items.endsWith(';'))
        append("glued-item", items.right(uuidLength),
               "nothing ends this item of the phone's menu; the next one would be glued to it");
    QStringList known;
    for (const QString& item : items.split(';', Qt::SkipEmptyParts)) {
        if (item.size() > uuidLength && item.size() % uuidLength == 0)
            append("glued-item", item, "several items of the phone's menu are glued to one");
        else if (!isUuid(item))
            append("unusable-item", item, "this item of the phone's menu is no identifier");
        else if (known.contains(item, Qt::CaseInsensitive))
            append("doubled-item", item, "stands twice in the phone's menu");
        known.append(item);
    }
}

/// Where an application stands that the phone's menu has from Quiver.
bool isOurs(const QString& directory) {
    return directory.startsWith(Path::phoneApps + '/') ||
           directory.startsWith(Path::cardApps + '/');
}

/// The identifiers (without braces, in small letters) of all items of the menu.
QSet<QString> allItems(const ZConfig& tree) {
    QSet<QString> items;
    for (const QString& folder : tree.groups()) {
        for (const QString& item : itemsOf(tree, folder).split(';', Qt::SkipEmptyParts))
            items.insert(item.toLower());
    }
    return items;
}

/// What the menu would have of a text: it is read back without blanks around it.
QString asEntry(QString text) {
    return text.replace('\r', ' ').replace('\n', ' ').trimmed();
}

bool isUpToDate(const ZConfig& installed, const QString& group, const ZPK_App& app) {
    const auto entry = [&](const char* key) { return installed.readEntry(group, key, QString()); };
    return entry("Directory") == asEntry(app.path) && entry("Exec") == asEntry(app.exec) &&
           entry("Name") == asEntry(app.name) &&
           entry("Icon") == asEntry(app.path + '/' + app.icon);
}

ZPK_App copyOf(const ZPK_App& app, const QUuid& uuid) {
    ZPK_App copy = {app.name,
                    app.author,
                    app.version,
                    app.exec,
                    app.icon,
                    app.path,
                    app.comment,
                    0,
                    true,
                    app.location,
                    std::make_unique<QUuid>(uuid)};
    return copy;
}

void registerAnew(const ZPK_App& app) {
    ZPK_App copy = copyOf(app, *app.uuid);
    unregisterAppFromMenu(copy);
    registerAppInMenu(copy);
}

using SharedApp = std::shared_ptr<const ZPK_App>;

/// An application that the database knows, and the phone's menu.
void checkApp(const PhoneState& state, const AppRow& row, const QSet<QString>& items,
              Findings& findings) {
    const auto found = state.apps.find(row.path);
    const QUuid uuid = QUuid::fromString(row.uuid);
    if (found == state.apps.end() || uuid.isNull())
        return;
    const SharedApp app = std::make_shared<ZPK_App>(copyOf(*found->second, uuid));
    const QString group = plainUuid(uuid);
    const bool hasGroup = state.installed.hasGroup(group);
    const bool hasItem = items.contains(group);
    const bool isItsOwn =
        state.installed.readEntry(group, "Directory", QString()) == asEntry(row.path);
    if (row.links > 0 && !(hasGroup && hasItem))
        findings.append({"not-in-menu", row.path,
                         "the database has it in the phone's menu, where it is not",
                         "put it into the menu again", [app] { registerAnew(*app); }});
    else if (row.links == 0 && isItsOwn && hasItem)
        findings.append({"link-missing", row.path,
                         "it is in the phone's menu, and the database does not know",
                         "tell the database", [id = row.id] { addLink(id); }});
    else if (row.links == 0 && isItsOwn)
        findings.append({"entry-without-item", row.path,
                         "the phone has an entry for it that no menu shows", "remove the entry",
                         [group] { removeEntry(group); }});
    else if (row.links > 0 && !isUpToDate(state.installed, group, *app))
        findings.append({"menu-outdated", row.path,
                         "the phone's menu has another name, program, icon or place of it",
                         "bring the menu in line", [app] { updateAppInMenu(*app); }});
}

/// An entry of the phone's menu that stands for an application of Quiver's.
void checkEntry(const PhoneState& state, const QString& group, const QSet<QUuid>& known,
                Findings& findings) {
    const QString directory = state.installed.readEntry(group, "Directory", QString());
    const QUuid uuid = QUuid::fromString(group);
    if (!isOurs(directory) || known.contains(uuid) || isOnAbsentCard(directory))
        return;
    const auto found = state.apps.find(directory);
    const bool hasRow = std::any_of(state.rows.begin(), state.rows.end(),
                                    [&](const AppRow& row) { return row.path == directory; });
    if (found == state.apps.end() || hasRow || uuid.isNull()) {
        findings.append(
            {"entry-without-application", directory,
             QString("the phone's menu has %1 for an application that is not there").arg(group),
             "remove the entry", [group] { removeEntry(group); }});
        return;
    }
    findings.append(
        {"link-missing", directory, "it is in the phone's menu, and the database does not know",
         "tell the database",
         [uuid, name = found->second->name, directory, location = found->second->location] {
             addAppRecord(uuid, name, directory, location);
             addAppToMenu(directory, &uuid);
         }});
}

/// Items of Quiver's own folder that stand for nothing, in the phone's files or in the database.
void checkStrayItems(const PhoneState& state, const QSet<QUuid>& known, Findings& findings) {
    AM_AppRegistry registry(nullptr, nullptr);
    registry.init();
    for (const QString& item : itemsOf(state.tree, MenuUuid).split(';', Qt::SkipEmptyParts)) {
        if (!isUuid(item) || known.contains(QUuid::fromString(item)) || state.tree.hasGroup(item) ||
            registry.getRegistryObject(item))
            continue;
        findings.append({"item-without-application", item,
                         "the phone's menu has an item that stands for nothing", "remove the item",
                         [item] { removeEntry(item); }});
    }
}

} // namespace

void checkMenu(const PhoneState& state, Findings& findings) {
    checkItems(state, findings);
    const QSet<QString> items = allItems(state.tree);
    QSet<QUuid> known;
    for (const AppRow& row : state.rows) {
        known.insert(QUuid::fromString(row.uuid));
        checkApp(state, row, items, findings);
    }
    for (const QString& group : state.installed.groups())
        checkEntry(state, group, known, findings);
    checkStrayItems(state, known, findings);
}
