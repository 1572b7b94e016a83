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
#include "version.h"

#include <QLocale>

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
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

/// True where it cannot be told.
bool fits(const std::optional<PackageInfo>& info, const QString& folder) {
    const std::optional<qint64> free = freeBytes(folder);
    return !info || !free || bytesNeeded(*info, folder) <= *free;
}

QString fileName(const QString& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

/// Unpacks the package into `folder` of the phone; without a folder the archiver unpacks into the
/// working directory.
bool unpack(const QString& package, const QString& folder, const std::optional<PackageInfo>& info,
            bool quietOnSuccess) {
    const WorkGoal goal(WorkGoal::Writes, info ? info->bytes : 0);
    QString command = QString("%2 x -y '%3'").arg(ArchiverPath, asFileArgument(package));
    if (!folder.isEmpty())
        command += " -o" + hostPath(folder);
    return runPathCommand(package, command + literalNameSwitch(package), quietOnSuccess);
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

bool confirm(const char* titleKey, const char* textKey, const QString& path) {
    return askToInstall(tr(titleKey), tr(textKey) + ' ' + fileName(path), path, packageInfo(path));
}

/// The folder that the user wants the package in; none where he wants none, where it does not fit
/// or where it is refused.
std::optional<QString> askPlace(const char* titleKey, const char* textKey,
                                const QList<Place>& places,
                                const std::optional<PackageInfo>& info) {
    QList<Choice> choices;
    for (const Place& place : places) {
        Choice choice = {tr(place.key), place.iconName};
        if (const std::optional<qint64> free = freeBytes(place.folder))
            choice.secondText =
                tr(fits(info, place.folder) ? "TXT_FREE" : "TXT_TOO_SMALL").arg(dataSize(*free));
        choices.append(choice);
    }
    const std::optional<int> chosen = chooseOne(tr(titleKey), tr(textKey), choices, packageIcon);
    if (!chosen)
        return std::nullopt;
    // Without a known place the archiver unpacks into the working directory.
    const QString folder = places.value(*chosen, Place()).folder;
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
    return info ? askAbout(title, text, detailsOf(path, *info), packageIcon)
                : askYesNo(title, text, packageIcon);
}

bool installZpk(const QString& path, ZPopup& pleaseWait, bool quietOnSuccess) {
    const std::optional<PackageInfo> info = packageInfo(path);
    if (isNoFile(path) || isRefused(info))
        return false;
    const std::optional<QString> folder =
        askPlace("POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_LOCATION_TEXT", appPlaces(), info);
    if (!folder)
        return false;
    showWhileWorking(pleaseWait, fileName(path));
    unpack(path, *folder, info, quietOnSuccess);
    runSystem(QString("chmod +x -R %1/ ;").arg(hostPath(*folder)));
    pleaseWait.hide();
    return true;
}

void installZpkFromConsole(const QString& path, ZPopup& pleaseWait) {
    puts("DEBUG:: ZPK Installer Mode from Console");
    if (!confirm("POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_CONFIRM_TEXT", path))
        return;
    printf("DEBUG:: Install ZPK (%s)\n", toBytes(path).constData());
    installZpk(path, pleaseWait, false);
}

void installZskFromConsole(const QString& path, ZPopup& pleaseWait) {
    puts("DEBUG:: ZSK Installer Mode from Console");
    if (!confirm("POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_CONFIRM_TEXT", path))
        return;
    printf("DEBUG:: Install ZSK (%s)\n", toBytes(path).constData());
    const std::optional<PackageInfo> info = packageInfo(path);
    if (isRefused(info))
        return;
    const std::optional<QString> folder =
        askPlace("POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_LOCATION_TEXT", skinPlaces(), info);
    if (!folder)
        return;
    showWhileWorking(pleaseWait, fileName(path));
    unpack(path, *folder, info, false);
    pleaseWait.hide();
}
