#include "ops_support.h"

#include "ZListBox.h"
#include "ZPK_App.h"
#include "database.h"
#include "language.h"
#include "menu.h"
#include "paths.h"

#include <QApplication>

#include <sys/stat.h>

namespace {

const QByteArray uuid = "8e10aded-f8ee-1a2b-0c0d-030405060708";
const QByteArray menuHeader = "[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]\n";
const QByteArray phoneFolder = "/ezxlocal/download/mystuff/quiver/Game";
const QByteArray cardFolder = "/mmc/mmca1/quiver/Game";
const QByteArray missing;

/// The group of the application, its files in `folder`, with `own` behind the icons.
QByteArray entry(const QByteArray& folder, const QByteArray& name, const QByteArray& own) {
    const QByteArray icon = folder + "/icon.png\n";
    return '[' + uuid + "]\nAppID = {" + uuid +
           "}\nType = 2\nAtribute = 1\nDaemon = 0\nDirectory = " + folder +
           "\nExec = bin/game -x\nName = " + name + "\nLockEnabled  = 1\nAniIcon = " + icon +
           "BigIcon = " + icon + "Icon = " + icon + "SVGIcon = " + icon + own;
}

QByteArray entry(const QByteArray& folder = phoneFolder) {
    return entry(folder, "Игра", "GroupID = root\nUserID = root\nVendor = Ann & Co\n");
}

QByteArray withCrLf(QByteArray text) {
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

    Phone phone;
    ZPK_App app;
    const QByteArray installed = Path::installedDb.toUtf8();
    const QByteArray tree = Path::userMenuTree.toUtf8();
};

const QByteArray others = "; by hand\n\n[aaaa]\nName = A\nTheme = 3\n\n# below\n[bbbb]\nName=B\n";

const Edit edits[] = {
    {"no files", registerAppInMenu, missing, missing, entry(),
     menuHeader + "Items = " + uuid + ";\n"},
    {"empty files", registerAppInMenu, "", "", entry(), menuHeader + "Items = " + uuid + ";\n"},
    {"others stay", registerAppInMenu, others, others + menuHeader + "Other = 1\nItems = a;b;\n",
     others + entry(), others + menuHeader + "Other = 1\nItems = a;b;" + uuid + ";\n"},
    {"no line end", registerAppInMenu, others.chopped(1), menuHeader + "Items = a;",
     others + entry(), menuHeader + "Items = a;" + uuid + ';'},
    {"CR LF", registerAppInMenu, withCrLf(others), withCrLf(menuHeader + "Items = a;\n"),
     withCrLf(others + entry()), withCrLf(menuHeader + "Items = a;" + uuid + ";\n")},
    {"no final semicolon glues", registerAppInMenu, missing, menuHeader + "Items = a;b\n", entry(),
     menuHeader + "Items = a;b" + uuid + ";\n"},
    {"once more", registerAppInMenu, entry(), menuHeader + "Items = " + uuid + ";\n", entry(),
     menuHeader + "Items = " + uuid + ';' + uuid + ";\n"},
    {"menu folder without items, twice", registerAppInMenu, missing,
     menuHeader + "X = 1\n\n" + menuHeader + "Items = a;\n" + others, entry(),
     menuHeader + "X = 1\n\n" + menuHeader + "Items = a;" + uuid + ";\n" + others},
    {"a stale group is brought in line", registerAppInMenu,
     '[' + uuid + "]\nVendor = Bob\nMine = 1\nName = Old\n\n" + others, menuHeader,
     '[' + uuid + "]\nVendor = Ann & Co\nMine = 1\nName = Игра\n" +
         entry(phoneFolder, "", "GroupID = root\nUserID = root\n")
             .replace("Name = \n", "")
             .replace('[' + uuid + "]\n", "") +
         '\n' + others,
     menuHeader + "Items = " + uuid + ";\n"},

    {"out of the middle", unregisterAppFromMenu,
     "[aaaa]\nName = A\n\n" + entry() + "# own comment\nMine = 1\n\n" + others,
     others + menuHeader + "Items = a;" + uuid + ";b;\n", "[aaaa]\nName = A\n\n" + others,
     others + menuHeader + "Items = a;b;\n"},
    {"every occurrence that ends in a semicolon", unregisterAppFromMenu,
     entry() + others + entry(cardFolder),
     menuHeader + "Items = " + uuid + ';' + uuid.toUpper() + ";a;" + uuid + ";B;" + uuid, others,
     menuHeader + "Items = a;B;" + uuid},
    {"the group's letter case counts", unregisterAppFromMenu, '[' + uuid.toUpper() + "]\nName = X",
     menuHeader + "Items = " + uuid.toUpper() + ";", '[' + uuid.toUpper() + "]\nName = X",
     menuHeader + "Items = "},
    {"CR LF", unregisterAppFromMenu, withCrLf(others + entry()),
     withCrLf(menuHeader + "Items = a;" + uuid + ";\n"), withCrLf(others),
     withCrLf(menuHeader + "Items = a;\n")},
    {"nothing there", unregisterAppFromMenu, missing, missing, missing, menuHeader + "Items = \n"},

    {"moved and renamed", update,
     entry(cardFolder, "Old", "Mine = 1\nVendor = Bob\n") + "\n" + others, "Items = x",
     entry(phoneFolder, "Игра", "Mine = 1\nVendor = Bob\n") + "\n" + others, "Items = x"},
    {"not in the file", update, others, missing,
     others + entry(phoneFolder, "Игра", "")
                  .replace("AppID = {" + uuid + "}\nType = 2\nAtribute = 1\nDaemon = 0\n", "")
                  .replace("LockEnabled  = 1\n", ""),
     missing},
};

} // namespace

TEST_F(MenuEdits, TouchTheApplicationsOwnLinesOnly) {
    for (const Edit& edit : edits) {
        SCOPED_TRACE(edit.what);
        setFiles(edit.installed, edit.tree);
        menuChanged = false;
        outputOf([&] { EXPECT_TRUE(edit.operation(app)); });
        EXPECT_TRUE(menuChanged);
        for (const auto& [path, text] :
             {std::pair(installed, edit.installedAfter), {tree, edit.treeAfter}}) {
            EXPECT_EQ(readFile(phone.host(path)), text);
            EXPECT_EQ(exists(phone.host(path)), !text.isNull());
        }
    }
}

TEST_F(MenuEdits, ComeBackToTheSameBytesInALongFile) {
    QByteArray text;
    for (int i = 0; text.size() < 1'000'000; ++i)
        text += "[group " + QByteArray::number(i) + "]\nItems = \xFF;\r\n\n" + others;
    setFiles(text, text + menuHeader + "Items = " + QByteArray(1'000'000, ';'));
    outputOf([&] { registerAppInMenu(app); });
    EXPECT_TRUE(readFile(phone.host(installed)) == text + entry());
    outputOf([&] { unregisterAppFromMenu(app); });
    EXPECT_TRUE(readFile(phone.host(installed)) == text);
    EXPECT_TRUE(readFile(phone.host(tree)) ==
                text + menuHeader + "Items = " + QByteArray(1'000'000, ';'));
}

TEST_F(MenuEdits, KeepFlagAndDatabaseInStepAndSayWhatTheyDo) {
    addAppRecord(QUuid::createUuid(), "Other", "/other", 0);
    const char* links = "SELECT UUID FROM App_Menu JOIN AppReg ON id = app_id";
    const QByteArray braced = '{' + uuid + '}';
    EXPECT_EQ(outputOf([&] { registerAppInMenu(app); }),
              "DEBUG:: Registered App in Path ('" + phoneFolder + "')\n");
    EXPECT_TRUE(app.registeredInMenu);
    EXPECT_EQ(query(links), TableRows{QByteArrayList{braced}});
    EXPECT_EQ(outputOf([&] { updateAppInMenu(app); }), "DEBUG:: Update App Info ('" + phoneFolder +
                                                           "') in Menu\n\tApp UUID is '" + braced +
                                                           "'\n");
    EXPECT_EQ(query(links), TableRows{QByteArrayList{braced}});
    outputOf([&] { registerAppInMenu(app); });
    EXPECT_EQ(query(links).size(), 2);
    EXPECT_EQ(outputOf([&] { unregisterAppFromMenu(app); }),
              "DEBUG:: Unregister App ('" + phoneFolder + "') from Menu\n\tApp UUID is '" + braced +
                  "'\n");
    EXPECT_FALSE(app.registeredInMenu);
    EXPECT_EQ(query(links), TableRows());
}

TEST_F(MenuEdits, GoOnWhereAFileCannotBeWritten) {
    app.icon.clear();
    setFiles(others, others);
    chmod(phone.host(installed).constData(), 0444);
    chmod(phone.host(tree).constData(), 0666);
    chmod(phone.host(installed.left(installed.lastIndexOf('/'))).constData(), 0777);
    menuChanged = false;
    {
        const Unprivileged user;
        EXPECT_TRUE(registerAppInMenu(app));
    }
    EXPECT_TRUE(app.registeredInMenu && menuChanged);
    EXPECT_EQ(readFile(phone.host(installed)), others);
    EXPECT_EQ(readFile(phone.host(tree)), others + menuHeader + "Items = " + uuid + ";\n");
    chmod(phone.host(installed).constData(), 0666);
    chmod(phone.host(tree).constData(), 0444);
    const Unprivileged user;
    EXPECT_TRUE(unregisterAppFromMenu(app));
    EXPECT_FALSE(app.registeredInMenu);
    EXPECT_EQ(readFile(phone.host(tree)), others + menuHeader + "Items = " + uuid + ";\n");
    EXPECT_TRUE(registerAppInMenu(app));
    EXPECT_TRUE(readFile(phone.host(installed))
                    .endsWith("\nIcon = " + phoneFolder + "/\nSVGIcon = " + phoneFolder +
                              "/\nGroupID = root\nUserID = root\n"
                              "Vendor = Ann & Co\n"));
}

namespace {

constexpr int menuEntry = 4;

class Menu : public Ops {
protected:
    /// Runs the program and presses the right soft key; true where that ends it.
    static bool endsOnQuit() {
        constexpr int stillRunning = 99;
        QTimer watchdog;
        QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(stillRunning); });
        watchdog.start(500);
        QTimer::singleShot(0, [] { press(Qt::Key_F2); });
        return qApp->exec() != stillRunning;
    }
};

} // namespace

TEST_F(Menu, EntryRegistersAndUnregistersAfterAQuestion) {
    addGame(0, "Alpha");
    addGame(1, "Beta");
    openFilled();
    const QString enter = tr("POP_CONFIRM_REGISTER_APP_MENU") + "\nBeta";
    const QString leave = tr("POP_CONFIRM_UNREGISTER_APP_MENU") + "\nBeta";
    choose("Beta", {menuEntry}, {no("POP_CONFIRM_TITLE", enter)});
    EXPECT_FALSE(appIn("Beta")->registeredInMenu || menuChanged);
    EXPECT_TRUE(outputOf([&] {
                    choose("Beta", {menuEntry}, {yes("POP_CONFIRM_TITLE", enter), okNotice()});
                }).endsWith("DEBUG:: Register APP to Menu\n"));
    EXPECT_TRUE(appIn("Beta")->registeredInMenu);
    expectAgreement();
    choose("Beta", {menuEntry}, {no("POP_CONFIRM_TITLE", leave)});
    EXPECT_TRUE(appIn("Beta")->registeredInMenu);
    EXPECT_FALSE(outputOf([&] {
                     choose("Beta", {menuEntry}, {yes("POP_CONFIRM_TITLE", leave), okNotice()});
                 }).contains("DEBUG:: Register APP"));
    EXPECT_FALSE(appIn("Beta")->registeredInMenu);
    expectAgreement();
}

TEST_F(Menu, QuitAsksOnlyAfterAnEdit) {
    const FakeCommand busybox(phone, "busybox", "echo \"$#\" \"$@\" >> \"${0%/*}/calls\"");
    addGame(0, "Alpha");
    openFilled();
    const QString ask = tr("POP_CONFIRM_REFRESH_MENU");
    EXPECT_TRUE(endsOnQuit());

    registerAppInMenu(*appIn("Alpha"));
    unregisterAppFromMenu(*appIn("Alpha"));
    window->mainOptM_MultiSelect();
    EXPECT_FALSE(endsOnQuit());
    EXPECT_FALSE(apps().hasCheckBoxes());
    {
        const Dialogs dialogs({no("POP_CONFIRM_TITLE", ask)});
        EXPECT_TRUE(endsOnQuit());
    }
    EXPECT_FALSE(exists(phone.host("/fake/calls")));
    {
        const Dialogs dialogs({yes("POP_CONFIRM_TITLE", ask), okNotice()});
        EXPECT_TRUE(endsOnQuit());
    }
    EXPECT_EQ(readFile(phone.host("/fake/calls")), "4 killall am flawplayer messaging\n");
}
