#include "install.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZPopup.h"
#include "dialogs.h"
#include "language.h"
#include "paths.h"
#include "settings.h"
#include "shell.h"
#include "storage.h"

#include <cstdio>

namespace {

const QString packageIcon = "Mpkgbox_Small.g";

QList<Choice> phoneAndCard() {
    QList<Choice> places = {{tr("FT_PH_MEMORY"), "ctact_mobile_tab.bmp"}};
    if (SdPresent)
        places.append({tr("FT_SD_MEMORY"), "fm_memory_card_tab.bmp"});
    return places;
}

QList<Choice> skinPlaces() {
    QList<Choice> places = phoneAndCard();
    if (SdPresent && SdExtPresent)
        places.append({tr("FT_SD_EXT_MEMORY"), "fm_memory_card_tab.bmp"});
    return places;
}

QString fileName(const QString& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

/// Unpacks the package into `folder` of the phone; without a folder the archiver unpacks into the
/// working directory.
bool unpack(const QString& package, const QString& folder, bool quietOnSuccess) {
    QString command = QString("%2 x -y '%3'").arg(ArchiverPath, asFileArgument(package));
    if (!folder.isEmpty())
        command += " -o" + hostPath(folder);
    return runPathCommand(package, command + literalNameSwitch(package), quietOnSuccess);
}

bool confirm(const char* titleKey, const char* textKey, const QString& package) {
    return askYesNo(tr(titleKey), tr(textKey) + ' ' + fileName(package), packageIcon);
}

std::optional<int> askPlace(const char* titleKey, const char* textKey,
                            const QList<Choice>& places) {
    return chooseOne(tr(titleKey), tr(textKey), places, packageIcon);
}

} // namespace

bool installZpk(const QString& path, ZPopup& pleaseWait, bool quietOnSuccess) {
    const std::optional<int> place =
        askPlace("POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_LOCATION_TEXT", phoneAndCard());
    if (!place)
        return false;
    showWhileWorking(pleaseWait, fileName(path));
    const QString folder = appsFolder(*place == 0 ? phoneMemory : memoryCard);
    unpack(path, folder, quietOnSuccess);
    runSystem(QString("chmod +x -R %1/ ;").arg(hostPath(folder)));
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
    const std::optional<int> place =
        askPlace("POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_LOCATION_TEXT", skinPlaces());
    if (!place)
        return;
    showWhileWorking(pleaseWait, fileName(path));
    const QStringList folders = {Path::phoneSkins, Path::cardSkins, Path::extSkins};
    unpack(path, folders.value(*place), false);
    pleaseWait.hide();
}
