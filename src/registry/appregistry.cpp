#include "appregistry.h"

#include "AM_AppRegistry.h"
#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "ZConfig.h"
#include "paths.h"
#include "settings.h"

#include <QSet>

#include <cstdio>

namespace {

// Group headers of applications, "[" + UUID + "]"; a header with anything behind it is longer.
constexpr qsizetype headerLength = 38;

/// Looks applications up one by one; made on first use and kept for the run.
const AM_AppRegistry& sharedRegistry() {
    static const AM_AppRegistry registry(nullptr, nullptr);
    return registry;
}

QStringList withRegistryUIDs(QStringList uids, const AM_AppRegistry& registry) {
    QList<const AM_AppObject*> objects;
    registry.getAllAppObjects(objects);
    QSet<QString> known(uids.cbegin(), uids.cend());
    for (const AM_AppObject* object : std::as_const(objects)) {
        const QString uid = plainUuid(object->uuid());
        if (known.contains(uid))
            continue;
        known.insert(uid);
        uids.append(uid);
    }
    return uids;
}

} // namespace

AppRegistryEntry::AppRegistryEntry(const QString& wanted) {
    const AM_AppObject* object = sharedRegistry().getRegistryObject(wanted);
    if (!object)
        return;
    uid = wanted;
    name = object->name();
    type = object->type();
    icon = object->icon();
    attribute = object->attribute();
    secondIcon = object->bigIcon();
    if (type == 2)
        secondIconOfType2 = object->bigIcon();
    valid = true;
}

QString AppRegistryEntry::preferredIcon() const {
    if (!icon.isEmpty())
        return icon;
    return secondIcon.isEmpty() ? QString() : secondIcon;
}

QString plainUuid(const QUuid& uuid) {
    return uuid.toString().remove('{').remove('}');
}

void loadAppRegistry(bool reload) {
    if (!registryEntries.empty() && !reload)
        return;
    registryEntries.clear();
    AM_AppRegistry registry(nullptr, nullptr);
    if (registry.init() != 0) {
        puts("DEBUG:: Error Initializing AppRegistry Instance");
        return;
    }
    const QStringList installed = readInstalledUIDs(hostPath(Path::installedDb));
    for (const QString& uid : withRegistryUIDs(installed, registry)) {
        auto entry = std::make_unique<AppRegistryEntry>(uid);
        if (entry->valid)
            registryEntries[uid] = std::move(entry);
    }
}

QStringList readInstalledUIDs(const QString& path, QStringList list) {
    QByteArray content;
    readRegularFile(path, anySize, content);
    for (const QByteArray& bytes : content.split('\n')) {
        QString line = fromBytes(bytes);
        if (!line.startsWith('[') || line.size() != headerLength)
            continue;
        const QString uid = line.remove('[').remove(']');
        list.append(uid);
        printf("DEBUG:: UID : %s\n", toBytes(uid).constData());
    }
    return list;
}

void listAppsMenuRegistered() {
    loadAppRegistry(false);
    puts("DEBUG:: List Applications registered in Menu");
    puts("DEBUG:: [List START]");
    const ZConfig tree(hostPath(Path::userMenuTree), false);
    const QString items = tree.readEntry(MenuUuid, "Items", QString());
    for (const QString& uid : items.split(';', Qt::SkipEmptyParts)) {
        const auto found = registryEntries.find(uid);
        if (found == registryEntries.end())
            continue;
        const AppRegistryEntry& entry = *found->second;
        printf("\tAPP OBJECT{ Name: %s, Type: %d, Icon: %s}\n", toBytes(entry.name).constData(),
               entry.type, toBytes(entry.icon).constData());
    }
    puts("DEBUG:: [List END]");
}
