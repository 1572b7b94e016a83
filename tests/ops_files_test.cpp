#include "ops_support.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZLineEdit.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "descriptor.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "operations.h"
#include "paths.h"
#include "settings.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <filesystem>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

enum Entry { Move, Rename, Delete, Properties, Register, SaveAs, View };

const QList<QByteArray> hostileNames = {
    "Game",  "Two  words",       "\xD0\x98\xD0\xB3\xD1\x80\xD0\xB0",
    "-rf",   "\xFF\xFEnot text", "%1 %2 %s",
    "@x",    "a;b&c$(d)`e`\"\\", "*",
    "[Ga]me"};

class Files : public Ops {
protected:
    static QString ask(const char* key, const QByteArray& name) {
        return tr(key) + '\n' + fromBytes(name);
    }

    void moveByMenu(const QByteArray& folder) {
        const QString question = ask("POP_CONFIRM_MOVE_TEXT", toBytes(appIn(folder)->name));
        choose(folder, {Move}, {yes("POP_CONFIRM_TITLE", question), pleaseWait(), okNotice()});
    }

    void deleteByMenu(const QByteArray& folder) {
        const QString question = ask("POP_CONFIRM_DELETE_TEXT", toBytes(appIn(folder)->name));
        choose(folder, {Delete}, {yes("POP_CONFIRM_TITLE", question), pleaseWait(), okNotice()});
    }

    /// What the package holds, unpacked.
    Snapshot contentOf(const QByteArray& package) const {
        const QByteArray target = phone.host("/unpacked");
        fs::remove_all(target.toStdString());
        const QByteArray command = SEVEN_ZIP " x -y -spd '" + phone.host(package) + "' '-o" +
                                   target + "' > /dev/null 2>&1 < /dev/null";
        EXPECT_EQ(system(command.constData()), 0) << package.constData();
        return snapshot(target);
    }
};

} // namespace

TEST_F(Files, MovedToAndFroRenamedAndDeletedWhateverTheFolderIsCalled) {
    for (const QByteArray& name : hostileNames)
        addGame(1, name);
    addGame(0, "Bystander");
    openFilled();
    for (const QByteArray& name : hostileNames) {
        SCOPED_TRACE(name.toPercentEncoding().constData());
        const auto content = filesOf(name, 1);
        ASSERT_EQ(content.size(), 4);
        registerAppInMenu(*appIn(name));
        moveByMenu(name);
        EXPECT_EQ(appIn(name)->location, 0);
        EXPECT_EQ(differences(filesOf(name, 0), content), QByteArrayList());
        EXPECT_EQ(filesOf(name, 1).size(), 0);
        expectAgreement();
        moveByMenu(name);
        EXPECT_EQ(differences(filesOf(name, 1), content), QByteArrayList());
        renameApp(*appIn(name), "New" + fromBytes(name).trimmed());
        moveByMenu(name);
        deleteByMenu(name);
        EXPECT_EQ(filesOf(name, 0).size() + filesOf(name, 1).size(), 0);
        expectAgreement();
    }
    EXPECT_EQ(filesOf("Bystander", 0).size(), 4);
}

TEST_F(Files, MovedOutOfViewLeaveTheList) {
    addGame(0, "Alpha");
    addGame(0, "Beta");
    addGame(1, "Gamma");
    openFilled();
    const auto toggle = [this](int entry) { choose("Beta", {View, entry}, {}); };
    moveByMenu("Alpha");
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(apps().currentItem(), 0);
    toggle(0);
    EXPECT_EQ(names(apps()), QStringList("Beta"));
    moveByMenu("Beta");
    EXPECT_EQ(names(apps()), QStringList());
    EXPECT_FALSE(window->getMainMenu()->isItemEnabled(Move));
    EXPECT_TRUE(window->getMainMenu()->isItemEnabled(View));
    expectAgreement();
}

TEST_F(Files, MovedWhereAnotherWasDeletedByHandKeepsItsOwnIdentity) {
    addGame(0, "Game");
    openFilled();
    registerAppInMenu(*appIn("Game"));
    fs::remove_all(phone.host("/ezxlocal/download/mystuff/quiver/Game").toStdString());
    addGame(1, "Game");
    window->refreshList(true);
    const QUuid uuid = *appIn("Game")->uuid;
    moveByMenu("Game");
    expectAgreement();
    registerAppInMenu(*appIn("Game"));
    expectAgreement();
    EXPECT_EQ(*appIn("Game")->uuid, uuid);
    unregisterAppFromMenu(*appIn("Game"));
    expectAgreement();
}

TEST_F(Files, RefusedMovesChangeNothing) {
    addGame(0, "Game");
    addGame(1, "It's");
    openFilled();
    phone.makeFile("/mmc/mmca1/quiver/Game/own", "file");
    const auto before = snapshot(phone.host());
    const auto refused = [&](const QByteArray& name, const char* reason) {
        const QString question = ask("POP_CONFIRM_MOVE_TEXT", name);
        const QByteArray output = outputOf([&] {
            choose(name, {Move},
                   {yes("POP_CONFIRM_TITLE", question), pleaseWait(), errorNotice(tr(reason))});
        });
        EXPECT_FALSE(output.contains("Exec command"));
        EXPECT_TRUE(output.contains("DEBUG:: Error while moving ZPK\n"));
        EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList());
        EXPECT_EQ(names(apps()), QStringList({"Game", "It's"}));
        EXPECT_EQ(disagreements(), QStringList());
    };
    refused("Game", "POP_ERROR_EXISTS_TEXT");
    refused("It's", "POP_ERROR_QUOTE_TEXT");
    const QString question = ask("POP_CONFIRM_DELETE_TEXT", "It's");
    choose("It's", {Delete},
           {yes("POP_CONFIRM_TITLE", question), pleaseWait(),
            errorNotice(tr("POP_ERROR_QUOTE_TEXT"))});
    choose("It's", {SaveAs, 1}, {pleaseWait(), errorNotice(tr("POP_ERROR_QUOTE_TEXT"))});
    choose("Game", {Move}, {no("POP_CONFIRM_TITLE", ask("POP_CONFIRM_MOVE_TEXT", "Game"))});
    choose("Game", {Delete}, {no("POP_CONFIRM_TITLE", ask("POP_CONFIRM_DELETE_TEXT", "Game"))});
    EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList());
}

TEST_F(Files, CommandsThatASignalEndedMoveAndDeleteNothing) {
    addGame(0, "Alpha");
    addGame(1, "Beta");
    openFilled();
    const auto before = filesOf("Alpha", 0);
    // The status of a shell that was killed reads as a success.
    const QByteArray script = "kill -9 $PPID";
    const FakeCommand mv(phone, "mv", script);
    const FakeCommand rm(phone, "rm", script);
    for (const char* name : {"Alpha", "Beta"}) {
        const Dialogs dialogs({pleaseWait(), [](ZPopup& popup) { popup.done(1); }, pleaseWait(),
                               [](ZPopup& popup) { popup.done(1); }});
        window->cmd_Move(appIn(name), -1);
        window->cmd_Delete(appIn(name));
    }
    EXPECT_EQ(differences(filesOf("Alpha", 0), before), QByteArrayList());
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Beta"}));
    expectAgreement();
}

TEST_F(Files, SavedAsPackagesInThreePlaces) {
    addGame(0, "Game");
    addGame(0, "Gxme");
    addGame(1, "Other");
    openFilled();
    window->loadFolder("/mmc/mmca1");
    const QString folder = currentFolder();

    const struct {
        int entry;
        QByteArray folder;
        const char* output;
    } places[] = {{0, Path::cardPackages.toUtf8(), "DEBUG::  Save Location : 1 \n"},
                  {1, Path::phonePackages.toUtf8(), "DEBUG::  Save Location : 0 \n"},
                  {2, "/mmc/mmca1", "DEBUG::  Save Location : 2 \n"}};

    for (const auto& place : places) {
        for (const auto& [name, location] : {std::pair<QByteArray, int>("Game", 0), {"Other", 1}}) {
            const QByteArray package = place.folder + '/' + name + ".zpk";
            phone.makeFile(package, "an older one, which no archiver could add to");
            const QByteArray output = outputOf([&] {
                choose(name, {SaveAs, place.entry}, {pleaseWait(), okNotice()});
            });
            EXPECT_TRUE(output.contains(place.output));
            EXPECT_TRUE(output.contains("DEBUG:: Save APP to "));
            auto expected = filesOf(name, location);
            for (const QByteArray& path : expected.keys())
                expected['/' + name + path] = expected.take(path);
            expected['/' + name] = "/";
            EXPECT_EQ(differences(contentOf(package), expected), QByteArrayList());
            EXPECT_EQ(currentFolder(), folder);
        }
    }
    EXPECT_TRUE(names(files()).contains("Game.zpk"));
    expectAgreement();
}

TEST_F(Files, SavedPackageHoldsItsOneFolderWhateverThatIsCalled) {
    for (const QByteArray& name : hostileNames)
        addGame(0, name);
    openFilled();
    for (const QByteArray& name : hostileNames) {
        SCOPED_TRACE(name.toPercentEncoding().constData());
        choose(name, {SaveAs, 1}, {pleaseWait(), okNotice()});
        const auto content = contentOf(Path::phonePackages.toUtf8() + '/' + name + ".zpk");
        EXPECT_EQ(content.size(), 5);
        EXPECT_EQ(content.value('/' + name + "/levels/1"), "level " + name);
    }
}

TEST_F(Files, SavedNowhereWithoutCardOrTarget) {
    addGame(0, "Game");
    phone.makeFile("/etc/mtab", "");
    openFilled();
    EXPECT_EQ(outputOf([&] { window->cmd_SaveAs(appIn("Game"), SAVE_SD); }), "");
    EXPECT_FALSE(exists(phone.host(Path::cardPackages.toUtf8())));
    EXPECT_EQ(outputOf([&] { window->cmd_SaveAs(nullptr, SAVE_PH); }), "");
    phone.makeFile(Path::phonePackages.toUtf8(), "a file in the folder's place");
    choose("Game", {SaveAs, 1}, {pleaseWait(), errorNotice("Game.zpk")});
    EXPECT_EQ(readFile(phone.host(Path::phonePackages.toUtf8())), "a file in the folder's place");
    expectAgreement();
}

TEST_F(Files, RenamedInEveryPlace) {
    const QByteArray descriptor = "# a game\r\nNames = x\r\nVersion = 1\n\nName = Old\r\n"
                                  "Name = Older\nComment =  \xFF \nIcon = i.png";
    addGame(0, "Game");
    openFilled();
    const QByteArray path = "/ezxlocal/download/mystuff/quiver/Game/Game.cfg";
    registerAppInMenu(*appIn("Game"));

    const struct {
        QString name;
        QByteArray inDescriptor;
    } rows[] = {{"Plain", "Plain"},
                {"  two  words ", "two  words"},
                {"it's \"%1\" %s $HOME", "it's \"%1\" %s $HOME"},
                {"Игра 游戏", "Игра 游戏"},
                {QString(127, 'x'), QByteArray(127, 'x')},
                {"", ""}};

    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.name));
        phone.makeFile(path, descriptor);
        chmod(phone.host(path).constData(), 0640);
        renameApp(*appIn("Game"), row.name);
        EXPECT_EQ(appIn("Game")->name, row.name);
        const QByteArray line = "Name = " + row.inDescriptor + '\n';
        EXPECT_EQ(readFile(phone.host(path)), "# a game\r\n" + line + "Version = 1\n" + line +
                                                  line + "Comment =  \xFF \nIcon = i.png\n");
        EXPECT_EQ(modeOf(phone.host(path)), mode_t(0640));
        EXPECT_EQ(disagreements() + leftovers(), QStringList());
        discoverApps();
        EXPECT_EQ(appIn("Game")->name, row.name.trimmed());
    }
    fs::remove(phone.host(path).toStdString());
    phone.makeFolder(path);
    outputOf([&] { renameApp(*appIn("Game"), "Unreadable"); });
    EXPECT_EQ(query("SELECT Name FROM AppReg"), TableRows{QByteArrayList{"Unreadable"}});
    EXPECT_TRUE(readFile(phone.host(Path::installedDb.toUtf8())).contains("Name = Unreadable\n"));
}

namespace {

void type(const QString& text) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
    QCoreApplication::sendEvent(ZScreen::instance().windowHandle(), &event);
}

} // namespace

TEST_F(Files, RenameDialogIsAnsweredByKeys) {
    addGame(0, "Alpha");
    addGame(1, "Beta");
    openFilled();
    const auto asked = [](const QList<int>& keys, const QString& text = QString()) {
        return [keys, text](ZPopup& popup) {
            EXPECT_EQ(popup.title(), tr("POP_RENAME_TITLE"));
            EXPECT_EQ(messageOf(popup), tr("POP_RENAME_TEXT") + " Beta");
            EXPECT_EQ(popup.findChild<ZLineEdit*>()->selectedText(), "Beta");
            if (!text.isEmpty())
                type(text);
            pressAll(keys);
        };
    };
    choose("Beta", {Rename}, {asked({Qt::Key_Escape}, "gone")});
    choose("Beta", {Rename}, {asked({Qt::Key_F2}, "gone")});
    choose("Beta", {Rename}, {asked({Qt::Key_End, Qt::Key_Escape})});
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Beta"}));
    EXPECT_TRUE(outputOf([&] {
                    choose("Beta", {Rename},
                           {asked({Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Backspace, Qt::Key_F1},
                                  "Жуки")});
                }).endsWith("DEBUG:: Rename APP to Жк\n"));
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Жк"}));
    EXPECT_EQ(apps().currentItem(), 1);
    expectAgreement();
    const Dialogs dialogs({[](ZPopup&) {
        pressAll({Qt::Key_Backspace, Qt::Key_Backspace, Qt::Key_Backspace});
        type("Ares");
        press(Qt::Key_Return);
    }});
    apps().setCurrentItem(1);
    window->mainOptM_Rename();
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Ares"}));
    expectAgreement();
}

TEST_F(Files, Launched) {
    addGame(0, "Game");
    addGame(1, "Gone");
    openFilled();
    fs::remove(phone.host("/mmc/mmca1/quiver/Gone/run.sh").toStdString());
    const QByteArray folder = phone.host("/ezxlocal/download/mystuff/quiver/Game");
    window->mainOptM_MultiSelect();
    EXPECT_EQ(outputOf([] { press(Qt::Key_Return); }), "");
    window->mainOptM_MultiSelect();
    EXPECT_EQ(outputOf([] { press(Qt::Key_Return); }), "DEBUG:: " + folder + "/run.sh &\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return exists(folder + "/started"); }, 20000));
    press(Qt::Key_Down);
    const Dialogs none({});
    EXPECT_EQ(outputOf([] { press(Qt::Key_Return); }),
              "DEBUG:: " + phone.host("/mmc/mmca1/quiver/Gone/run.sh &\n"));
    QTest::qWait(50);
}

TEST_F(Files, CommandsDoNothingWithoutAnApplication) {
    openFilled();
    const Dialogs none({});
    window->app_selected(0);
    window->mainOptM_Move();
    window->mainOptM_Delete();
    window->mainOptM_Rename();
    window->mainOptM_Properties();
    window->mainOptM_RegisterAppMenu();
    window->mainSubOptM_SaveAs_PH();
    window->mainOptMMS_Move();
    window->mainOptMMS_Delete();
    window->mainOptMMS_SelectAll();
    window->cmd_MultiMove();
    window->cmd_MultiDelete();
    window->cmd_Move(nullptr, -1);
    window->cmd_Delete(nullptr);
    EXPECT_FALSE(apps().hasCheckBoxes());
    EXPECT_FALSE(exists(phone.host(Path::phonePackages.toUtf8())));
}

TEST_F(Files, AboutNamesTheVersion) {
    openFilled();
    const Dialogs dialogs({[](ZPopup& popup) {
        EXPECT_EQ(popup.title(), tr("FT_ABOUT"));
        EXPECT_TRUE(messageOf(popup).startsWith("Quiver v1.2 ("));
        press(Qt::Key_F1);
    }});
    EXPECT_TRUE(outputOf([] { chooseInMenu({9}); }).endsWith("DEBUG:: About Quiver\n"));
}
