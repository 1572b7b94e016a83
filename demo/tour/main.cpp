// Walks through the real window on a phone to try Quiver on, as a user would, and takes a picture
// at every step: tour demo|bare LANGUAGE FOLDER. scripts/tour prepares what it needs.
#include "Bytes.h"
#include "PhoneRoot.h"
#include "walk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cstdio>

namespace {

constexpr Qt::Key left = Qt::Key_F1;
constexpr Qt::Key right = Qt::Key_F2;
constexpr Qt::Key enter = Qt::Key_Return;

const QString phoneApps = "/ezxlocal/download/mystuff/quiver";
const QString cardApps = "/mmc/mmca1/quiver";
const QString downloads = "/mmc/mmca1/download";

// The applications of the phone, in the order of the list.
const QString blockDrop = "Block Drop / Mira Okafor";
const QString calculator = "Calculator / J. Lindqvist";
const QString cityMap = "City Map / Open Atlas";
const QString torch = "Torch / Lena Brandt";
const QString worldClock = "World Clock / T. Ueda";
const QString notes = "Заметки / Павел Н.";
const QStringList onPhone = {blockDrop, calculator, worldClock};
const QStringList atFirst = {blockDrop, calculator, cityMap, worldClock, notes};
const QStringList withTorch = {blockDrop, calculator, cityMap, torch, worldClock, notes};

const QStringList packageFiles = {"city-map-0.9.zpk", "torch-1.0.zpk", "zametki-1.1.zpk",
                                  "Компас.zpk"};
const QStringList allFiles = {"city-map-0.9.zpk", "dusk.zsk",        "meadow.zsk", "notes.txt",
                              "torch-1.0.zpk",    "zametki-1.1.zpk", "Компас.zpk"};
const QStringList filesWithHalf = {"city-map-0.9.zpk", "half.zpk", "torch-1.0.zpk",
                                   "zametki-1.1.zpk", "Компас.zpk"};

QString onDisk(const QString& phonePath) {
    return hostPath(phonePath);
}

QStringList marked(QStringList rows, int highlighted) {
    if (highlighted < rows.size())
        rows[highlighted].prepend("> ");
    return rows;
}

Screen appList(const QStringList& rows, int highlighted = 0) {
    return {"Quiver, " + word("all"), marked(rows, highlighted), word("SK_OPT"), word("SK_EXIT")};
}

/// The list with tick boxes, of which those of the rows `ticked` are ticked.
Screen tickList(QStringList rows, int highlighted, const QSet<int>& ticked) {
    for (int row = 0; row < rows.size(); ++row)
        rows[row].prepend(ticked.contains(row) ? "[x] " : "[ ] ");
    Screen screen = appList(rows, highlighted);
    screen.right = word("SK_CANCEL");
    return screen;
}

Screen browser(const QString& folder, const QStringList& rows, int highlighted = 1) {
    return {"Quiver, " + word("zpk"), marked(QStringList{"- " + folder, ".."} + rows, highlighted),
            word("SK_OPT"), word("SK_EXIT")};
}

/// The download folder of the demo phone, each file with its size.
Screen downloadList(const QStringList& files, int highlighted = 1) {
    QStringList rows = {"games"};
    for (const QString& file : files) {
        const qint64 size = QFileInfo(onDisk(downloads + '/' + file)).size();
        rows += size < 1024
                    ? QString("%1 / %2 bytes").arg(file).arg(size)
                    : QString("%1 / %2 Kbytes").arg(file).arg(double(size) / 1024, 0, 'f', 2);
    }
    return browser(downloads, rows, highlighted);
}

Screen menu(const QStringList& entries, int highlighted) {
    return {"", marked(entries, highlighted), word("SK_SEL"), word("SK_CANCEL")};
}

Screen mainMenu(const QSet<int>& disabled, int highlighted = 0) {
    QStringList entries;
    for (const char* key :
         {"APP_MOVE", "APP_RENAME", "APP_DELETE", "APP_PROPERTIES", "APP_UN_REGISTER_APP_MENU",
          "APP_SAVE_AS_ZPK_TO", "APP_VIEW", "APP_MULTI_SELECT", "APP_REFRESH", "APP_ABOUT"})
        entries += (disabled.contains(int(entries.size())) ? "- " : "") + word(key);
    return menu(entries, highlighted);
}

Screen viewMenu(bool card) {
    return menu({(card ? "[x] " : "[ ] ") + word("APP_APPS_IN_SD"), "[x] " + word("APP_APPS_IN_PH"),
                 "[ ] " + word("APP_ONLY_REGISTERED_APPS")},
                0);
}

Screen browserMenu(bool install) {
    return menu({(install ? "" : "- ") + word("ZPK_INSTALL"), "[ ] " + word("APP_SHOW_ALL"),
                 word("APP_GO_MEMORY_CARD"), word("APP_GO_PHONE_MEMORY"), word("APP_ABOUT")},
                install ? 0 : 1);
}

Screen multiSelectMenu() {
    return menu({word("APP_MOVE"), word("APP_DELETE"), "- " + word("APP_UN_REGISTER_APP_MENU"),
                 word("APP_SELECT_ALL"), word("APP_UNSELECT_ALL"), word("APP_CANCEL")},
                0);
}

Screen installQuestion(const QString& package) {
    return {word("POP_INSTALL_ZPK_TITLE"),
            {word("POP_INSTALL_ZPK_CONFIRM_TEXT").arg(package)},
            word("SK_YES"),
            word("SK_NO")};
}

Screen placeQuestion(bool card) {
    return {word("POP_INSTALL_ZPK_TITLE"),
            {word("POP_INSTALL_ZPK_LOCATION_TEXT"), (card ? "( ) " : "(o) ") + word("FT_PH_MEMORY"),
             (card ? "(o) " : "( ) ") + word("FT_SD_MEMORY")},
            word("SK_OK"),
            word("SK_CANCEL")};
}

Screen notice(const char* title, const char* text) {
    return {word(title), {word(text)}, word("SK_OK"), ""};
}

Check isFile(const QString& path) {
    return holds(path + " is there", [path] { return QFileInfo(onDisk(path)).size() > 0; });
}

Check isExecutable(const QString& path) {
    return holds(path + " can be started",
                 [path] { return QFileInfo(onDisk(path)).isExecutable(); });
}

/// The folder holds just these entries.
Check isFolderOf(const QString& path, const QStringList& names) {
    return holds(QString("%1 holds %2").arg(path, names.join(", ")), [path, names] {
        return QDir(onDisk(path)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot) == names;
    });
}

/// The first half of a package, as a download that broke off leaves it.
void makeHalfPackage() {
    QFile whole(onDisk(downloads + "/city-map-0.9.zpk"));
    QFile half(onDisk(downloads + "/half.zpk"));
    if (whole.open(QFile::ReadOnly) && half.open(QFile::WriteOnly))
        half.write(whole.read(whole.size() / 2));
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
         {shows(browser("/mmc/mmca1", {"download", "quiver", "skins", "zpk_files"})), inSight(0)}},
        {"card-menu", "opens the options", {left}, {shows(browserMenu(false))}},
        {"downloads",
         "opens the download folder",
         {Qt::Key_Escape, Row{"download"}, enter},
         {shows(downloadList(packageFiles)), inSight(0)}},
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
         {shows(installQuestion("torch-1.0.zpk"))}},
        {"where", "says yes", {left}, {shows(placeQuestion(false))}},
        {"where-card",
         "goes to the card",
         {Qt::Key_Down},
         {shows(placeQuestion(true)), isFolderOf(cardApps, {"CityMap", "Zametki"})}},
        {"please-wait", "accepts", {left}, {shows({"", {word("POP_PLEASEWAIT")}, "", ""})}},
        {"success", "waits", {}, {shows(notice("POP_OK_TITLE", "POP_OK_TEXT"))}},
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
         {[] { return shows(downloadList(filesWithHalf))(); }, inSight(0)}},
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
        {"error-end",
         "acknowledges and goes to the applications",
         {enter, Qt::Key_Left},
         {shows(appList(withTorch))}},
    };
}

Step theEnd() {
    return {"", "leaves by the right soft key", {right}, {}};
}

QList<Step> demoWalk() {
    return theList() + thePackages() + anInstallation() + multiSelect() + aFailure() +
           QList<Step>{theEnd()};
}

QList<Step> bareWalk() {
    return {
        {"bare", "Quiver starts on a bare phone", {}, {shows(appList({})), badge(false)}},
        {"bare-menu", "opens the options", {left}, {shows(mainMenu({0, 1, 2, 3, 4, 5, 6, 7}, 8))}},
        {"bare-downloads",
         "opens the download folder",
         {Qt::Key_Escape, Qt::Key_Right, Row{"download"}, enter},
         {shows(browser(downloads, {}))}},
        theEnd(),
    };
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        fputs("usage: tour demo|bare LANGUAGE FOLDER\n", stderr);
        return 2;
    }
    const QString program = fromBytes(argv[0]);
    const QString programFolder = program.left(program.lastIndexOf('/'));
    if (!useLanguage(programFolder, argv[2])) {
        fprintf(stderr, "tour: no language file for %s\n", argv[2]);
        return 2;
    }
    const bool bare = QByteArray(argv[1]) == "bare";
    return walkThrough(bare ? bareWalk() : demoWalk(), programFolder, fromBytes(argv[3]));
}
