#include "room.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "aside.h"
#include "packageinfo.h"

#include <algorithm>

#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

/// Bytes that the package takes on the storage.
qint64 bytesUnpacked(const PackageInfo& info) {
    // A file takes whole blocks.
    constexpr qint64 blockSize = 4096;
    return info.bytes + info.files * blockSize;
}

} // namespace

qint64 bytesNeeded(const PackageInfo& info, const QString& target) {
    qint64 replaced = 0;
    for (const QString& name : info.names) {
        struct stat old = {};
        const QString path = hostPath(target + '/' + name);
        if (lstat(toBytes(path).constData(), &old) == 0 && S_ISREG(old.st_mode))
            replaced += old.st_size;
    }
    return qMax<qint64>(0, bytesUnpacked(info) - replaced);
}

std::optional<qint64> freeBytes(const QString& path) {
    struct statvfs info = {};
    if (statvfs(toBytes(hostPath(path)).constData(), &info) != 0)
        return std::nullopt;
    return qint64(info.f_bavail) * qint64(info.f_frsize);
}

bool fits(const PackageInfo& info, const QString& folder) {
    const std::optional<qint64> free = freeBytes(folder);
    return !free || bytesNeeded(info, folder) <= *free;
}

bool fitsBeside(const PackageInfo& info, const QString& folder) {
    const QSet<QString> names = outermostFolders(info);
    const std::optional<qint64> free = freeBytes(folder);
    return std::all_of(names.begin(), names.end(), canBePutAside) &&
           (!free || bytesUnpacked(info) <= *free);
}
