#include "menu.h"

#include "PhoneRoot.h"
#include "SessionMenu.h"
#include "ZConfig.h"
#include "appregistry.h"
#include "batch.h"
#include "commands.h"
#include "database.h"
#include "language.h"
#include "operations.h"
#include "options.h"
#include "output.h"
#include "paths.h"
#include "phone.h"
#include "settings.h"
#include "shell.h"

#include <QJsonArray>

namespace {

QStringList menuItems() {
    const ZConfig tree(hostPath(Path::userMenuTree), true);
    return tree.readEntry(MenuUuid, "Items", QString()).split(';', Qt::SkipEmptyParts);
}

bool setInMenu(ZPK_App& app, bool isWanted) {
    if (app.registeredInMenu != isWanted) {
        if (refuseWithoutFolder(app))
            return false;
        if (const QString obstacle = menuObstacle(); !obstacle.isEmpty()) {
            showError(obstacle);
            return false;
        }
        isWanted ? registerAppInMenu(app) : unregisterAppFromMenu(app);
    }
    const bool isDone =
        isInMenuFiles(*app.uuid) == isWanted && isAppInMenu(app.path, nullptr) == isWanted;
    if (!isDone)
        showError(tr("POP_ERROR_NOT_WRITTEN_TEXT"));
    else if (isWanted && isOwnPhone() && !canStandInSession(hostPath(app.path), app.exec))
        remark(QString("the menu of the session does not show %1: its Exec does not name one "
                       "program that can be started")
                   .arg(app.shownName().trimmed()));
    return isDone;
}

int changeMenu(const QStringList& names, bool isWanted) {
    std::vector<Installed> apps = installedApps();
    doToEach(
        chooseApps(apps, names), [&](ZPK_App& app) { return setInMenu(app, isWanted); },
        [&](const ZPK_App& app) {
            return QString(isWanted ? "%1 is in the phone's menu."
                                    : "%1 is out of the phone's menu.")
                .arg(app.shownName().trimmed());
        });
    if (menuChanged && !isOwnPhone())
        remark("the phone shows it when its menu has started again");
    return finish();
}

int listMenu() {
    QJsonArray documents;
    QList<QStringList> rows;
    for (const QString& uuid : menuItems()) {
        const AppRegistryEntry entry(uuid);
        if (!entry.valid)
            continue;
        QJsonObject object;
        object["uuid"] = uuid;
        put(object, "name", entry.name);
        put(object, "icon", entry.preferredIcon());
        documents.append(object);
        rows.append({entry.name, uuid});
    }
    if (Option::json)
        printDocument({{"menu", documents}});
    else
        printTable({"NAME", "IDENTIFIER"}, rows);
    return 0;
}

int syncMenu() {
    if (isOwnPhone())
        return showInSession() ? 0 : 1;
    tell("only your own phone stands in the menu of the session");
    return 1;
}

} // namespace

int runMenu(const Call& call) {
    if (call.arguments.isEmpty())
        return listMenu();
    const QString action = call.arguments.first();
    if (call.arguments == QStringList{"sync"})
        return syncMenu();
    const QStringList names = call.arguments.mid(1);
    if ((action != u"add" && action != u"remove") || names.isEmpty())
        return misuse("after menu comes add or remove with applications, sync, or nothing");
    return changeMenu(names, action == u"add");
}
