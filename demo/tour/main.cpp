// Walks through the real window on a phone to try Quiver on, as a user would, and takes a picture
// at every step. scripts/tour prepares what it needs.
#include "Bytes.h"
#include "due.h"
#include "steps.h"
#include "words.h"

#include <cstdio>
#include <map>

namespace {

QList<Step> bareWalk() {
    return {
        {"bare", "Quiver starts on a bare phone", {}, {shows(appList({})), badge(false)}},
        {"bare-menu", "opens the options", {left}, {shows(mainMenu({0, 1, 2, 3, 4, 5, 6, 7}, 8))}},
        {"bare-downloads",
         "opens the download folder",
         {Qt::Key_Escape, Qt::Key_Right, Row{"download"}, enter},
         {shows(browser("/mmc/mmca1/download", {}, {}))}},
        {"", "leaves by the right soft key", {right}, {}},
    };
}

/// Made late, as the texts are those of the chosen language.
const std::map<QByteArray, QList<Step> (*)()> walks = {
    {"first", firstWalk}, {"second", secondWalk}, {"bare", bareWalk}};

} // namespace

QList<Step> leavingWithRestart() {
    return {
        {"leave", "leaves", {right}, {shows(question("POP_CONFIRM_REFRESH_MENU"))}},
        {"restarted", "has the phone's menu restarted", {left}, {shows(success())}},
        {"", "acknowledges", {left}, {}},
    };
}

int main(int argc, char** argv) {
    const auto walk = walks.find(argc > 1 ? argv[1] : "");
    if (argc != 4 || walk == walks.end()) {
        fputs("usage: tour first|second|bare LANGUAGE FOLDER\n", stderr);
        return 2;
    }
    const QString program = fromBytes(argv[0]);
    const QString programFolder = program.left(program.lastIndexOf('/'));
    if (!useLanguage(programFolder, argv[2])) {
        fprintf(stderr, "tour: no language file for %s\n", argv[2]);
        return 2;
    }
    return walkThrough(walk->second(), programFolder, fromBytes(argv[3]));
}
