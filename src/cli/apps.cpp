#include "apps.h"

#include "PhoneRoot.h"
#include "RegularFile.h"
#include "appregistry.h"
#include "discovery.h"
#include "output.h"
#include "paths.h"
#include "storage.h"

#include <algorithm>

namespace {

bool isPath(const QString& name) {
    return name.contains('/');
}

/// The phone's path that `name` stands for, which may be one of the machine.
QString phonePathOf(QString name) {
    while (name.size() > 1 && name.endsWith('/'))
        name.chop(1);
    return phonePath(realPath(absolutePath(name)));
}

bool fits(const QString& wanted, const QString& folder, const QString& name, const QString& uuid) {
    const QString identifier = QString(wanted).remove('{').remove('}');
    return wanted == folder || wanted.trimmed() == name.trimmed() ||
           (!uuid.isEmpty() && identifier.compare(uuid, Qt::CaseInsensitive) == 0);
}

bool isMeant(const Installed& installed, const QString& wanted) {
    const ZPK_App& app = *installed.app;
    if (isPath(wanted))
        return app.path == wanted || app.path == phonePathOf(wanted);
    return fits(wanted, installed.folder, app.shownName(),
                app.uuid ? plainUuid(*app.uuid) : QString());
}

/// Why there is no such application: it may lie on a card that is not in the phone.
QString absenceOf(const QString& wanted) {
    for (const AppRow& row : appRows()) {
        const QString folder = row.path.mid(row.path.lastIndexOf('/') + 1);
        if (!SdPresent && row.path.startsWith(Path::cardMount + '/') &&
            (row.path == wanted ||
             fits(wanted, folder, row.name, QString(row.uuid).remove('{').remove('}'))))
            return "is on the memory card, which is not in the phone";
    }
    return "there is no such application";
}

} // namespace

std::vector<Installed> installedApps() {
    const QHash<QString, AppRow> rows = rowsByPath();
    std::vector<Installed> apps;
    for (const int location : {phoneMemory, memoryCard}) {
        if (location == memoryCard && !SdPresent)
            continue;
        for (std::unique_ptr<ZPK_App>& app : readApps(location)) {
            const auto row = rows.find(app->path);
            const QUuid uuid = row == rows.end() ? QUuid() : QUuid::fromString(row->uuid);
            if (!uuid.isNull())
                app->uuid = std::make_unique<QUuid>(uuid);
            app->registeredInMenu = row != rows.end() && row->links > 0;
            const QString folder = app->path.mid(app->path.lastIndexOf('/') + 1);
            apps.push_back({std::move(app), folder});
        }
    }
    std::stable_sort(apps.begin(), apps.end(), [](const Installed& a, const Installed& b) {
        return a.app->shownName() < b.app->shownName();
    });
    return apps;
}

QHash<QString, AppRow> rowsByPath() {
    QHash<QString, AppRow> rows;
    for (const AppRow& row : appRows()) {
        if (!rows.contains(row.path))
            rows.insert(row.path, row);
    }
    return rows;
}

ZPK_App* chooseApp(std::vector<Installed>& apps, const QString& name) {
    QList<ZPK_App*> meant;
    QStringList paths;
    for (const Installed& installed : apps) {
        if (!isMeant(installed, name))
            continue;
        meant.append(installed.app.get());
        paths.append(installed.app->path);
    }
    if (meant.size() == 1)
        return meant.first();
    fail(name, meant.isEmpty() ? absenceOf(name)
                               : QString("fits %1 applications, %2; name one by its path")
                                     .arg(QString::number(meant.size()), listed(paths)));
    return nullptr;
}

std::vector<ZPK_App*> chooseApps(std::vector<Installed>& apps, const QStringList& names) {
    std::vector<ZPK_App*> found;
    for (const QString& name : names) {
        ZPK_App* app = chooseApp(apps, name);
        if (!app || std::find(found.begin(), found.end(), app) != found.end())
            continue;
        ensureAppInDb(*app);
        found.push_back(app);
    }
    return found;
}

QJsonObject describe(const ZPK_App& app) {
    QJsonObject object;
    object["uuid"] = app.uuid ? QJsonValue(plainUuid(*app.uuid)) : QJsonValue();
    put(object, "name", app.shownName().trimmed());
    put(object, "author", app.author.trimmed());
    put(object, "version", app.version.trimmed());
    object["place"] = placeName(app.location);
    put(object, "folder", app.path.mid(app.path.lastIndexOf('/') + 1));
    put(object, "path", app.path);
    object["menu"] = app.registeredInMenu;
    return object;
}

QString placeName(int location) {
    return location == memoryCard ? "card" : "phone";
}

std::optional<int> placeOf(const QString& name) {
    if (name == u"phone")
        return phoneMemory;
    if (name == u"card" && SdPresent)
        return memoryCard;
    tell(name == u"card" ? QString("there is no memory card in the phone")
                         : QString("'%1' is no place: phone or card").arg(name));
    return std::nullopt;
}
