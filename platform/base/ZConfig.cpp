#include "ZConfig.h"

#include "Bytes.h"
#include "RegularFile.h"

#include <QFile>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Changes whenever the file does; empty where there is none.
QByteArray stateOf(const QString& path) {
    struct stat info = {};
    if (stat(toBytes(path).constData(), &info) != 0)
        return QByteArray();
    QByteArray state;
    for (const qint64 part : {qint64(info.st_dev), qint64(info.st_ino), qint64(info.st_size),
                              qint64(info.st_mtim.tv_sec), qint64(info.st_mtim.tv_nsec)})
        state += QByteArray::number(part) + ' ';
    return state;
}

} // namespace

ZConfig::ZConfig(const QString& path, bool readOnly) : m_path(path), m_writable(!readOnly) {
    load();
}

void ZConfig::load() {
    const int descriptor = openRegularFile(m_path);
    if (descriptor < 0) {
        m_writable = m_writable && errno == ENOENT;
        return;
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        m_writable = false;
        close(descriptor);
        return;
    }
    m_state = stateOf(m_path);
    IniText::operator=(IniText(file.readAll()));
    m_writable = m_writable && file.error() == QFileDevice::NoError;
}

bool ZConfig::flush() {
    if (!m_changed)
        return true;
    if (!m_writable || isOutdated() || !replaceFile(m_path, text()))
        return false;
    m_changed = false;
    m_state = stateOf(m_path);
    return true;
}

bool ZConfig::isOutdated() const {
    return stateOf(m_path) != m_state;
}
