#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "aside.h"
#include "discovery.h"
#include "findings.h"
#include "paths.h"
#include "storage.h"
#include "upgrade.h"

#include <cstdio>

#include <sys/stat.h>

namespace {

/// Puts the folder of an application beside the applications' own, where nobody takes it for one;
/// what knew of it forgets it.
void setAside(const QString& path) {
    const QString folder = path.left(path.lastIndexOf('/')) + "-aside";
    ensureDir(folder);
    const QString name = hostPath(folder) + path.mid(path.lastIndexOf('/'));
    QString target = name;
    for (int i = 2; exists(target); ++i)
        target = QString("%1.%2").arg(name).arg(i);
    if (rename(toBytes(hostPath(path)).constData(), toBytes(target).constData()) == 0)
        forget(path, appRows());
}

void checkUpgrades(const QString& root, Findings& findings) {
    const FolderGuard guard;
    if (!enterFolder(root))
        return;
    for (const QString& name : listDir(true, false, false, true)) {
        if (isNameOfAside(name))
            findings.append({"interrupted-upgrade", root + '/' + name,
                             "an upgrade was interrupted, and the old version still waits",
                             "end the upgrade, or undo it where it is not whole", mendUpgrades});
    }
}

/// What lies there may be half a version, which goes when the old one comes back.
bool isBeingUpgraded(const QString& root, const QString& name) {
    return exists(fromBytes(asidePath(toBytes(hostPath(root)), toBytes(name), asideBefore)));
}

void checkAppsIn(const QString& root, Findings& findings) {
    const FolderGuard guard;
    if (!enterFolder(root))
        return;
    for (const QString& name : listDir(true, false, false, true)) {
        const QString path = root + '/' + name;
        if (!name.startsWith('.') && !isBeingUpgraded(root, name))
            checkAppFolder(
                hostPath(path), path, [path] { setAside(path); }, findings);
    }
}

} // namespace

void checkFolders(Findings& findings) {
    for (const QString& root :
         {Path::phoneApps, Path::phoneSkins, Path::cardApps, Path::cardSkins, Path::extSkins}) {
        if (!isOnAbsentCard(root))
            checkUpgrades(root, findings);
    }
    checkAppsIn(Path::phoneApps, findings);
    if (SdPresent)
        checkAppsIn(Path::cardApps, findings);
}
