#include "ZConfig.h"

#include "RegularFile.h"

#include <QFile>

#include <cerrno>

#include <unistd.h>

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
    IniText::operator=(IniText(file.readAll()));
    m_writable = m_writable && file.error() == QFileDevice::NoError;
}

bool ZConfig::flush() {
    if (!m_changed)
        return true;
    if (!m_writable || !replaceFile(m_path, text()))
        return false;
    m_changed = false;
    return true;
}
