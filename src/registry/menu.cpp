#include "menu.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "ZConfig.h"
#include "ZPK_App.h"
#include "appregistry.h"
#include "database.h"
#include "paths.h"
#include "settings.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>

#include <unistd.h>

namespace {

QString menuItems(const ZConfig& tree) {
    return tree.readEntry(MenuUuid, "Items", QString());
}

/// Makes `change` in the file at `path` (of the phone). The phone's own programs write there, too:
/// where one did meanwhile, the change is made anew on what is there now.
void edit(const QString& path, const std::function<void(ZConfig&)>& change) {
    constexpr int tries = 5;
    for (int i = 0; i < tries; ++i) {
        ZConfig file(hostPath(path), false);
        change(file);
        if (file.flush() || !file.isOutdated())
            return;
    }
}

void printAction(const char* format, const ZPK_App& app) {
    printf(format, toBytes(app.path).constData(), app.uuid->toByteArray().constData());
}

void writeIcons(ZConfig& installed, const QString& group, const ZPK_App& app) {
    const QString icon = app.path + '/' + app.icon;
    for (const char* key : {"AniIcon", "BigIcon", "Icon", "SVGIcon"})
        installed.writeEntry(group, key, icon);
}

/// Marks the application of this group as one whose files and row are being brought into line with
/// each other; on the storage before anything else is.
class EditMark {
public:
    explicit EditMark(const QString& group) {
        replaceFile(hostPath(Path::menuEdit), toBytes(group));
    }

    ~EditMark() { remove(toBytes(hostPath(Path::menuEdit)).constData()); }

    Q_DISABLE_COPY_MOVE(EditMark)
};

void removeEverywhere(const QUuid& uuid) {
    const QString group = plainUuid(uuid);
    edit(Path::installedDb, [&](ZConfig& installed) { installed.removeGroup(group); });
    edit(Path::userMenuTree, [&](ZConfig& tree) {
        tree.writeEntry(MenuUuid, "Items",
                        menuItems(tree).remove(group + ';', Qt::CaseInsensitive));
    });
    removeAppFromMenu(&uuid);
}

} // namespace

QString menuObstacle() {
    for (const QString& path : {Path::installedDb, Path::userMenuTree, Path::database}) {
        const QByteArray file = toBytes(realPath(hostPath(path)));
        const QByteArray folder = file.left(file.lastIndexOf('/'));
        if ((access(file.constData(), W_OK) != 0 && errno != ENOENT) ||
            access(folder.constData(), W_OK) != 0)
            return path + ": " + QString::fromLocal8Bit(strerror(errno));
    }
    return QString();
}

bool isInMenuFiles(const QUuid& uuid) {
    const QString group = plainUuid(uuid);
    const ZConfig tree(hostPath(Path::userMenuTree), true);
    return menuItems(tree).split(';').contains(group, Qt::CaseInsensitive) &&
           ZConfig(hostPath(Path::installedDb), true).hasGroup(group);
}

bool registerAppInMenu(ZPK_App& app) {
    const QString group = plainUuid(*app.uuid);
    const EditMark mark(group);
    edit(Path::installedDb, [&](ZConfig& installed) {
        installed.writeEntry(group, "AppID", '{' + group + '}');
        installed.writeEntry(group, "Type", 2);
        installed.writeEntry(group, "Atribute", 1);
        installed.writeEntry(group, "Daemon", 0);
        installed.writeEntry(group, "Directory", app.path);
        installed.writeEntry(group, "Exec", app.exec);
        installed.writeEntry(group, "Name", app.name);
        installed.writeEntry(group, "LockEnabled ", 1);
        writeIcons(installed, group, app);
        installed.writeEntry(group, "GroupID", "root");
        installed.writeEntry(group, "UserID", "root");
        installed.writeEntry(group, "Vendor", app.author);
    });
    edit(Path::userMenuTree,
         [&](ZConfig& tree) { tree.writeEntry(MenuUuid, "Items", menuItems(tree) + group + ';'); });
    app.registeredInMenu = true;
    addAppToMenu(app.path, app.uuid.get());
    menuChanged = true;
    return true;
}

bool unregisterAppFromMenu(ZPK_App& app) {
    printAction("DEBUG:: Unregister App ('%s') from Menu\n\tApp UUID is '%s'\n", app);
    const EditMark mark(plainUuid(*app.uuid));
    removeEverywhere(*app.uuid);
    app.registeredInMenu = false;
    menuChanged = true;
    return true;
}

void mendMenu() {
    constexpr qint64 longestMark = 100;
    const QString mark = hostPath(Path::menuEdit);
    QByteArray group;
    if (readRegularFile(mark, longestMark, group) != Reading::Whole)
        return;
    const QUuid uuid = QUuid::fromString(fromBytes(group));
    if (!uuid.isNull() && !isInMenuFiles(uuid))
        removeEverywhere(uuid);
    else if (!uuid.isNull() && !isAppInMenu(QString(), &uuid))
        addAppToMenu(QString(), &uuid);
    remove(toBytes(mark).constData());
    menuChanged = true;
}

bool updateAppInMenu(const ZPK_App& app) {
    printAction("DEBUG:: Update App Info ('%s') in Menu\n\tApp UUID is '%s'\n", app);
    const QString group = plainUuid(*app.uuid);
    edit(Path::installedDb, [&](ZConfig& installed) {
        installed.writeEntry(group, "Directory", app.path);
        installed.writeEntry(group, "Exec", app.exec);
        installed.writeEntry(group, "Name", app.name);
        writeIcons(installed, group, app);
    });
    menuChanged = true;
    return true;
}
