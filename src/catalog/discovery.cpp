#include "discovery.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "database.h"
#include "descriptor.h"
#include "storage.h"

#include <cstdio>
#include <cstdlib>

#include <dirent.h>
#include <sys/stat.h>

namespace {

QUuid drawUuid() {
    const auto middle = static_cast<ushort>(rand() & 0xFFFF);
    uchar tail[8];
    for (uchar& byte : tail)
        byte = static_cast<uchar>(rand() & 0xFF);
    return QUuid(0x8e10aded, 0xf8ee, middle, tail[0], tail[1], tail[2], tail[3], tail[4], tail[5],
                 tail[6], tail[7]);
}

/// What the database has for `path`: another program may have been there a moment earlier. It is
/// `drawn` where nothing could be stored.
QUuid storedUuid(const QString& path, const QUuid& drawn) {
    QString text;
    const QUuid stored = findUuidByPath(path, text) ? QUuid::fromString(text) : QUuid();
    return stored.isNull() ? drawn : stored;
}

/// The identifier that `text`, stored for `path`, stands for. Where it stands for none, a new one
/// is drawn; from then on the row has the form by which it is looked for.
QUuid usableUuid(const QString& path, const QString& text) {
    const QUuid stored = QUuid::fromString(text);
    const QUuid uuid = stored.isNull() ? unusedUuid() : stored;
    if (uuid.toString() != text)
        replaceUuid(path, text, uuid);
    return uuid;
}

bool isFolder(const dirent* entry) {
    if (entry->d_type != DT_UNKNOWN)
        return entry->d_type == DT_DIR;
    // Some file systems of memory cards do not tell the type with the name.
    struct stat info = {};
    return lstat(entry->d_name, &info) == 0 && S_ISDIR(info.st_mode);
}

bool isListed(const dirent* entry, const QByteArray& name, bool foldersOnly, bool allFiles) {
    if (name == "." || name == "..")
        return false;
    if (foldersOnly)
        return isFolder(entry);
    return name.contains(".zpk") || (allFiles && !isFolder(entry));
}

void findAppsIn(int location, Apps& apps) {
    std::vector<std::unique_ptr<ZPK_App>> found = readApps(location);
    const DbReading reading;
    for (std::unique_ptr<ZPK_App>& app : found) {
        ensureAppInDb(*app);
        const QString key = appKey(app->name, location);
        apps[key] = std::move(app);
    }
}

} // namespace

QString appKey(const QString& name, int location) {
    return name + (location == phoneMemory ? "_PH" : "_SD");
}

std::vector<std::unique_ptr<ZPK_App>> readApps(int location) {
    std::vector<std::unique_ptr<ZPK_App>> apps;
    const FolderGuard guard;
    if (!enterFolder(appsFolder(location)))
        return apps;
    for (const QString& name : listDir(true, false, false, true)) {
        std::unique_ptr<ZPK_App> app = readDescriptor(appsFolder(location), name);
        if (!app)
            continue;
        app->location = location;
        apps.push_back(std::move(app));
    }
    return apps;
}

Apps findApps() {
    Apps apps;
    if (SdPresent)
        findAppsIn(memoryCard, apps);
    findAppsIn(phoneMemory, apps);
    return apps;
}

void discoverApps() {
    AppMap = findApps();
}

QByteArray appsState() {
    return QByteArray::number(appDbVersion()) + fileState(hostPath(appsFolder(phoneMemory))) +
           fileState(hostPath(appsFolder(memoryCard)));
}

ZPK_App* appAt(const QString& path) {
    for (const auto& [key, app] : AppMap) {
        if (app->path == path)
            return app.get();
    }
    return nullptr;
}

void ensureAppInDb(ZPK_App& app) {
    const QByteArray name = toBytes(app.name);
    if (isAppKnown(app.path, nullptr)) {
        QString text;
        findUuidByPath(app.path, text);
        printf("DEBUG:: Application '%s' is already in DB.\n\tApp UUID is %s\n", name.constData(),
               text.toLatin1().constData());
        app.uuid = std::make_unique<QUuid>(usableUuid(app.path, text));
    } else {
        const QUuid uuid = unusedUuid();
        printf("DEBUG:: Adding APP to AppDB ('%s')\n\tApp UUID is %s\n", name.constData(),
               uuid.toByteArray().constData());
        addAppRecord(uuid, app.name, app.path, app.location);
        app.uuid = std::make_unique<QUuid>(storedUuid(app.path, uuid));
    }
    app.registeredInMenu = isAppInMenu(app.path, nullptr);
}

QUuid unusedUuid() {
    QUuid uuid = drawUuid();
    while (isUuidUsed(&uuid))
        uuid = drawUuid();
    return uuid;
}

QStringList listDir(bool foldersOnly, bool otherFiles, bool showAll, bool sorted) {
    QStringList names;
    DIR* folder = opendir(".");
    if (!folder)
        return names;
    while (const dirent* entry = readdir(folder)) {
        const QByteArray name = entry->d_name;
        if (isListed(entry, name, foldersOnly, otherFiles && showAll))
            names.append(fromBytes(name));
    }
    if (sorted)
        names.sort();
    closedir(folder);
    return names;
}
