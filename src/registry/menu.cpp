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

bool registerAppInMenu(ZPK_App& app) {
    const QString group = plainUuid(*app.uuid);
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
    const QString group = plainUuid(*app.uuid);
    edit(Path::installedDb, [&](ZConfig& installed) { installed.removeGroup(group); });
    edit(Path::userMenuTree, [&](ZConfig& tree) {
        tree.writeEntry(MenuUuid, "Items",
                        menuItems(tree).remove(group + ';', Qt::CaseInsensitive));
    });
    app.registeredInMenu = false;
    removeAppFromMenu(app.uuid.get());
    menuChanged = true;
    return true;
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
