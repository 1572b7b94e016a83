#include "install.h"

#include "Bytes.h"
#include "Look.h"
#include "PhoneRoot.h"
#include "PictureFile.h"
#include "Waiting.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "dialogs.h"
#include "language.h"
#include "packageinfo.h"
#include "paths.h"
#include "settings.h"
#include "shell.h"
#include "storage.h"
#include "upgrade.h"
#include "version.h"

#include <QLocale>

#include <algorithm>
#include <cstdio>

#include <sys/stat.h>

namespace {

const QString packageIcon = "Mpkgbox_Small.g";

struct Place {
    const char* key;
    const char* iconName;
    QString folder; ///< of the phone
};

const Place phoneApps = {"FT_PH_MEMORY", "ctact_mobile_tab.bmp", Path::phoneApps};
const Place cardApps = {"FT_SD_MEMORY", "fm_memory_card_tab.bmp", Path::cardApps};

QList<Place> appPlaces() {
    return SdPresent ? QList<Place>{phoneApps, cardApps} : QList<Place>{phoneApps};
}

QList<Place> skinPlaces() {
    QList<Place> places = {{"FT_PH_MEMORY", "ctact_mobile_tab.bmp", Path::phoneSkins}};
    if (SdPresent)
        places.append({"FT_SD_MEMORY", "fm_memory_card_tab.bmp", Path::cardSkins});
    if (SdPresent && SdExtPresent)
        places.append({"FT_SD_EXT_MEMORY", "fm_memory_card_tab.bmp", Path::extSkins});
    return places;
}

QString dataSize(qint64 bytes) {
    return QLocale(languageCode()).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

/// True where it cannot be told.
bool fits(const std::optional<PackageInfo>& info, const QString& folder) {
    const std::optional<qint64> free = freeBytes(folder);
    return !info || !free || bytesNeeded(*info, folder) <= *free;
}

QString fileName(const QString& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

/// True where the storage holds the new version beside the one that it replaces, and where it
/// cannot be told.
bool fitsBeside(const PackageInfo& info, const QString& folder) {
    const QSet<QString> names = outermostFolders(info);
    const std::optional<qint64> free = freeBytes(folder);
    return std::all_of(names.begin(), names.end(), canBePutAside) &&
           (!free || bytesUnpacked(info) <= *free);
}

/// The archiver's verdict on a package that leaves no way back.
bool isSound(const QString& package) {
    const QString test = QString("%2 t -y '%3'").arg(ArchiverPath, asFileArgument(package));
    return runPathCommand(package, test + literalNameSwitch(package), true);
}

/// What became of an installation, after the old version or the new one has been put in its place.
Outcome settle(Upgrade& upgrade, int waitStatus, bool isCancelled) {
    if (isCancelled && waitStatus != 0) {
        runBeside([&] { return upgrade.undo(), 0; });
        return Outcome::Cancelled;
    }
    if (upgrade.isEmpty())
        return outcomeOf(waitStatus);
    const bool isWhole = waitStatus == 0 && upgrade.isUnpacked();
    runBeside([&] {
        isWhole ? upgrade.finish() : upgrade.giveBack();
        return 0;
    });
    return isWhole ? Outcome::Done : Outcome::Failed;
}

/// Unpacks the package into `folder` of the phone; without a folder the archiver unpacks into the
/// working directory.
bool unpack(const QString& package, const QString& folder, const std::optional<PackageInfo>& info,
            bool quietOnSuccess) {
    const WorkGoal goal(WorkGoal::Writes, info ? info->bytes : 0);
    QString command = QString("%2 x -y '%3'").arg(ArchiverPath, asFileArgument(package));
    if (!folder.isEmpty())
        command += " -o" + hostPath(folder);
    command += literalNameSwitch(package);
    const bool isBeside = info && !folder.isEmpty() && fitsBeside(*info, folder);
    if (info && !folder.isEmpty() && !isBeside && !isSound(package))
        return false;
    Upgrade upgrade(folder, isBeside ? outermostFolders(*info) : QSet<QString>());
    if (!upgrade.isReady()) {
        showError(tr("POP_ERROR_ASIDE_TEXT"));
        return false;
    }
    std::optional<WorkCancel> cancel;
    if (isBeside && holdsOnlyFolders(*info))
        cancel.emplace(WorkCancel::AtOnce);
    return runPathCommand(package, command, quietOnSuccess, [&](int waitStatus) {
        return settle(upgrade, waitStatus, cancel && cancel->end());
    });
}

/// The package's version beside the installed one.
QString versionText(const PackageInfo& info) {
    const QString version = info.app->version.trimmed();
    const std::optional<QString> installed = installedVersion(info.folder);
    if (!installed)
        return version;
    const int difference = compareVersions(version, *installed);
    const char* key = difference == 0  ? "TXT_SAME_VERSION"
                      : difference > 0 ? "TXT_REPLACES"
                                       : "TXT_OLDER_VERSION";
    const auto shown = [](const QString& text) { return text.isEmpty() ? QString("-") : text; };
    return tr(key).replace("%2", shown(installed->trimmed())).replace("%1", shown(version));
}

Details detailsOf(const QString& path, const PackageInfo& info) {
    const bool isSkin = path.endsWith(".zsk", Qt::CaseInsensitive);
    Details details;
    details.heading = info.app ? info.app->name.trimmed() : QString();
    if (details.heading.isEmpty())
        details.heading = info.folder.isEmpty() ? fileName(path) : info.folder;
    if (info.app)
        details.subheading = versionText(info);
    else if (!isSkin)
        details.subheading = tr("TXT_NO_APP");
    details.icon = readPicture(info.icon, Measure::rowIcon);
    if (info.app && !info.app->author.trimmed().isEmpty())
        details.facts.append({tr("APP_AUTHOR"), info.app->author.trimmed()});
    details.facts.append({tr("TXT_UNPACKED"), dataSize(info.bytes)});
    details.facts.append({tr("TXT_FILES"), QString::number(info.files)});
    return details;
}

/// Also says so. Without a folder of the phone, what lies there already is not looked at.
bool isRefused(const std::optional<PackageInfo>& info, const QString& folder = QString()) {
    if (!info || (info->isSafe && (folder.isEmpty() || staysInside(*info, folder))))
        return false;
    showError(tr("POP_ERROR_UNSAFE_TEXT"));
    return true;
}

/// Also says so. The archiver would wait for ever at a pipe. A file that is not there is its own
/// matter.
bool isNoFile(const QString& path) {
    struct stat info = {};
    if (stat(toBytes(path).constData(), &info) != 0 || S_ISREG(info.st_mode))
        return false;
    showError(tr("POP_ERROR_NO_FILE_TEXT"));
    return true;
}

bool confirm(const char* titleKey, const char* textKey, const Package& package) {
    return askToInstall(tr(titleKey), tr(textKey) + ' ' + fileName(package.path), package.path,
                        package.info);
}

/// The text that tells what the free space is enough for.
const char* freeKey(const std::optional<PackageInfo>& info, const QString& folder) {
    if (!fits(info, folder))
        return "TXT_TOO_SMALL";
    return info && !fitsBeside(*info, folder) ? "TXT_TIGHT" : "TXT_FREE";
}

/// The folder that the user wants the package in; none where he wants none, where it does not fit
/// or where it is refused, also because it is not the one any more that he was asked about. `other`
/// stands for a place that the list does not have.
std::optional<QString> askPlace(const char* titleKey, const char* textKey,
                                const QList<Place>& places, const Place& other,
                                const Package& package) {
    const std::optional<PackageInfo>& info = package.info;
    QList<Choice> choices;
    for (const Place& place : places) {
        Choice choice = {tr(place.key), place.iconName};
        if (const std::optional<qint64> free = freeBytes(place.folder))
            choice.secondText = tr(freeKey(info, place.folder)).arg(dataSize(*free));
        choices.append(choice);
    }
    const std::optional<int> chosen = chooseOne(tr(titleKey), tr(textKey), choices, packageIcon);
    if (!chosen)
        return std::nullopt;
    const QString folder = places.value(*chosen, other).folder;
    if (!isUnchanged(package)) {
        showError(tr("POP_ERROR_CHANGED_TEXT"));
        return std::nullopt;
    }
    if (isRefused(info, folder))
        return std::nullopt;
    if (fits(info, folder))
        return folder;
    showError(tr("POP_ERROR_SPACE_TEXT")
                  .arg(dataSize(bytesNeeded(*info, folder)), dataSize(*freeBytes(folder))));
    return std::nullopt;
}

} // namespace

bool askToInstall(const QString& title, const QString& text, const QString& path,
                  const std::optional<PackageInfo>& info) {
    if (isNoFile(path) || isRefused(info))
        return false;
    const QString name = fileName(path);
    Details details = info ? detailsOf(path, *info) : Details();
    if (!text.contains(name))
        details.facts.prepend({tr("TXT_PACKAGE"), name});
    return info || !details.facts.isEmpty() ? askAbout(title, text, details, packageIcon)
                                            : askYesNo(title, text, packageIcon);
}

bool installZpk(const Package& package, ZPopup& pleaseWait, bool quietOnSuccess) {
    if (isNoFile(package.path) || isRefused(package.info))
        return false;
    const std::optional<QString> folder = askPlace(
        "POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_LOCATION_TEXT", appPlaces(), cardApps, package);
    if (!folder)
        return false;
    showWhileWorking(pleaseWait, fileName(package.path));
    unpack(package.path, *folder, package.info, quietOnSuccess);
    runSystem(QString("chmod +x -R %1/ ;").arg(hostPath(*folder)));
    pleaseWait.hide();
    return true;
}

void installZpkFromConsole(const QString& path, ZPopup& pleaseWait) {
    puts("DEBUG:: ZPK Installer Mode from Console");
    const Package package = packageAt(path);
    if (!confirm("POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_CONFIRM_TEXT", package))
        return;
    printf("DEBUG:: Install ZPK (%s)\n", toBytes(path).constData());
    installZpk(package, pleaseWait, false);
}

void installZskFromConsole(const QString& path, ZPopup& pleaseWait) {
    puts("DEBUG:: ZSK Installer Mode from Console");
    const Package package = packageAt(path);
    if (!confirm("POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_CONFIRM_TEXT", package))
        return;
    printf("DEBUG:: Install ZSK (%s)\n", toBytes(path).constData());
    const std::optional<QString> folder = askPlace(
        "POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_LOCATION_TEXT", skinPlaces(), Place(), package);
    if (!folder)
        return;
    showWhileWorking(pleaseWait, fileName(path));
    unpack(path, *folder, package.info, false);
    pleaseWait.hide();
}
