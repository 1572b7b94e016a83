#include "AM_AppRegistry.h"

#include "AM_Files.h"
#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZConfig.h"

#include <unistd.h>

namespace {

/// The UUID that `text` is, with or without braces; a null one for any other text, also for one
/// that only begins like a UUID.
QUuid wholeUuid(const QString& text) {
    const QUuid uuid = QUuid::fromString(text);
    for (const QUuid::StringFormat format : {QUuid::WithoutBraces, QUuid::WithBraces}) {
        if (text.compare(uuid.toString(format), Qt::CaseInsensitive) == 0)
            return uuid;
    }
    return QUuid();
}

} // namespace

AM_AppRegistry::AM_AppRegistry(QObject* parent, const char* name) : QObject(parent) {
    setObjectName(QString::fromLatin1(name));
}

int AM_AppRegistry::init() {
    return load() ? 0 : 1;
}

bool AM_AppRegistry::load() const {
    m_objects.clear();
    m_byUuid.clear();
    m_loaded = true;
    const bool installed = loadFile(installedDbFile);
    const bool builtIn = loadFile(builtInDbFile);
    return installed || builtIn;
}

bool AM_AppRegistry::loadFile(const QString& phonePath) const {
    const QString path = hostPath(phonePath);
    if (access(toBytes(path).constData(), R_OK) != 0)
        return false;
    const ZConfig file(path, true);
    for (const QString& group : file.groups()) {
        const QUuid uuid = wholeUuid(group);
        if (uuid.isNull() || m_byUuid.contains(uuid))
            continue;
        m_objects.push_back(std::make_unique<AM_AppObject>(file, group));
        m_byUuid.insert(uuid, m_objects.back().get());
    }
    return true;
}

void AM_AppRegistry::getAllAppObjects(QList<const AM_AppObject*>& objects) const {
    for (const auto& object : m_objects)
        objects.append(object.get());
}

const AM_AppObject* AM_AppRegistry::getRegistryObject(const QString& uid) const {
    if (!m_loaded)
        load();
    return m_byUuid.value(wholeUuid(uid));
}
