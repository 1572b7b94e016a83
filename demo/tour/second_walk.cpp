#include "due.h"
#include "files.h"
#include "paths.h"
#include "steps.h"
#include "words.h"

namespace {

const QString torch = "Torch / Lena Brandt *";
const QString lamp = "Lamp / Lena Brandt *";
const QString package = Path::cardPackages + "/Torch.zpk";

const QStringList atFirst = {blockDrop, calculator, cityMap, torch, worldClock, notes};
const QStringList renamed = {blockDrop, calculator, cityMap, lamp, worldClock, notes};
const QStringList withoutMap = {blockDrop, calculator, lamp, worldClock, notes};
const QStringList atLast = {blockDrop, lamp, worldClock};

/// From the card to the phone's memory; the entry in the phone's menu goes along.
QList<Step> aMove() {
    return {
        {"again", "Quiver starts again", {}, {shows(appList(atFirst))}},
        {"move",
         "wants Torch to move",
         {Row{"Torch"}, left, Qt::Key_1},
         {shows(question("POP_CONFIRM_MOVE_TEXT", "Torch"))}},
        {"moved",
         "says yes",
         {left},
         {shows(success()), isFolderOf(cardApps, {"CityMap", "Zametki"}),
          isFolderOf(phoneApps, {"BlockDrop", "Calculator", "Torch", "WorldClock"})}},
        {"on-phone",
         "acknowledges",
         {left},
         {shows(appList(atFirst, 3)), inMenu("Torch", phoneApps + "/Torch")}},
    };
}

QList<Step> aRenaming() {
    return {
        {"rename",
         "wants another name for it",
         {left, Qt::Key_2},
         {shows(nameQuestion("Torch", "Torch"))}},
        {"typed", "types the name", {'L', 'a', 'm', 'p'}, {shows(nameQuestion("Torch", "Lamp"))}},
        {"renamed",
         "accepts",
         {left},
         {shows(appList(renamed, 3)), inMenu("Lamp", phoneApps + "/Torch"),
          descriptorNames(phoneApps + "/Torch/Torch.cfg", "Lamp")}},
        {"refreshed", "has the list made anew", {left, Qt::Key_9}, {shows(appList(renamed))}},
    };
}

/// Into the package folder of the card, and there it is.
QList<Step> aPackage() {
    return {
        {"save-menu",
         "opens the places for a package",
         {Row{"Lamp"}, left, Qt::Key_6},
         {shows(saveMenu())}},
        {"saved", "takes the memory card", {Qt::Key_1}, {shows(success()), isFile(package)}},
        {"saved-end", "acknowledges", {left}, {shows(appList(renamed, 3))}},
        {"package-there",
         "looks into the package folder",
         {Qt::Key_Right, Row{"zpk_files"}, enter},
         {[] { return shows(browser(Path::cardPackages, {}, {"Torch.zpk"}))(); }}},
    };
}

QList<Step> notices() {
    return {
        {"properties",
         "goes back and asks for the properties",
         {Qt::Key_Left, left, Qt::Key_4},
         {tells("Lamp", "Lena Brandt"), tells("Lamp", "1.0"), tells("Lamp", word("APP_COMMENT"))}},
        {"about",
         "closes them and asks about Quiver",
         {left, left, Qt::Key_0},
         {tells(word("FT_ABOUT"), "Quiver v1.2")}},
    };
}

QList<Step> aDeletion() {
    return {
        {"delete",
         "closes that and wants City Map deleted",
         {left, Row{"City Map"}, left, Qt::Key_3},
         {shows(question("POP_CONFIRM_DELETE_TEXT", "City Map")),
          isFolderOf(cardApps, {"CityMap", "Zametki"})}},
        {"deleted", "says yes", {left}, {shows(success()), isFolderOf(cardApps, {"Zametki"})}},
        {"without-map", "acknowledges", {left}, {shows(appList(withoutMap, 2))}},
    };
}

/// Two move, two others go, each pair at one go.
QList<Step> batches() {
    return {
        {"batch-move",
         "selects two and wants them to move",
         {left, Qt::Key_8, enter, Row{"World Clock"}, enter, left, Qt::Key_1},
         {shows(question("POP_CONFIRM_MOVE_MULTIPLE_TEXT"))}},
        {"batch-moved",
         "says yes",
         {left},
         {shows(appList(withoutMap)), badge(false), isFolderOf(phoneApps, {"Calculator", "Torch"}),
          isFolderOf(cardApps, {"BlockDrop", "WorldClock", "Zametki"})}},
        {"batch-delete",
         "selects two others and wants them deleted",
         {left, Qt::Key_8, Row{"Calculator"}, enter, Row{"Заметки"}, enter, left, Qt::Key_2},
         {shows(question("POP_CONFIRM_DELETE_MULTIPLE_TEXT"))}},
        {"batch-deleted",
         "says yes",
         {left},
         {shows(appList(atLast)), badge(false), isFolderOf(phoneApps, {"Torch"}),
          isFolderOf(cardApps, {"BlockDrop", "WorldClock"})}},
    };
}

QList<Step> anUnregistration() {
    return {
        {"unregister",
         "wants it out of the phone's menu",
         {Row{"Lamp"}, left, Qt::Key_5},
         {shows(question("POP_CONFIRM_UNREGISTER_APP_MENU", "Lamp")),
          inMenu("Lamp", phoneApps + "/Torch")}},
        {"unregistered", "says yes", {left}, {shows(success()), menuIsAsItWas()}},
        {"no-star",
         "acknowledges",
         {left},
         {shows(appList({blockDrop, "Lamp / Lena Brandt", worldClock}))}},
    };
}

} // namespace

QList<Step> secondWalk() {
    return aMove() + aRenaming() + aPackage() + notices() + aDeletion() + batches() +
           anUnregistration() + leavingWithRestart();
}
