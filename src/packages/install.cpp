#include "install.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "dialogs.h"
#include "language.h"
#include "packageinfo.h"
#include "paths.h"
#include "question.h"
#include "shell.h"
#include "storage.h"
#include "unpack.h"

#include <cstdio>

namespace {

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

bool confirm(const Question& question, const Package& package) {
    return askToInstall(tr(question.title), tr(question.text) + ' ' + fileName(package), package);
}

void unpackWaiting(const Package& package, const QString& folder, bool quietOnSuccess) {
    showWorking(fileName(package));
    unpack(package, folder, quietOnSuccess);
}

} // namespace

bool installZpk(const Package& package, bool quietOnSuccess) {
    const std::optional<QString> folder = askPlace(
        {"POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_LOCATION_TEXT"}, appPlaces(), cardApps, package);
    if (!folder)
        return false;
    unpackWaiting(package, *folder, quietOnSuccess);
    runSystem(QString("chmod +x -R %1/ ;").arg(hostPath(*folder)));
    hideWorking();
    return true;
}

void installZpkFromConsole(const QString& path) {
    puts("DEBUG:: ZPK Installer Mode from Console");
    const Package package = packageAt(path);
    if (!confirm({"POP_INSTALL_ZPK_TITLE", "POP_INSTALL_ZPK_CONFIRM_TEXT"}, package))
        return;
    printf("DEBUG:: Install ZPK (%s)\n", toBytes(path).constData());
    installZpk(package, false);
}

void installZskFromConsole(const QString& path) {
    puts("DEBUG:: ZSK Installer Mode from Console");
    const Package package = packageAt(path);
    if (!confirm({"POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_CONFIRM_TEXT"}, package))
        return;
    printf("DEBUG:: Install ZSK (%s)\n", toBytes(path).constData());
    const std::optional<QString> folder = askPlace(
        {"POP_INSTALL_ZSK_TITLE", "POP_INSTALL_ZSK_LOCATION_TEXT"}, skinPlaces(), Place(), package);
    if (!folder)
        return;
    unpackWaiting(package, *folder, false);
    hideWorking();
}
