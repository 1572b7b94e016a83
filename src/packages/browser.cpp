#include "browser.h"

#include "Bytes.h"
#include "discovery.h"

#include <sys/stat.h>

namespace {

std::optional<qint64> sizeOf(const QString& name) {
    struct stat info = {};
    if (stat(toBytes(name).constData(), &info) != 0)
        return std::nullopt;
    return info.st_size;
}

} // namespace

QList<FolderEntry> listFolder(bool showAll) {
    QList<FolderEntry> entries;
    for (const QString& name : listDir(true, false, false, true))
        entries.append({name, true, std::nullopt});
    for (const QString& name : listDir(false, true, showAll, true))
        entries.append({name, false, sizeOf(name)});
    return entries;
}

QString sizeText(qint64 size) {
    constexpr qint64 kilobyte = 1024;
    if (size < kilobyte)
        return QString::asprintf("%lld bytes", static_cast<long long>(size));
    return QString::asprintf("%.2f Kbytes", double(size) / kilobyte);
}

bool isFolderEntry(const QString& name) {
    struct stat info = {};
    return stat(toBytes(name).constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isPackageName(const QString& name) {
    return name.endsWith(".zpk", Qt::CaseInsensitive);
}
