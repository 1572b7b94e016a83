#include "unpacking.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "Waiting.h"
#include "ZPK_App.h"
#include "apps.h"
#include "database.h"
#include "descriptor.h"
#include "dialogs.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "objections.h"
#include "output.h"
#include "paths.h"
#include "question.h"
#include "settings.h"
#include "storage.h"
#include "terminal.h"
#include "unpack.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// Why a package that holds this cannot be installed; empty where it can.
QString flawOf(const Package& package) {
    if (const char* objection = objectionTo(package))
        return tr(objection);
    if (!exists(package.path))
        return QString::fromLocal8Bit(strerror(errno));
    if (!package.info)
        return "this is no package, or a damaged one";
    if (!isSkin(package) && !package.info->hasDescriptor)
        return QString("holds no application: there is no %1/%1.cfg in it")
            .arg(package.info->folder.isEmpty() ? "NAME" : package.info->folder);
    return QString();
}

/// All that the package holds is there. An archiver that was killed counts as one that succeeded.
bool isWhole(const PackageInfo& info, const QString& folder) {
    return std::all_of(info.names.begin(), info.names.end(), [&](const QString& name) {
        struct stat found = {};
        return lstat(toBytes(hostPath(folder + '/' + name)).constData(), &found) == 0;
    });
}

/// The application that has come into `folder` (of the phone).
void enter(const QString& folder, const QString& name) {
    const FolderGuard guard;
    const std::unique_ptr<ZPK_App> app = enterFolder(folder) ? readDescriptor(name) : nullptr;
    if (!app)
        return fail(name, "its descriptor cannot be read");
    app->location = folder == Path::cardApps ? memoryCard : phoneMemory;
    ensureAppInDb(*app);
    updateAppRecord(app->uuid.get(), app->name, app->path, app->location);
    if (app->registeredInMenu)
        updateAppInMenu(*app);
    const QString version = app->version.trimmed();
    succeed(name, QString("%1%2 is on the %3.")
                      .arg(app->shownName().trimmed(), version.isEmpty() ? "" : ' ' + version,
                           placeName(app->location)));
}

void install(const Package& package, const QString& folder) {
    const QString name = fileName(package);
    if (isInterrupted())
        return fail(name, "cancelled");
    if (const QString refusal = refusalText(package, folder); !refusal.isEmpty())
        return fail(name, refusal);
    showWorking(name);
    const bool isUnpacked = unpack(package, folder, true);
    if (isUnpacked && !isSkin(package))
        makeExecutable(hostPath(folder + '/' + package.info->folder));
    hideWorking();
    const QString reason = takeFailure();
    if (!isUnpacked || !isWhole(*package.info, folder))
        fail(name, reason.isEmpty() ? "not all of it could be unpacked" : reason);
    else if (isSkin(package))
        succeed(name, QString("%1 is in %2.").arg(name, folder));
    else
        enter(folder, package.info->folder);
}

} // namespace

bool isSkin(const Package& package) {
    return package.path.endsWith(".zsk", Qt::CaseInsensitive);
}

Package readFile(const QString& path, bool withDescriptor) {
    Package package = {path, fileState(path), std::nullopt};
    showWorking(fileName(package));
    runBeside([&] {
        package.info =
            withDescriptor ? readPackage(ArchiverPath, path) : readContents(ArchiverPath, path);
        return 0;
    });
    hideWorking();
    return package;
}

std::optional<Package> readForInstallation(const QString& path, bool withDescriptor) {
    const Package package = readFile(path, withDescriptor);
    const QString flaw = flawOf(package);
    if (flaw.isEmpty())
        return package;
    fail(path, flaw);
    return std::nullopt;
}

void installAll(const QList<Plan>& plans) {
    std::optional<WorkCancel> cancel;
    if (plans.size() > 1)
        cancel.emplace(WorkCancel::AfterPart);
    int number = 0;
    for (const Plan& plan : plans) {
        const WorkPart part(++number, int(plans.size()));
        install(plan.package, plan.folder);
    }
}

void makeExecutable(const QString& path) {
    const mode_t mask = umask(0);
    umask(mask);
    const auto bits = fs::perms(0111 & ~mask);
    std::error_code error;
    const fs::path folder = toBytes(path).toStdString();
    fs::permissions(folder, bits, fs::perm_options::add, error);
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->is_symlink(error))
            fs::permissions(entry->path(), bits, fs::perm_options::add, error);
        error.clear();
    }
}
