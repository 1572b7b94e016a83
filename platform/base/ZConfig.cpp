#include "ZConfig.h"

#include "RegularFile.h"

#include <cerrno>

ZConfig::ZConfig(const QString& path, bool readOnly) : m_path(path), m_writable(!readOnly) {
    load();
}

void ZConfig::load() {
    QByteArray content;
    m_state = fileState(m_path);
    const Reading reading = readRegularFile(m_path, anySize, content);
    const bool isThere = reading != Reading::Unreadable || errno != ENOENT;
    m_writable = m_writable && (reading == Reading::Whole || !isThere);
    IniText::operator=(IniText(content));
}

bool ZConfig::flush() {
    if (!m_changed)
        return true;
    if (!m_writable || isOutdated() || !replaceFile(m_path, text()))
        return false;
    m_changed = false;
    m_state = fileState(m_path);
    return true;
}

bool ZConfig::isOutdated() const {
    return fileState(m_path) != m_state;
}
