#include "PhoneRoot.h"
#include "due.h"
#include "files.h"
#include "settings.h"
#include "steps.h"
#include "words.h"

#include <QFile>

namespace {

const QString downloads = "/mmc/mmca1/download";

const QString torch = "Torch / Lena Brandt";
const QStringList onPhone = {blockDrop, calculator, worldClock};
const QStringList atFirst = {blockDrop, calculator, cityMap, worldClock, notes};
const QStringList withTorch = {blockDrop, calculator, cityMap, torch, worldClock, notes};

const QStringList withStar = {blockDrop, calculator, cityMap, torch + " *", worldClock, notes};

const QStringList packageFiles = {"city-map-0.9.zpk", "torch-1.0.zpk", "zametki-1.1.zpk",
                                  "Компас.zpk"};
const QStringList allFiles = {"city-map-0.9.zpk", "dusk.zsk",        "meadow.zsk", "notes.txt",
                              "torch-1.0.zpk",    "zametki-1.1.zpk", "Компас.zpk"};
const QStringList filesWithHalf = {"city-map-0.9.zpk", "half.zpk", "torch-1.0.zpk",
                                   "zametki-1.1.zpk", "Компас.zpk"};

Screen downloadList(const QStringList& files, int highlighted = 1) {
    return browser(downloads, {"games"}, files, highlighted);
}

/// The first half of a package, as a download that broke off leaves it.
void makeHalfPackage() {
    QFile whole(hostPath(downloads + "/city-map-0.9.zpk"));
    QFile half(hostPath(downloads + "/half.zpk"));
    if (whole.open(QFile::ReadOnly) && half.open(QFile::WriteOnly))
        half.write(whole.read(whole.size() / 2));
}

/// From `slowDown` to `speedUp`, which are acts of different steps.
QString realArchiver;

/// An archiver that takes its time for what it has unpacked.
void slowDown() {
    const QString path = hostPath("/tmp/slow");
    QFile script(path);
    if (!script.open(QFile::WriteOnly))
        return;
    realArchiver = ArchiverPath;
    script.write(QString("#!/bin/sh\n%1 \"$@\" || exit\n[ \"$2\" != -y ] || sleep 60\n")
                     .arg(realArchiver)
                     .toUtf8());
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    ArchiverPath = path;
}

void speedUp() {
    ArchiverPath = realArchiver;
}

/// The window as it comes up, its options, and the view's filters.
QList<Step> theList() {
    return {
        {"list", "Quiver starts", {}, {shows(appList(atFirst)), badge(false)}},
        {"menu", "opens the options", {left}, {shows(mainMenu({}))}},
        {"view", "opens the view", {Qt::Key_7}, {shows(viewMenu(true))}},
        {"card-hidden", "hides what is on the card", {Qt::Key_1}, {shows(appList(onPhone))}},
        {"view-again", "opens the view again", {left, Qt::Key_7}, {shows(viewMenu(false))}},
        {"card-shown", "shows the card again", {enter}, {shows(appList(atFirst))}},
        {"all-hidden",
         "wants only what is in the phone's menu",
         {left, Qt::Key_7, Qt::Key_3},
         {shows(appList({}))}},
        {"all-hidden-menu",
         "opens the options of the empty list",
         {left},
         {shows(mainMenu({0, 1, 2, 3, 4, 5, 7}, 6))}},
        {"all-shown",
         "shows everything again",
         {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, enter},
         {shows(appList(atFirst))}},
    };
}

/// The package browser, to the download folder with all its files.
QList<Step> thePackages() {
    return {
        {"card",
         "goes to the packages",
         {Qt::Key_Right},
         {shows(browser("/mmc/mmca1", {"download", "quiver", "skins", "zpk_files"}, {}))}},
        {"card-menu", "opens the options", {left}, {shows(browserMenu(false))}},
        {"downloads",
         "opens the download folder",
         {Qt::Key_Escape, Row{"download"}, enter},
         {shows(downloadList(packageFiles)),
          badges({"", "", "", word("TXT_MARK_SAME"), "", word("TXT_MARK_SAME"), ""})}},
        {"games",
         "opens the games",
         {Row{"games"}, enter},
         {shows(browser(downloads + "/games", {}, {"block-drop-1.3.zpk", "dice-1.0.zpk"})),
          badges({"", "", word("TXT_MARK_NEWER"), ""})}},
        {"update",
         "chooses a newer version",
         {Row{"block-drop-1.3.zpk"}, enter},
         {tells(word("POP_INSTALL_ZPK_TITLE"), "Mira Okafor")}},
        {"games-end",
         "does not want it, and goes back",
         {right, Row{".."}, enter},
         {shows(downloadList(packageFiles))}},
        {"package",
         "goes to a package",
         {Row{"torch-1.0.zpk"}},
         {shows(downloadList(packageFiles, 4))}},
        {"package-menu", "opens its options", {left}, {shows(browserMenu(true))}},
        {"all-files", "shows all files", {Qt::Key_2}, {shows(downloadList(allFiles))}},
    };
}

/// An installation on the card, from the question to the new row.
QList<Step> anInstallation() {
    return {
        {"install",
         "chooses a package",
         {Row{"torch-1.0.zpk"}, enter},
         {tells(word("POP_INSTALL_ZPK_TITLE"), "Torch")}},
        {"where", "says yes", {left}, {shows(placeQuestion(false))}},
        {"where-card",
         "goes to the card",
         {Qt::Key_Down},
         {shows(placeQuestion(true)), isFolderOf(cardApps, {"CityMap", "Zametki"})}},
        {"please-wait", "accepts", {left}, {tells("torch-1.0.zpk", word("POP_PLEASEWAIT"))}},
        {"success", "waits", {}, {shows(success())}},
        {"installed",
         "acknowledges",
         {left},
         {shows(downloadList(allFiles, 7)), isFolderOf(cardApps, {"CityMap", "Torch", "Zametki"}),
          isFile(cardApps + "/Torch/Torch.cfg"), isFile(cardApps + "/Torch/icon.svg"),
          isFile(cardApps + "/Torch/torch"), isExecutable(cardApps + "/Torch/torch")}},
        {"new-list", "goes to the applications", {Qt::Key_Left}, {shows(appList(withTorch))}},
        {"new-row", "goes to the new one", {Row{"Torch"}}, {shows(appList(withTorch, 3))}},
    };
}

/// An installation that takes long, and that the user does not want to wait for.
QList<Step> aCancelling() {
    return {
        {"slow",
         "chooses it once more, while the storage is slow",
         {slowDown, Qt::Key_Right, Row{"torch-1.0.zpk"}, enter},
         {tells(word("POP_INSTALL_ZPK_TITLE"), "Torch")}},
        {"slow-where", "says yes", {left}, {shows(placeQuestion(false))}},
        {"slow-wait",
         "takes the phone's memory",
         {left},
         {shows({"torch-1.0.zpk", {word("POP_PLEASEWAIT")}, "", word("SK_CANCEL")})}},
        {"cancelled",
         "cancels",
         {right},
         {tells(word("POP_CANCELLED_TITLE"), word("POP_CANCELLED_TEXT")),
          isFolderOf(phoneApps, {"BlockDrop", "Calculator", "WorldClock"})}},
        {"cancelled-end",
         "acknowledges",
         {speedUp, left},
         {shows(downloadList(allFiles, 7)), isFolderOf(cardApps, {"CityMap", "Torch", "Zametki"})}},
        {"cancelled-list", "goes to the applications", {Qt::Key_Left}, {shows(appList(withTorch))}},
    };
}

/// The selection of several rows, in and out.
QList<Step> multiSelect() {
    return {
        {"multi-select",
         "wants to select several",
         {left, Qt::Key_8},
         {shows(tickList(withTorch, 0, {})), badge(true)}},
        {"two-ticked",
         "ticks two",
         {enter, Row{"City Map"}, enter},
         {shows(tickList(withTorch, 2, {0, 2})), badge(true)}},
        {"multi-select-menu", "opens the options", {left}, {shows(multiSelectMenu())}},
        {"multi-select-end",
         "closes them and leaves the selection",
         {right, right},
         {shows(appList(withTorch)), badge(false)}},
    };
}

/// A package that cannot be unpacked.
QList<Step> aFailure() {
    return {
        {"half",
         "comes back to the packages, where a broken one has come in",
         {makeHalfPackage, Qt::Key_Right, left, Qt::Key_2},
         {[] { return shows(downloadList(filesWithHalf))(); }}},
        {"half-install",
         "chooses it",
         {Row{"half.zpk"}, enter},
         {shows(installQuestion("half.zpk"))}},
        {"half-where", "says yes", {enter}, {shows(placeQuestion(false))}},
        {"error",
         "takes the phone's memory",
         {enter},
         {tells(word("POP_ERROR_TITLE"), "half.zpk"),
          isFolderOf(phoneApps, {"BlockDrop", "Calculator", "WorldClock"})}},
        {"error-end", "acknowledges", {enter}, {[] {
             return shows(downloadList(filesWithHalf, 4))();
         }}},
        {"error-list", "goes to the applications", {Qt::Key_Left}, {shows(appList(withTorch))}},
    };
}

/// A place for the new application in the phone's menu.
QList<Step> aRegistration() {
    return {
        {"register",
         "wants Torch in the phone's menu",
         {Row{"Torch"}, left, Qt::Key_5},
         {shows(question("POP_CONFIRM_REGISTER_APP_MENU", "Torch")), menuIsAsItWas()}},
        {"registered",
         "says yes",
         {left},
         {shows(success()), inMenu("Torch", cardApps + "/Torch")}},
        {"star", "acknowledges", {left}, {shows(appList(withStar))}},
        {"only-registered",
         "wants only what is in the phone's menu",
         {left, Qt::Key_7, Qt::Key_3},
         {shows(appList({torch + " *"}))}},
    };
}

} // namespace

QList<Step> firstWalk() {
    return theList() + thePackages() + anInstallation() + aCancelling() + multiSelect() +
           aFailure() + aRegistration() + leavingWithRestart();
}
