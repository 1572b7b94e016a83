#include "PhoneRoot.h"
#include "discovery.h"
#include "findings.h"
#include "menu.h"
#include "paths.h"
#include "storage.h"

#include "RegularFile.h"

PhoneState readState() {
    PhoneState state = {{},
                        appRows(),
                        ZConfig(hostPath(Path::installedDb), true),
                        ZConfig(hostPath(Path::userMenuTree), true)};
    for (const int location : {phoneMemory, memoryCard}) {
        if (location == memoryCard && !SdPresent)
            continue;
        for (std::unique_ptr<ZPK_App>& app : readApps(location)) {
            const QString path = app->path;
            state.apps[path] = std::move(app);
        }
    }
    return state;
}

bool isOnAbsentCard(const QString& path) {
    return !SdPresent && path.startsWith(Path::cardMount + '/');
}

bool isThere(const QString& path) {
    return path.startsWith('/') && exists(hostPath(path));
}

void removeEntry(const QString& uuid) {
    ZPK_App app;
    app.uuid = std::make_unique<QUuid>(QUuid::fromString(uuid));
    unregisterAppFromMenu(app);
}

void forget(const QString& path, const QList<AppRow>& rows) {
    for (const AppRow& row : rows) {
        if (row.path != path)
            continue;
        if (!QUuid::fromString(row.uuid).isNull() && row.links > 0)
            removeEntry(row.uuid);
        removeLinks(row.id);
        removeRow(row.id);
    }
}
