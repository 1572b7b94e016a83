#include "PhoneRoot.h"

#include "Bytes.h"
#include "RegularFile.h"

#include <QStringList>

#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What was last entered, as the phone knows it. Where a link inside the phone's root leads out of
/// it, the system only tells the place behind the link. The process has one working directory, and
/// so one of these.
QString enteredFolder;

QString phoneRoot() {
    QString root = fromBytes(qgetenv("QUIVER_ROOT"));
    while (root.endsWith('/'))
        root.chop(1);
    return root;
}

bool isInside(const QString& folder, const QString& path) {
    return path == folder || path.startsWith(folder + '/');
}

/// `path` without ".", ".." and doubled slashes, seen from `base`; never above "/".
QString resolvedPath(const QString& base, const QString& path) {
    const QString whole = path.startsWith('/') ? path : base + '/' + path;
    QStringList parts;
    for (const QString& part : whole.split('/', Qt::SkipEmptyParts)) {
        if (part == u"..")
            parts.isEmpty() ? void() : parts.removeLast();
        else if (part != u".")
            parts.append(part);
    }
    return '/' + parts.join('/');
}

bool isSameFolder(const QString& first, const QString& second) {
    struct stat a = {};
    struct stat b = {};
    return stat(toBytes(first).constData(), &a) == 0 &&
           stat(toBytes(second).constData(), &b) == 0 && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}

} // namespace

bool isPlainForShell(const QByteArray& path) {
    for (const char c : path) {
        const uchar byte = static_cast<uchar>(c);
        if (byte < 0x80 && !isalnum(byte) && !strchr("/._-+,=:@%", c))
            return false;
    }
    return true;
}

bool preparePhoneRoot(QString& error) {
    QString root = phoneRoot();
    if (root.isEmpty())
        return true;
    root = absolutePath(root);
    if (!isPlainForShell(toBytes(root))) {
        error = QString("QUIVER_ROOT '%1' holds a blank, a quote or another character that a shell "
                        "command takes apart; use a link to it without one")
                    .arg(root);
        return false;
    }
    struct stat info = {};
    if (stat(toBytes(root).constData(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        error = QString("QUIVER_ROOT '%1' is not a folder").arg(root);
        return false;
    }
    qputenv("QUIVER_ROOT", toBytes(root));
    if (mkdir(toBytes(root + "/tmp").constData(), 0777) == 0)
        chmod(toBytes(root + "/tmp").constData(), 01777);
    return true;
}

QString hostPath(const QString& phonePath) {
    const QString root = phoneRoot();
    if (root.isEmpty() || !phonePath.startsWith('/'))
        return phonePath;
    const QString path = resolvedPath("/", phonePath);
    return path == u"/" ? root : root + path;
}

QString phonePath(const QString& hostPath) {
    const QString root = phoneRoot();
    if (root.isEmpty())
        return hostPath;
    for (const QString& folder : {root, realPath(root)}) {
        if (isInside(folder, hostPath))
            return hostPath == folder ? QString("/") : hostPath.mid(folder.size());
    }
    return hostPath;
}

bool enterFolder(const QString& path) {
    const QString target = resolvedPath(currentFolder(), path);
    if (chdir(toBytes(hostPath(target)).constData()) != 0)
        return false;
    enteredFolder = target;
    return true;
}

QString currentFolder() {
    const QString host = workingDirectory();
    const QString phone = phonePath(host);
    const bool outside = phone == host && !phoneRoot().isEmpty();
    if (outside && !enteredFolder.isEmpty() && isSameFolder(hostPath(enteredFolder), host))
        return enteredFolder;
    return phone;
}

FolderGuard::FolderGuard()
    : m_folder(open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)), m_entered(enteredFolder) {}

FolderGuard::~FolderGuard() {
    if (m_folder < 0)
        return;
    if (fchdir(m_folder) != 0)
        perror("working directory");
    enteredFolder = m_entered;
    close(m_folder);
}
