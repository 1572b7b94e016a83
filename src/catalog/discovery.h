#pragma once

#include "ZPK_App.h"

#include <QString>
#include <QStringList>

#include <map>
#include <memory>

/// The installed applications: the display name and "_SD" (on the card) or "_PH" (on the phone) to
/// the record, in the order of the keys' code units. Rebuilt by `discoverApps`, which ends the
/// records of the run before: nobody may hold one past a refresh.
inline std::map<QString, std::unique_ptr<ZPK_App>> AppMap;

/// The key of `AppMap` for an application of that name and location.
QString appKey(const QString& name, int location);

/// Fills `AppMap` anew from the application folders of card and phone. The working directory is the
/// same afterwards.
void discoverApps();

/// The application of `AppMap` whose folder is `path`; null where there is none. A record does not
/// outlive a discovery, so whoever has waited for an answer looks for it again.
ZPK_App* appAt(const QString& path);

/// Gives `app` its identifier, the stored one where the database knows its folder, else a new one
/// with a row of its own, and its menu flag.
void ensureAppInDb(ZPK_App& app);

/// The names in the working directory: with `foldersOnly` its folders, else every name with ".zpk"
/// in it and, with both `otherFiles` and `showAll`, every other name that is no folder. Empty when
/// the folder cannot be read.
QStringList listDir(bool foldersOnly, bool otherFiles, bool showAll, bool sorted);
