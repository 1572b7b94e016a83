#include "packageinfo.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "Waiting.h"
#include "archive.h"
#include "aside.h"
#include "descriptor.h"
#include "settings.h"
#include "storage.h"

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 largestDescriptor = 1024 * 1024;
constexpr qint64 largestIcon = 4 * 1024 * 1024;
constexpr qsizetype mostLinks = 500;
constexpr qint64 longestTarget = 4096;

/// The targets of the links, in their order; none where they cannot be read.
std::optional<QStringList> linkTargets(const QString& archiver, const QString& path,
                                       const QList<ArchiveEntry>& entries) {
    QStringList names;
    QList<qint64> sizes;
    for (const ArchiveEntry& entry : entries) {
        if (!entry.isLink)
            continue;
        if (names.size() == mostLinks || entry.size > longestTarget)
            return std::nullopt;
        names.append(entry.name);
        sizes.append(entry.size);
    }
    QStringList targets;
    if (names.isEmpty())
        return targets;
    const std::optional<QByteArray> all =
        readFromArchive(archiver, path, names, mostLinks * longestTarget);
    qint64 start = 0;
    for (const qint64 size : sizes) {
        targets.append(all ? fromBytes(all->mid(start, size)) : QString());
        start += size;
    }
    return all && all->size() == start ? std::optional(targets) : std::nullopt;
}

/// Of the application in `folder`, in its package.
QString descriptorName(const QString& folder) {
    return folder + '/' + folder + ".cfg";
}

/// The folder that all entries lie in; empty where there is none.
QString commonFolder(const QList<ArchiveEntry>& entries) {
    QString folder;
    for (const ArchiveEntry& entry : entries) {
        const qsizetype end = entry.name.indexOf('/');
        const QString outermost = entry.name.left(end);
        if ((end < 0 && !entry.isFolder) || (!folder.isEmpty() && outermost != folder))
            return QString();
        folder = outermost;
    }
    return folder;
}

bool holdsFile(const QList<ArchiveEntry>& entries, const QString& name, qint64 largest) {
    return std::any_of(entries.begin(), entries.end(), [&](const ArchiveEntry& entry) {
        return entry.name == name && !entry.isFolder && !entry.isLink && entry.size <= largest;
    });
}

/// True where a link lies already on the way from `path` (of the machine) down to its `folder`.
bool leadsThroughLink(QString path, const QString& folder) {
    for (const QString& step : folder.split('/')) {
        path += '/' + step;
        struct stat found = {};
        if (lstat(toBytes(path).constData(), &found) != 0)
            return false;
        if (S_ISLNK(found.st_mode))
            return true;
    }
    return false;
}

void readIcon(const QString& archiver, Package& package) {
    PackageInfo& info = *package.info;
    if (!info.app || info.app->icon.isEmpty())
        return;
    const QString name = info.folder + '/' + info.app->icon;
    info.icon = readFromArchive(archiver, package.path, {name}, largestIcon).value_or(QByteArray());
}

} // namespace

std::optional<PackageInfo> readContents(const QString& archiver, const QString& path) {
    if (const int descriptor = openRegularFile(path); descriptor >= 0)
        close(descriptor);
    else
        return std::nullopt;
    const std::optional<ArchiveListing> listing = listArchive(archiver, path);
    if (!listing)
        return std::nullopt;
    const QList<ArchiveEntry>& entries = listing->entries;
    PackageInfo info;
    const std::optional<QStringList> targets = linkTargets(archiver, path, entries);
    info.isSafe = listing->isWhole && targets && staysInside(entries, *targets);
    for (const ArchiveEntry& entry : entries) {
        info.bytes = qMin(info.bytes + entry.size, largestSize);
        info.files += entry.isFolder ? 0 : 1;
        if (!entry.isFolder)
            info.names.append(entry.name);
    }
    info.folder = commonFolder(entries);
    info.folders = foldersOf(entries);
    const QSet<QString> outermost = outermostFolders(info);
    info.isSafe = info.isSafe && std::none_of(outermost.begin(), outermost.end(), isNameOfAside);
    info.hasDescriptor =
        info.isSafe && holdsFile(entries, descriptorName(info.folder), largestDescriptor);
    return info;
}

std::optional<PackageInfo> readPackage(const QString& archiver, const QString& path) {
    std::optional<PackageInfo> info = readContents(archiver, path);
    if (!info || !info->hasDescriptor)
        return info;
    const QString name = descriptorName(info->folder);
    if (const auto text = readFromArchive(archiver, path, {name}, largestDescriptor))
        info->app = parseDescriptor(*text);
    return info;
}

QString fileName(const Package& package) {
    return package.path.mid(package.path.lastIndexOf('/') + 1);
}

Package packageAt(const QString& path) {
    Package package = {path, fileState(path), std::nullopt};
    runBeside([&package, archiver = ArchiverPath] {
        package.info = readPackage(archiver, package.path);
        if (package.info)
            readIcon(archiver, package);
        return 0;
    });
    return package;
}

bool isUnchanged(const Package& package) {
    return fileState(package.path) == package.state;
}

std::optional<QString> installedVersion(const QString& folder) {
    for (const int location : {phoneMemory, memoryCard}) {
        const QString descriptor =
            hostPath(QString("%1/%2/%2.cfg").arg(appsFolder(location), folder));
        if (access(toBytes(descriptor).constData(), R_OK) != 0)
            continue;
        if (const std::optional<QByteArray> text = readWholeFile(descriptor))
            return parseDescriptor(*text)->version;
    }
    return std::nullopt;
}

QSet<QString> outermostFolders(const PackageInfo& info) {
    QSet<QString> names;
    for (const QString& folder : info.folders)
        names.insert(folder.left(folder.indexOf('/')));
    return names;
}

bool holdsOnlyFolders(const PackageInfo& info) {
    return std::all_of(info.names.begin(), info.names.end(),
                       [](const QString& name) { return name.contains('/'); });
}

bool staysInside(const PackageInfo& info, const QString& target) {
    return std::none_of(info.folders.begin(), info.folders.end(), [&](const QString& folder) {
        return leadsThroughLink(hostPath(target), folder);
    });
}
