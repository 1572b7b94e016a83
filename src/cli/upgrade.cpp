#include "Bytes.h"
#include "RegularFile.h"
#include "ZPK_App.h"
#include "apps.h"
#include "browser.h"
#include "commands.h"
#include "options.h"
#include "output.h"
#include "storage.h"
#include "terminal.h"
#include "unpacking.h"
#include "version.h"

#include <QDir>
#include <QJsonArray>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

struct Upgrading {
    const ZPK_App* app;
    QString folder;
    Package package;
};

bool isApplicationPackage(const QString& path) {
    return path.endsWith(".zpk", Qt::CaseInsensitive);
}

/// The packages in a folder, at any depth, by their paths.
QStringList packagesIn(const QString& folder) {
    QStringList paths;
    std::error_code error;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(toBytes(folder).toStdString(), options, error), end;
         !error && entry != end; entry.increment(error)) {
        const QString path = fromBytes(QByteArray::fromStdString(entry->path().string()));
        if (isApplicationPackage(path) && entry->is_regular_file(error))
            paths.append(path);
    }
    if (error)
        fail(folder, QString::fromStdString(error.message()));
    paths.sort();
    return paths;
}

/// The packages that are named, or lie in folders that are. What cannot be read is told.
QList<Package> packagesOf(const QStringList& names) {
    QStringList paths;
    for (const QString& name : names) {
        const QString path = QDir::cleanPath(absolutePath(name));
        paths += isFolderEntry(path) ? packagesIn(path) : QStringList{path};
    }
    QList<Package> packages;
    for (const QString& path : paths) {
        if (isInterrupted())
            fail(path, "cancelled");
        else if (const std::optional<Package> package = readForInstallation(path, true);
                 package && package->info->app)
            packages.append(*package);
    }
    return packages;
}

/// The newest of the packages for the application in `folder`; null where none is newer than it.
const Package* newestFor(const ZPK_App& app, const QString& folder,
                         const QList<Package>& packages) {
    const Package* newest = nullptr;
    QString version = app.version;
    for (const Package& package : packages) {
        const PackageInfo& info = *package.info;
        if (info.folder != folder || compareVersions(info.app->version, version) <= 0)
            continue;
        newest = &package;
        version = info.app->version;
    }
    return newest;
}

QJsonObject describe(const Upgrading& upgrade) {
    QJsonObject object;
    put(object, "folder", upgrade.folder);
    put(object, "from", upgrade.app->version.trimmed());
    put(object, "to", upgrade.package.info->app->version.trimmed());
    put(object, "file", upgrade.package.path);
    return object;
}

QStringList rowOf(const Upgrading& upgrade) {
    return {upgrade.folder, upgrade.app->version.trimmed(),
            upgrade.package.info->app->version.trimmed(), placeName(upgrade.app->location),
            upgrade.package.path};
}

int tellUpgrades(const QList<Upgrading>& upgrades) {
    QJsonArray documents;
    QList<QStringList> rows;
    for (const Upgrading& upgrade : upgrades) {
        documents.append(describe(upgrade));
        rows.append(rowOf(upgrade));
    }
    if (Option::json)
        printDocument({{"upgrades", documents}});
    else
        printTable({"FOLDER", "FROM", "TO", "PLACE", "FILE"}, rows);
    return hasFailed() ? 1 : 0;
}

void install(const QList<Upgrading>& upgrades) {
    QStringList lines;
    for (const Upgrading& upgrade : upgrades)
        lines.append(QString("%1 %2 to %3")
                         .arg(upgrade.folder, upgrade.app->version.trimmed(),
                              upgrade.package.info->app->version.trimmed()));
    const QString question =
        QString("Upgrade %1?").arg(counted(int(upgrades.size()), "application"));
    if (!confirm(question, lines.join('\n')))
        return;
    QList<Plan> plans;
    for (const Upgrading& upgrade : upgrades)
        plans.append({upgrade.package, appsFolder(upgrade.app->location)});
    installAll(plans);
}

} // namespace

int runUpgrade(const Call& call) {
    const std::vector<Installed> apps = installedApps();
    const QList<Package> packages = packagesOf(call.arguments);
    QList<Upgrading> upgrades;
    for (const Installed& installed : apps) {
        if (const Package* newest = newestFor(*installed.app, installed.folder, packages))
            upgrades.append({installed.app.get(), installed.folder, *newest});
    }
    if (call.has("dry-run"))
        return tellUpgrades(upgrades);
    if (!upgrades.isEmpty())
        install(upgrades);
    else if (!hasFailed())
        printDone("Nothing is newer than what is installed.");
    return finish();
}
