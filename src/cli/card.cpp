#include "card.h"

#include "Bytes.h"
#include "RegularFile.h"
#include "browser.h"
#include "options.h"
#include "paths.h"

#include <QList>

#include <algorithm>
#include <array>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 largestTable = 1 << 20;
constexpr std::array places = {"/media/", "/run/media/", "/mnt/"};

QByteArray contentOf(const QByteArray& path) {
    QByteArray content;
    readRegularFile(fromBytes(path), largestTable, content);
    return content;
}

/// A blank, for one, is "\040" in the table.
QByteArray unescaped(const QByteArray& word) {
    QByteArray path;
    for (qsizetype i = 0; i < word.size(); ++i) {
        bool isNumber = false;
        const int code = word.mid(i + 1, 3).toInt(&isNumber, 8);
        const bool isCode = word.at(i) == '\\' && isNumber && i + 3 < word.size();
        path += isCode ? char(code) : word.at(i);
        i += isCode ? 3 : 0;
    }
    return path;
}

bool isBelowPlace(const QByteArray& folder) {
    return std::any_of(places.begin(), places.end(),
                       [&](const char* place) { return folder.startsWith(place); });
}

/// The folder that the kernel has for the whole disk of the device with these numbers.
QByteArray diskOf(const QByteArray& devices, const QByteArray& numbers) {
    const QByteArray device = toBytes(realPath(fromBytes(devices + '/' + numbers)));
    const bool isPartition = exists(fromBytes(device + "/partition"));
    return isPartition ? device.left(device.lastIndexOf('/')) : device;
}

bool isRemovable(const QByteArray& disk) {
    return contentOf(disk + "/removable").trimmed() == "1" ||
           contentOf(disk + "/device/type").trimmed() == "SD";
}

/// What an entry of the phone's is now.
enum class Entry { Nothing, Link, Folder };

Entry entryAt(const QByteArray& path) {
    struct stat info = {};
    if (lstat(path.constData(), &info) != 0)
        return Entry::Nothing;
    return S_ISLNK(info.st_mode) ? Entry::Link : Entry::Folder;
}

QByteArray targetOf(const QByteArray& link) {
    char buffer[PATH_MAX] = {};
    const ssize_t length = readlink(link.constData(), buffer, sizeof buffer);
    return length < 0 ? QByteArray() : QByteArray(buffer, length);
}

/// Makes the phone's mount point lead to `target`, or to nothing where that is empty. A folder with
/// something in it stays. False where the phone is not as it should be then.
bool lead(const QByteArray& mount, const QByteArray& target, bool& isKept) {
    const Entry entry = entryAt(mount);
    isKept = entry == Entry::Folder && rmdir(mount.constData()) != 0;
    if (isKept)
        return target.isEmpty();
    if (entry == Entry::Link && !target.isEmpty() && targetOf(mount) == target)
        return true;
    if (entry == Entry::Link && unlink(mount.constData()) != 0)
        return false;
    return target.isEmpty() || symlink(target.constData(), mount.constData()) == 0;
}

/// The phone's mount table with a line for `mount`, or without one.
QByteArray withMount(const QByteArray& table, const QByteArray& mount, bool isMounted) {
    QByteArray result;
    bool isThere = false;
    for (const QByteArray& line : table.split('\n')) {
        const bool isIts = line.simplified().split(' ').value(1) == mount;
        isThere = isThere || isIts;
        if (!line.isEmpty() && (!isIts || isMounted))
            result += line + '\n';
    }
    if (isMounted && !isThere)
        result += "/dev" + mount.mid(mount.lastIndexOf('/')) + ' ' + mount + " vfat rw 0 0\n";
    return result;
}

bool insertOne(const QString& root, const QString& mount, const QString& storage) {
    bool isKept = false;
    const QByteArray phone = toBytes(root);
    mkdir((phone + "/mmc").constData(), 0755);
    if (!lead(phone + toBytes(mount), toBytes(storage), isKept))
        return false;
    const QString path = root + Path::mountTable;
    const QByteArray table = contentOf(toBytes(path));
    const QByteArray changed =
        withMount(table, toBytes(mount), (isKept && !Option::noCard) || !storage.isEmpty());
    return changed == table || replaceFile(path, changed);
}

} // namespace

std::vector<Storage> removableStorages(const QByteArray& mounts, const QByteArray& devices) {
    std::vector<Storage> storages;
    for (const QByteArray& line : mounts.split('\n')) {
        const QList<QByteArray> words = line.split(' '); // id, parent, device, root, folder, ...
        const QByteArray folder = unescaped(words.value(4));
        if (!isBelowPlace(folder))
            continue;
        const QByteArray disk = diskOf(devices, words.at(2));
        if (isRemovable(disk))
            storages.push_back({folder, disk});
    }
    std::sort(storages.begin(), storages.end(),
              [](const Storage& a, const Storage& b) { return a.folder < b.folder; });
    return storages;
}

std::vector<Storage> removableStorages() {
    return removableStorages(contentOf("/proc/self/mountinfo"), "/sys/dev/block");
}

bool isCardIn(const QString& root) {
    const QString card = realPath(root + Path::cardMount);
    const QByteArray path = toBytes(card) + '/';
    if (!isFolderEntry(card) || !isBelowPlace(path))
        return isFolderEntry(card);
    const QList<QByteArray> lines = contentOf("/proc/self/mountinfo").split('\n');
    return std::any_of(lines.begin(), lines.end(), [&](const QByteArray& line) {
        const QByteArray folder = unescaped(line.split(' ').value(4));
        return isBelowPlace(folder) && path.startsWith(folder + '/');
    });
}

bool insertCard(const QString& root, const QString& card, const QString& second) {
    return insertOne(root, Path::cardMount, card) && insertOne(root, Path::extMount, second);
}
