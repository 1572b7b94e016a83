#include "RegularFile.h"

#include "Bytes.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

int openRegularFile(const QString& path) {
    const int descriptor = open(toBytes(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat info = {};
    if (descriptor < 0 || (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode)))
        return descriptor;
    close(descriptor);
    errno = EINVAL;
    return -1;
}

bool readRegularFile(const QString& path, qint64 limit, QByteArray& content) {
    const int descriptor = openRegularFile(path);
    QFile file;
    if (descriptor < 0 ||
        !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) ||
        file.size() > limit)
        return false;
    content = file.readAll();
    return file.error() == QFileDevice::NoError;
}

bool replaceFile(const QString& path, const QByteArray& content) {
    struct stat before = {};
    const bool existed = stat(toBytes(path).constData(), &before) == 0;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(content) != content.size())
        return false;
    if (existed && fchown(file.handle(), before.st_uid, before.st_gid) == 0)
        fchmod(file.handle(), before.st_mode & 07777);
    return file.commit();
}
