#include "RegularFile.h"

#include "Bytes.h"

#include <QFile>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

// Qt's QSaveFile is not used: it can only name files whose names are UTF-8, and writes to another
// file otherwise.

namespace {

/// A pattern for the name of a file beside `path`. It is not longer than a name may be, even where
/// that of `path` is nearly so.
QByteArray temporaryBeside(const QByteArray& path) {
    constexpr qsizetype longestStem = 200;
    return path.left(path.lastIndexOf('/') + 1 + longestStem) + ".XXXXXX";
}

bool writeAll(int descriptor, const QByteArray& content) {
    QFile file;
    return file.open(descriptor, QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.flush() && fsync(descriptor) == 0;
}

/// Reads to the end, which may have moved since the size was asked for.
Reading readFrom(int descriptor, qint64 limit, QByteArray& content) {
    struct stat info = {};
    if (fstat(descriptor, &info) != 0)
        return Reading::Unreadable;
    if (info.st_size > limit)
        return Reading::TooLarge;
    constexpr qsizetype more = 4096;
    content.resize(info.st_size + 1);
    qsizetype filled = 0;
    ssize_t count = 0;
    while ((count = read(descriptor, content.data() + filled, content.size() - filled)) > 0) {
        filled += count;
        if (filled == content.size())
            content.resize(filled + more);
    }
    content.resize(filled);
    return count == 0 ? Reading::Whole : Reading::Partial;
}

/// FAT has no inodes: the system makes up numbers, and other ones after it has forgotten a file.
bool hasLastingInodes(const QByteArray& path) {
    struct statfs system = {};
    return statfs(path.constData(), &system) != 0 || system.f_type != MSDOS_SUPER_MAGIC;
}

mode_t newFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

int openRegularFile(const QString& path) {
    const int descriptor = open(toBytes(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat info = {};
    if (descriptor < 0 || (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode)))
        return descriptor;
    close(descriptor);
    errno = EINVAL;
    return -1;
}

Reading readRegularFile(const QString& path, qint64 limit, QByteArray& content) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0)
        return Reading::Unreadable;
    const Reading reading = readFrom(descriptor, limit, content);
    close(descriptor);
    return reading;
}

QByteArray fileState(const QString& path) {
    struct stat info = {};
    QByteArray state = toBytes(path);
    if (stat(state.constData(), &info) != 0)
        return QByteArray();
    // The times of a folder tell of all that comes and goes in it. And to be asked what it is, a
    // FAT first counts all of its free clusters.
    const bool hasInode = !S_ISDIR(info.st_mode) && hasLastingInodes(state);
    const qint64 inode = hasInode ? qint64(info.st_ino) : 0;
    for (const qint64 part :
         {qint64(info.st_dev), inode, qint64(info.st_size), qint64(info.st_mtim.tv_sec),
          qint64(info.st_mtim.tv_nsec), qint64(info.st_ctim.tv_sec), qint64(info.st_ctim.tv_nsec)})
        state += ' ' + QByteArray::number(part);
    return state;
}

bool exists(const QString& path) {
    return access(toBytes(path).constData(), F_OK) == 0;
}

QString realPath(const QString& path) {
    char buffer[PATH_MAX] = {};
    return realpath(toBytes(path).constData(), buffer) ? fromBytes(buffer) : path;
}

QString workingDirectory() {
    char buffer[PATH_MAX] = {};
    return getcwd(buffer, sizeof buffer) ? fromBytes(buffer) : QString();
}

QString absolutePath(const QString& path) {
    return path.startsWith('/') ? path : workingDirectory() + '/' + path;
}

void syncFolder(const QByteArray& path) {
    const int folder = open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    fsync(folder);
    close(folder);
}

bool replaceFile(const QString& path, const QByteArray& content) {
    const QByteArray target = toBytes(realPath(path)); // so that a link stays a link
    struct stat before = {};
    const bool isNew = stat(target.constData(), &before) != 0;
    if (!isNew && (!S_ISREG(before.st_mode) ||
                   faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0))
        return false;
    QByteArray temporary = temporaryBeside(target);
    const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool written = writeAll(descriptor, content);
    // A change of the owner clears bits of the mode, so it goes first.
    const bool ownerKept = isNew || fchown(descriptor, before.st_uid, before.st_gid) == 0;
    fchmod(descriptor, isNew ? newFileMode() : before.st_mode & (ownerKept ? 07777 : 0777));
    close(descriptor);
    if (written && rename(temporary.constData(), target.constData()) == 0) {
        syncFolder(target.left(target.lastIndexOf('/') + 1));
        return true;
    }
    unlink(temporary.constData());
    return false;
}
