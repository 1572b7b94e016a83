#pragma once

#include <QString>
#include <QStringList>
#include <QUuid>

#include <map>
#include <memory>

/// What the phone's registry knows of one application.
class AppRegistryEntry {
public:
    /// Looks `uid` (a UUID without braces) up in the phone's registry.
    explicit AppRegistryEntry(const QString& uid);

    /// The icon, else the second icon, else a null text.
    QString preferredIcon() const;

    QString uid;
    QString name;
    int type = 0;
    QString icon;
    QString attribute;
    QString secondIcon;
    QString secondIconOfType2; ///< the second icon once more, for applications of type 2 only
    bool valid = false;        ///< the registry knows the application
};

/// The applications of the phone's registry by UUID without braces; filled once per run.
inline std::map<QString, std::unique_ptr<AppRegistryEntry>> registryEntries;

/// Text form of `uuid` without braces, 36 characters.
QString plainUuid(const QUuid& uuid);

/// Fills `registryEntries`, unless it holds something already and `reload` is false.
void loadAppRegistry(bool reload);

/// `list` with the UUIDs of all group headers of the file at `path` (of the machine) behind it.
QStringList readInstalledUIDs(const QString& path, QStringList list = {});

/// Prints the applications of the program's own menu folder.
void listAppsMenuRegistered();
