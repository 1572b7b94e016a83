#pragma once

#include "ZPK_App.h"

#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <vector>

/// Applications: the display name and "_SD" (on the card) or "_PH" (on the phone) to the record, in
/// the order of the keys' code units.
using Apps = std::map<QString, std::unique_ptr<ZPK_App>>;

/// What is installed. Every discovery ends the records of the one before: nobody may hold one past
/// a refresh.
inline Apps AppMap;

/// The key in `Apps` of an application of that name and location.
QString appKey(const QString& name, int location);

/// The applications in the folder of a storage location, in the order of their folders' names, as
/// their descriptors tell them. The working directory is the same afterwards.
std::vector<std::unique_ptr<ZPK_App>> readApps(int location);

/// The applications in the folders of card and phone, each with its row in the database. The
/// working directory is the same afterwards. It may run beside the event loop, with `AppMap` in
/// use meanwhile.
Apps findApps();

/// Fills `AppMap` anew with what `findApps` finds.
void discoverApps();

/// The application of `AppMap` whose folder is `path`; null where there is none. A record does not
/// outlive a discovery, so whoever has waited for an answer looks for it again.
ZPK_App* appAt(const QString& path);

/// Changes whenever another program has installed, deleted, moved or renamed an application, or put
/// one into the phone's menu.
QByteArray appsState();

/// Gives `app` its identifier, the stored one where the database knows its folder, else a new one
/// with a row of its own, and its menu flag.
void ensureAppInDb(ZPK_App& app);

/// An identifier that the database does not have.
QUuid unusedUuid();

/// The names in the working directory: with `foldersOnly` its folders, else every name with ".zpk"
/// in it and, with both `otherFiles` and `showAll`, every other name that is no folder. Empty when
/// the folder cannot be read.
QStringList listDir(bool foldersOnly, bool otherFiles, bool showAll, bool sorted);
