#include "apps_support.h"

#include "ZPK_App.h"
#include "database.h"
#include "menu.h"
#include "paths.h"

#include <QFile>

#include <sys/stat.h>

namespace {

const QByteArray uuid = "8e10aded-f8ee-1a2b-0c0d-030405060708";
const QByteArray menu = "[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]\n";
const QByteArray phoneFolder = "/ezxlocal/download/mystuff/quiver/Game";
const QByteArray cardFolder = "/mmc/mmca1/quiver/Game";
const QByteArray others = "; by hand\n\n[aaaa]\nName = A\nTheme = 3\n\n# below\n[bbbb]\nName=B\n";
const QByteArray missing;

/// The group of the application, with its files in `folder`.
QByteArray entry(const QByteArray& folder = phoneFolder, const QByteArray& name = "Игра",
                 const QByteArray& more = "GroupID = root\nUserID = root\nVendor = Ann & Co\n") {
    const QByteArray icon = folder + "/icon.png\n";
    return '[' + uuid + "]\nAppID = {" + uuid +
           "}\nType = 2\nAtribute = 1\nDaemon = 0\nDirectory = " + folder +
           "\nExec = bin/game -x\nName = " + name + "\nLockEnabled  = 1\nAniIcon = " + icon +
           "BigIcon = " + icon + "Icon = " + icon + "SVGIcon = " + icon + more;
}

QByteArray items(const QByteArray& list) {
    return menu + "Items = " + list + '\n';
}

QByteArray crLf(QByteArray text) {
    return text.replace("\n", "\r\n");
}

bool update(ZPK_App& app) {
    return updateAppInMenu(app);
}

struct Edit {
    const char* what;
    bool (*operation)(ZPK_App&);
    QByteArray installed;
    QByteArray tree;
    QByteArray installedAfter;
    QByteArray treeAfter;
};

const Edit edits[] = {
    {"no files", registerAppInMenu, missing, missing, entry(), items(uuid + ';')},
    {"others stay", registerAppInMenu, others, others + items("a;b;"), others + entry(),
     others + items("a;b;" + uuid + ';')},
    {"CR LF", registerAppInMenu, crLf(others), crLf(items("a;")), crLf(others + entry()),
     crLf(items("a;" + uuid + ';'))},
    {"an entry of old, listed", registerAppInMenu, entry(cardFolder, "Old"), items(uuid + ';'),
     entry(), items(uuid + ';' + uuid + ';')},

    {"out of the middle", unregisterAppFromMenu, "[cccc]\n" + entry() + "# own\nX = 1\n\n" + others,
     others + items("a;" + uuid + ";b;"), "[cccc]\n" + others, others + items("a;b;")},
    {"all occurrences before a semicolon", unregisterAppFromMenu, entry() + others + entry(),
     items(uuid + ';' + uuid.toUpper() + ";a;" + uuid + ";B;" + uuid), others,
     items("a;B;" + uuid)},
    {"another letter case", unregisterAppFromMenu, '[' + uuid.toUpper() + "]\nName = X",
     items(uuid.toUpper() + ';'), '[' + uuid.toUpper() + "]\nName = X", items("")},
    {"CR LF", unregisterAppFromMenu, crLf(others + entry()), crLf(items("a;" + uuid + ';')),
     crLf(others), crLf(items("a;"))},
    {"nothing there", unregisterAppFromMenu, missing, missing, missing, items("")},

    {"moved and renamed", update, entry(cardFolder, "Old", "X = 1\nVendor = Bob\n") + others, "x",
     entry(phoneFolder, "Игра", "X = 1\nVendor = Bob\n") + others, "x"},
};

class MenuEdits : public testing::Test {
protected:
    MenuEdits() {
        phone.makeFolder(Path::systemFolder.toUtf8());
        phone.makeFolder(installed.left(installed.lastIndexOf('/')));
        outputOf([] { openAppDb(); });
        app.name = "Игра";
        app.author = "Ann & Co";
        app.exec = "bin/game -x";
        app.icon = "icon.png";
        app.path = phoneFolder;
        app.uuid = std::make_unique<QUuid>(QUuid::fromString(QString(uuid)));
        addAppRecord(*app.uuid, app.name, app.path, 0);
    }

    void setFiles(const QByteArray& installedText, const QByteArray& treeText) const {
        for (const auto& [path, text] : {std::pair(installed, installedText), {tree, treeText}}) {
            remove(phone.host(path).constData());
            if (!text.isNull())
                phone.makeFile(path, text);
        }
    }

    void expectFiles(const QByteArray& installedText, const QByteArray& treeText) const {
        EXPECT_EQ(readFile(phone.host(installed)), installedText);
        EXPECT_EQ(readFile(phone.host(tree)), treeText);
    }

    Phone phone;
    ZPK_App app;
    const QByteArray installed = Path::installedDb.toUtf8();
    const QByteArray tree = Path::userMenuTree.toUtf8();
};

} // namespace

TEST_F(MenuEdits, TouchTheApplicationsOwnLinesOnly) {
    for (const Edit& edit : edits) {
        SCOPED_TRACE(edit.what);
        setFiles(edit.installed, edit.tree);
        menuChanged = false;
        outputOf([&] { EXPECT_TRUE(edit.operation(app)); });
        EXPECT_TRUE(menuChanged);
        expectFiles(edit.installedAfter, edit.treeAfter);
    }
}

TEST_F(MenuEdits, GoOnWhereAFileCannotBeWritten) {
    setFiles(others, others);
    chmod(phone.host(installed).constData(), 0444);
    chmod(phone.host(tree).constData(), 0666);
    chmod(phone.host(installed.left(installed.lastIndexOf('/'))).constData(), 0777);
    const Unprivileged user;
    menuChanged = false;
    EXPECT_TRUE(registerAppInMenu(app));
    EXPECT_TRUE(app.registeredInMenu && menuChanged);
    expectFiles(others, others + items(uuid + ';'));
    chmod(phone.host(tree).constData(), 0444);
    EXPECT_TRUE(unregisterAppFromMenu(app));
    EXPECT_FALSE(app.registeredInMenu);
}

TEST_F(MenuEdits, ThatWereInterruptedAreInBothPlacesOrInNeither) {
    const QByteArray listed = items("a;" + uuid + ';');
    for (const auto& [installedText, treeText, wasLinked, isIn] :
         Rows<QByteArray, QByteArray, bool, bool>{
             {others + entry(), listed, false, true},
             {others + entry(), items("a;"), false, false},
             {others, listed, true, false},
             {others + entry(), listed, true, true}, // only the mark was left
         }) {
        setFiles(installedText, treeText);
        removeAppFromMenu(app.uuid.get());
        if (wasLinked)
            addAppToMenu(app.path, app.uuid.get());
        phone.makeFile(Path::menuEdit.toUtf8(), uuid);
        mendMenu();
        EXPECT_EQ(isAppInMenu(app.path, nullptr), isIn) << installedText.constData();
        expectFiles(isIn ? installedText : others, isIn ? listed : items("a;"));
        EXPECT_FALSE(QFile::exists(phone.host(Path::menuEdit.toUtf8())));
    }
}
