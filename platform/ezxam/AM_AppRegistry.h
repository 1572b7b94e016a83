#pragma once

#include "AM_AppObject.h"

#include <QHash>
#include <QList>
#include <QObject>

#include <memory>
#include <vector>

/// The phone's registry of applications, as the application manager keeps it in two INI files:
/// those that were installed and, read-only, those that the phone came with. In both, an
/// application is a group named by its UUID without braces, with the keys "Name", "Type", "Icon",
/// "BigIcon", "Atribute", "Directory", "Exec" and "Vendor". Groups of other names are no
/// applications. What is installed hides what is built in.
class AM_AppRegistry : public QObject {
    Q_OBJECT

public:
    AM_AppRegistry(QObject* parent, const char* name);

    /// Reads both files. 0 means success; 1 that neither could be read.
    int init();

    /// Appends every application to `objects`: the installed ones in file order, then the built-in
    /// ones. They belong to the registry.
    void getAllAppObjects(QList<const AM_AppObject*>& objects) const;

    /// The application of that UUID, with or without braces, in any letter case; null where it is
    /// unknown. Reads the files when that has not been done.
    const AM_AppObject* getRegistryObject(const QString& uid) const;

private:
    bool load() const;
    bool loadFile(const QString& phonePath) const;

    mutable std::vector<std::unique_ptr<AM_AppObject>> m_objects;
    mutable QHash<QUuid, const AM_AppObject*> m_byUuid;
    mutable bool m_loaded = false;
};
