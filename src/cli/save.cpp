#include "PhoneRoot.h"
#include "RegularFile.h"
#include "batch.h"
#include "browser.h"
#include "commands.h"
#include "operations.h"
#include "output.h"
#include "paths.h"
#include "storage.h"

namespace {

/// The folder (of the machine) that `--to` names: a place of the phone's packages, or any folder.
/// None, told, where it is not there.
std::optional<QString> targetOf(const QString& name) {
    if (name == u"phone" || name == u"card") {
        const std::optional<int> place = placeOf(name);
        if (!place)
            return std::nullopt;
        const QString& folder = *place == memoryCard ? Path::cardPackages : Path::phonePackages;
        ensureDir(folder);
        return hostPath(folder);
    }
    const QString folder = absolutePath(name);
    if (isFolderEntry(folder))
        return folder;
    tell(QString("'%1' is neither phone nor card nor a folder").arg(name));
    return std::nullopt;
}

} // namespace

int runSave(const Call& call) {
    const std::optional<QString> target =
        targetOf(call.has("to") ? call.value("to") : QString("phone"));
    if (!target)
        return 2;
    const auto package = [&](const ZPK_App& app) {
        return *target + '/' + app.path.mid(app.path.lastIndexOf('/') + 1) + ".zpk";
    };
    std::vector<Installed> apps = installedApps();
    doToEach(
        chooseApps(apps, call.arguments),
        [&](ZPK_App& app) { return saveApp(app, *target, true) && exists(package(app)); }, package);
    return finish();
}
