#include "files.h"

#include "PhoneRoot.h"
#include "ZConfig.h"
#include "appregistry.h"
#include "paths.h"
#include "settings.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// The application `name` of the phone's registry, by its group; nothing where there is none.
QString groupOf(const ZConfig& installed, const QString& name) {
    for (const QString& group : readInstalledUIDs(hostPath(Path::installedDb))) {
        if (installed.readEntry(group, "Name", QString()) == name)
            return group;
    }
    return QString();
}

QStringList menuFolder() {
    const ZConfig tree(hostPath(Path::userMenuTree), true);
    return tree.readEntry(MenuUuid, "Items", QString()).split(';', Qt::SkipEmptyParts);
}

} // namespace

Check isFile(const QString& path) {
    return holds(path + " is there", [path] { return QFileInfo(hostPath(path)).size() > 0; });
}

Check isExecutable(const QString& path) {
    return holds(path + " can be started",
                 [path] { return QFileInfo(hostPath(path)).isExecutable(); });
}

Check isFolderOf(const QString& path, const QStringList& names) {
    return holds(QString("%1 holds %2").arg(path, names.join(", ")), [path, names] {
        return QDir(hostPath(path)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot) == names;
    });
}

Check descriptorNames(const QString& path, const QString& name) {
    return holds(QString("%1 says %2").arg(path, name), [path, name] {
        QFile descriptor(hostPath(path));
        return descriptor.open(QFile::ReadOnly) &&
               descriptor.readAll().startsWith("Name = " + name.toUtf8() + '\n');
    });
}

Check inMenu(const QString& name, const QString& folder) {
    return holds(QString("%1 of %2 is in the phone's menu").arg(name, folder), [name, folder] {
        const ZConfig installed(hostPath(Path::installedDb), true);
        const QString group = groupOf(installed, name);
        return installed.readEntry(group, "Directory", QString()) == folder &&
               menuFolder().count(group) == 1;
    });
}

Check menuIsAsItWas() {
    return holds("the phone's menu has no more than its own applications", [] {
        const QStringList known = readInstalledUIDs(hostPath(Path::installedDb));
        return known.size() == 2 && menuFolder().size() == 1 &&
               known.contains(menuFolder().first());
    });
}
