#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "appregistry.h"
#include "apps.h"
#include "commands.h"
#include "foldersize.h"
#include "options.h"
#include "output.h"
#include "unpacking.h"
#include "version.h"

namespace {

bool isPackageFile(const QString& name) {
    return (name.endsWith(".zpk", Qt::CaseInsensitive) ||
            name.endsWith(".zsk", Qt::CaseInsensitive)) &&
           exists(name);
}

int tellApp(const ZPK_App& app) {
    const FolderContents contents = contentsOf(hostPath(app.path));
    QJsonObject object = describe(app);
    put(object, "exec", app.exec.trimmed());
    put(object, "icon", app.icon.trimmed());
    put(object, "comment", app.comment.trimmed());
    object["bytes"] = contents.bytes;
    object["files"] = contents.files;
    if (Option::json) {
        printDocument({{"application", object}});
        return 0;
    }
    printFacts(
        {{"Name", app.shownName().trimmed()},
         {"Version", app.version.trimmed()},
         {"Author", app.author.trimmed()},
         {"Comment", app.comment.trimmed()},
         {"Place", placeName(app.location)},
         {"Folder", app.path},
         {"Program", app.exec.trimmed()},
         {"Icon", app.icon.trimmed()},
         {"Identifier", app.uuid ? plainUuid(*app.uuid) : "none yet"},
         {"In the menu", app.registeredInMenu ? "yes" : "no"},
         {"Size",
          QString("%1 in %2").arg(sizeWords(contents.bytes), counted(contents.files, "file"))}});
    return 0;
}

/// What installing the package would do.
QString effectOf(const PackageInfo& info, const std::optional<QString>& installed) {
    if (!info.isSafe)
        return "would be refused: it would write outside its folder";
    if (!info.app)
        return QString();
    if (!installed)
        return "would install it anew";
    const int difference = compareVersions(info.app->version, *installed);
    const QString what = difference > 0   ? "would replace the older %1"
                         : difference < 0 ? "would replace the newer %1"
                                          : "would replace %1 by the same version";
    return what.arg(installed->trimmed());
}

int tellPackage(const Package& package) {
    const PackageInfo& info = *package.info;
    const std::optional<QString> installed =
        info.folder.isEmpty() ? std::nullopt : installedVersion(info.folder);
    const QString name = info.app ? info.app->shownName().trimmed() : QString();
    QJsonObject object;
    put(object, "file", package.path);
    put(object, "folder", info.folder);
    put(object, "name", name);
    put(object, "author", info.app ? info.app->author.trimmed() : QString());
    put(object, "version", info.app ? info.app->version.trimmed() : QString());
    if (installed)
        put(object, "installed", installed->trimmed());
    else
        object["installed"] = QJsonValue();
    object["files"] = info.files;
    object["bytes"] = info.bytes;
    object["safe"] = info.isSafe;
    if (Option::json) {
        printDocument({{"package", object}});
        return 0;
    }
    printFacts(
        {{"File", package.path},
         {"Name", name},
         {"Version", object["version"].toString()},
         {"Author", object["author"].toString()},
         {"Comment", info.app ? info.app->comment.trimmed() : QString()},
         {"Folder", info.folder},
         {"Size", QString("%1 in %2").arg(sizeWords(info.bytes), counted(info.files, "file"))},
         {"Installing", effectOf(info, installed)}});
    return 0;
}

} // namespace

int runInfo(const Call& call) {
    const QString name = call.arguments.first();
    if (isPackageFile(name)) {
        const Package package = readFile(absolutePath(name), true);
        if (package.info)
            return tellPackage(package);
        fail(name, "this is no package, or a damaged one");
        return finish();
    }
    std::vector<Installed> apps = installedApps();
    const ZPK_App* app = chooseApp(apps, name);
    return app ? tellApp(*app) : finish();
}
