#pragma once

#include "ZPK_App.h"
#include "database.h"

#include <QHash>
#include <QJsonObject>
#include <QStringList>

#include <optional>
#include <vector>

/// The applications that lie on the phone, as a command needs them.

struct Installed {
    std::unique_ptr<ZPK_App> app; ///< its identifier is null where it was never entered
    QString folder;               ///< its name
};

/// All applications, in the order in which they are listed. Nothing is written.
std::vector<Installed> installedApps();

/// The rows of the database by their paths; of several for one path, the first.
QHash<QString, AppRow> rowsByPath();

/// The application that is meant by `name`: its folder, its display name, its identifier or a path.
/// Null, with the failure told, where there is none or several fit.
ZPK_App* chooseApp(std::vector<Installed>& apps, const QString& name);

/// Those that are meant, each once, without those that could not be found. All of them are in the
/// database afterwards.
std::vector<ZPK_App*> chooseApps(std::vector<Installed>& apps, const QStringList& names);

/// As `list` gives it.
QJsonObject describe(const ZPK_App& app);

/// "phone" or "card"
QString placeName(int location);

/// The storage location of that name; none, told as a misuse, for any other or for a card that is
/// not in the phone.
std::optional<int> placeOf(const QString& name);
