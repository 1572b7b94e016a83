#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <memory>
#include <optional>

struct ZPK_App;

/// What a package says of itself before it is unpacked.
struct PackageInfo {
    bool isSafe = false; ///< nothing of it can come to lie, or lead, outside its folder
    qint64 bytes = 0;    ///< unpacked, at most `largestSize`
    int files = 0;
    QString folder;             ///< the one folder that it holds; empty where it holds others
    QSet<QString> folders;      ///< as `foldersOf` gives them
    QStringList names;          ///< of the files, with the folders that they lie in
    bool hasDescriptor = false; ///< one lies where it belongs
    std::shared_ptr<const ZPK_App> app; ///< null where there is none, or it was not read
    QByteArray icon;                    ///< the icon's file; empty where it was not read
};

/// Reads what the package at `path` (of the machine) holds with `archiver`, without unpacking
/// anything; none where the archiver cannot tell. It blocks, and may run on any thread.
std::optional<PackageInfo> readContents(const QString& archiver, const QString& path);

/// As `readContents`, and its descriptor with it.
std::optional<PackageInfo> readPackage(const QString& archiver, const QString& path);

/// The version of the installed application of that folder name; none where there is none.
std::optional<QString> installedVersion(const QString& folder);

/// A package file as it was when it was read.
struct Package {
    QString path;     ///< of the machine
    QByteArray state; ///< changes whenever the file does; empty where there is none
    std::optional<PackageInfo> info;
};

/// The name of its file.
QString fileName(const Package& package);

/// The package at `path`, read beside the event loop with the program's archiver, and its icon with
/// it.
Package packageAt(const QString& path);

/// False where the file has become another one.
bool isUnchanged(const Package& package);

/// The folders that the package holds directly.
QSet<QString> outermostFolders(const PackageInfo& info);

/// False where files lie beside the folders of the package.
bool holdsOnlyFolders(const PackageInfo& info);

/// True when nothing that already lies in the folder `target` (of the phone) leads the package out
/// of it: where it unpacks into a folder, there may not be a link.
bool staysInside(const PackageInfo& info, const QString& target);
