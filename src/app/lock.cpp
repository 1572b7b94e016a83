#include "lock.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "paths.h"

#include <QList>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isHeldByAnother(int folder) {
    return flock(folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

/// The folder's descriptor, which has the lock as long as it is open; -1 where another program has
/// it, -2 where there is no such folder.
int lockedFolder(const QString& phonePath, int patience) {
    constexpr int pause = 50; // ms
    const QByteArray path = toBytes(hostPath(phonePath));
    const int folder = open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (; folder >= 0 && isHeldByAnother(folder); patience -= pause) {
        if (patience <= 0) {
            close(folder);
            return -1;
        }
        usleep(pause * 1000);
    }
    return folder < 0 ? -2 : folder;
}

int phoneLock = -1;

QByteArray contentOf(const QString& path) {
    QByteArray content;
    readRegularFile(path, anySize, content);
    return content;
}

/// The program that has locked the folder; empty where none has.
QString holderOf(const QString& phonePath) {
    struct stat folder = {};
    if (stat(toBytes(hostPath(phonePath)).constData(), &folder) != 0)
        return QString();
    // "1: FLOCK  ADVISORY  WRITE PROCESS MAJOR:MINOR:INODE 0 EOF"; the device may have another
    // number there.
    const QByteArray inode = ':' + QByteArray::number(qulonglong(folder.st_ino));
    for (const QByteArray& line : contentOf("/proc/locks").split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() < 6 || words.at(1) != "FLOCK" || !words.at(5).endsWith(inode))
            continue;
        const QString process = fromBytes(words.at(4));
        const QString name = fromBytes(contentOf("/proc/" + process + "/comm").trimmed());
        return QString("%1, process %2").arg(name.isEmpty() ? "?" : name, process);
    }
    return QString();
}

} // namespace

bool lockPhone(int patience) {
    if (phoneLock < 0)
        phoneLock = lockedFolder(Path::systemFolder, patience);
    return phoneLock != -1;
}

void unlockPhone() {
    if (phoneLock >= 0)
        close(phoneLock);
    phoneLock = -1;
}

bool claimWindow() {
    return lockedFolder(Path::phoneApps, 0) != -1; // stays open, and with it the mark
}

bool hasWindow() {
    return !holderOf(Path::phoneApps).isEmpty();
}

QString phoneHolder() {
    return holderOf(Path::systemFolder);
}
