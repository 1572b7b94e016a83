#include "menu.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZConfig.h"
#include "ZPK_App.h"
#include "appregistry.h"
#include "database.h"
#include "paths.h"
#include "settings.h"

#include <cstdio>

namespace {

QString menuItems(const ZConfig& tree) {
    return tree.readEntry(MenuUuid, "Items", QString());
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

bool registerAppInMenu(ZPK_App& app) {
    const QString group = plainUuid(*app.uuid);
    ZConfig installed(hostPath(Path::installedDb), false);
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
    installed.flush();

    ZConfig tree(hostPath(Path::userMenuTree), false);
    tree.writeEntry(MenuUuid, "Items", menuItems(tree) + group + ';');
    tree.flush();

    app.registeredInMenu = true;
    addAppToMenu(app.path, app.uuid.get());
    menuChanged = true;
    return true;
}

bool unregisterAppFromMenu(ZPK_App& app) {
    printAction("DEBUG:: Unregister App ('%s') from Menu\n\tApp UUID is '%s'\n", app);
    const QString group = plainUuid(*app.uuid);
    ZConfig installed(hostPath(Path::installedDb), false);
    installed.removeGroup(group);
    installed.flush();

    ZConfig tree(hostPath(Path::userMenuTree), false);
    tree.writeEntry(MenuUuid, "Items", menuItems(tree).remove(group + ';', Qt::CaseInsensitive));
    tree.flush();

    app.registeredInMenu = false;
    removeAppFromMenu(app.uuid.get());
    menuChanged = true;
    return true;
}

bool updateAppInMenu(const ZPK_App& app) {
    printAction("DEBUG:: Update App Info ('%s') in Menu\n\tApp UUID is '%s'\n", app);
    const QString group = plainUuid(*app.uuid);
    ZConfig installed(hostPath(Path::installedDb), false);
    installed.writeEntry(group, "Directory", app.path);
    installed.writeEntry(group, "Exec", app.exec);
    installed.writeEntry(group, "Name", app.name);
    writeIcons(installed, group, app);
    installed.flush();
    menuChanged = true;
    return true;
}
