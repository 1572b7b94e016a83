#include "unpack.h"

#include "PhoneRoot.h"
#include "Waiting.h"
#include "archiver.h"
#include "language.h"
#include "packageinfo.h"
#include "room.h"
#include "shell.h"
#include "upgrade.h"

#include <cstring>

namespace {

/// What became of an installation, after the old version or the new one has been put in its place.
Outcome settle(Upgrade& upgrade, int waitStatus, bool isCancelled) {
    if (isCancelled && waitStatus != 0) {
        runBeside([&] { return upgrade.undo(), 0; });
        return Outcome::Cancelled;
    }
    const bool isKept = waitStatus == 0 && runBeside([&] { return upgrade.keep() ? 1 : 0; }) == 1;
    if (upgrade.isEmpty())
        return waitStatus == 0 && !isKept ? notWritten() : outcomeOf(waitStatus);
    const bool isWhole = waitStatus == 0 && upgrade.isUnpacked();
    runBeside([&] {
        isWhole ? upgrade.finish() : upgrade.giveBack();
        return 0;
    });
    return isWhole ? Outcome::Done : Outcome::Failed;
}

} // namespace

bool unpack(const Package& package, const QString& folder, bool quietOnSuccess) {
    const std::optional<PackageInfo>& info = package.info;
    const WorkGoal goal(WorkGoal::Writes, info ? info->bytes : 0);
    const QString target = folder.isEmpty() ? QString() : hostPath(folder);
    const bool isBeside = info && !folder.isEmpty() && fitsBeside(*info, folder);
    // Unpacked in place, a damaged package would leave no way back.
    if (info && !folder.isEmpty() && !isBeside &&
        !runPathCommand(package.path, testCommand(package.path), true))
        return false;
    Upgrade upgrade(folder, isBeside ? outermostFolders(*info) : QSet<QString>());
    if (!upgrade.isReady()) {
        const QString reason = QString::fromLocal8Bit(strerror(upgrade.error()));
        showError(upgrade.error() == 0 ? tr("POP_ERROR_ASIDE_TEXT") : folder + ": " + reason);
        return false;
    }
    std::optional<WorkCancel> cancel;
    if (isBeside && holdsOnlyFolders(*info))
        cancel.emplace(WorkCancel::AtOnce);
    return runPathCommand(
        package.path, unpackCommand(package.path, target), quietOnSuccess,
        [&](int waitStatus) { return settle(upgrade, waitStatus, cancel && cancel->end()); });
}
