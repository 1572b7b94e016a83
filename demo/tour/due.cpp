#include "due.h"

#include "PhoneRoot.h"
#include "words.h"

#include <QFileInfo>

namespace {

QStringList marked(QStringList rows, int highlighted) {
    if (highlighted < rows.size())
        rows[highlighted].prepend("> ");
    return rows;
}

Screen menu(const QStringList& entries, int highlighted) {
    return {"", marked(entries, highlighted), word("SK_SEL"), word("SK_CANCEL")};
}

/// A file of the package browser, with its size.
QString fileRow(const QString& path) {
    const qint64 size = QFileInfo(hostPath(path)).size();
    const QString name = path.mid(path.lastIndexOf('/') + 1);
    return size < 1024 ? QString("%1 / %2 bytes").arg(name).arg(size)
                       : QString("%1 / %2 Kbytes").arg(name).arg(double(size) / 1024, 0, 'f', 2);
}

} // namespace

Screen appList(const QStringList& rows, int highlighted) {
    return {"Quiver, " + word("all"), marked(rows, highlighted), word("SK_OPT"), word("SK_EXIT")};
}

Screen tickList(QStringList rows, int highlighted, const QSet<int>& ticked) {
    for (int row = 0; row < rows.size(); ++row)
        rows[row].prepend(ticked.contains(row) ? "[x] " : "[ ] ");
    Screen screen = appList(rows, highlighted);
    screen.right = word("SK_CANCEL");
    return screen;
}

Screen browser(const QString& folder, const QStringList& folders, const QStringList& files,
               int highlighted) {
    QStringList rows = QStringList{"- " + folder, ".."} + folders;
    for (const QString& file : files)
        rows += fileRow(folder + '/' + file);
    return {"Quiver, " + word("zpk"), marked(rows, highlighted), word("SK_OPT"), word("SK_EXIT")};
}

Screen mainMenu(const QSet<int>& disabled, int highlighted) {
    QStringList entries;
    for (const char* key :
         {"APP_MOVE", "APP_RENAME", "APP_DELETE", "APP_PROPERTIES", "APP_UN_REGISTER_APP_MENU",
          "APP_SAVE_AS_ZPK_TO", "APP_VIEW", "APP_MULTI_SELECT", "APP_REFRESH", "APP_ABOUT"})
        entries += (disabled.contains(int(entries.size())) ? "- " : "") + word(key);
    return menu(entries, highlighted);
}

Screen saveMenu() {
    return menu({word("APP_SAVE_IN_SD"), word("APP_SAVE_IN_PH"), word("APP_SAVE_IN_FM_LOC")}, 0);
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
            {word("POP_INSTALL_ZPK_CONFIRM_TEXT"), word("TXT_PACKAGE"), package},
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

Screen question(const char* text, const QString& app) {
    const QString line = app.isEmpty() ? word(text) : word(text) + '\n' + app;
    return {word("POP_CONFIRM_TITLE"), {line}, word("SK_YES"), word("SK_NO")};
}

Screen nameQuestion(const QString& app, const QString& typed) {
    return {word("POP_RENAME_TITLE"),
            {word("POP_RENAME_TEXT") + ' ' + app, "| " + typed},
            word("SK_OK"),
            word("SK_CANCEL")};
}

Screen success() {
    return {word("POP_OK_TITLE"), {word("POP_OK_TEXT")}, word("SK_OK"), ""};
}
