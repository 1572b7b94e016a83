#include "apps_support.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZLineEdit.h"
#include "ZListBox.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "operations.h"
#include "paths.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class Files : public Ops {
protected:
    static QString ask(const char* key, const QByteArray& folder) {
        return tr(key) + '\n' + appIn(folder)->name;
    }

    void moveByMenu(const QByteArray& folder, const Dialogs::Step& notice = okNotice()) {
        const QString question = ask("POP_CONFIRM_MOVE_TEXT", folder);
        choose(folder, {MoveEntry}, {yes(question), pleaseWait(), notice});
    }

    void deleteByMenu(const QByteArray& folder, const Dialogs::Step& notice = okNotice()) {
        const QString question = ask("POP_CONFIRM_DELETE_TEXT", folder);
        choose(folder, {DeleteEntry}, {yes(question), pleaseWait(), notice});
    }

    /// The package holds what lies in the folder of that name, and nothing else.
    void expectPacked(const QByteArray& package, const QByteArray& folder, int location) const {
        const QByteArray target = phone.host("/unpacked");
        fs::remove_all(target.toStdString());
        const QByteArray command = SEVEN_ZIP " x -y -spd '" + phone.host(package) + "' '-o" +
                                   target + "' > /dev/null 2>&1 < /dev/null";
        EXPECT_EQ(system(command.constData()), 0) << package.constData();
        EXPECT_EQ(differences(snapshot(target + '/' + folder), filesOf(folder, location)),
                  QByteArrayList());
        EXPECT_EQ(snapshot(target).size(), filesOf(folder, location).size() + 1);
    }
};

} // namespace

TEST_F(Files, MovedWhereAnotherWasDeletedByHandKeepsItsOwnIdentity) {
    addGame(0, "Game");
    openFilled();
    registerAppInMenu(*appIn("Game"));
    fs::remove_all(phone.host("/ezxlocal/download/mystuff/quiver/Game").toStdString());
    addGame(1, "Game");
    window->refreshList(true);
    const QUuid uuid = *appIn("Game")->uuid;
    moveByMenu("Game");
    registerAppInMenu(*appIn("Game"));
    expectAgreement();
    EXPECT_EQ(*appIn("Game")->uuid, uuid);
    unregisterAppFromMenu(*appIn("Game"));
    expectAgreement();
}

TEST_F(Files, NothingIsDoneToAnApplicationWhoseCardIsOut) {
    addGame(1, "Game");
    openFilled();
    registerAppInMenu(*appIn("Game"));
    const QByteArray card = phone.host("/mmc/mmca1");
    fs::rename(card.toStdString(), phone.host("/pulled").toStdString());
    const Snapshot before = snapshot(phone.host());
    const auto missing = errorNotice("/mmc/mmca1/quiver/Game: ");
    choose("Game", {DeleteEntry},
           {yes(tr("POP_CONFIRM_DELETE_TEXT") + "\nGame"), pleaseWait(), missing});
    choose("Game", {RegisterEntry},
           {yes(tr("POP_CONFIRM_UNREGISTER_APP_MENU") + "\nGame"), missing});
    choose("Game", {SaveAsEntry, SaveOnPhoneEntry}, {pleaseWait(), missing});
    EXPECT_EQ(snapshot(phone.host()), before);
    EXPECT_EQ(names(apps()), QStringList("Game"));
    fs::rename(phone.host("/pulled").toStdString(), card.toStdString());
    window->refreshList(true);
    EXPECT_TRUE(appIn("Game")->registeredInMenu);
    expectAgreement();
}

TEST_F(Files, WhatIsRefusedOrDeclinedChangesNothing) {
    addGame(0, "Game");
    addGame(1, "It's");
    openFilled();
    phone.makeFile("/mmc/mmca1/quiver/Game/own", "file");
    const Snapshot before = snapshot(phone.host());
    const auto quoted = errorNotice(tr("POP_ERROR_QUOTE_TEXT"));
    moveByMenu("Game", errorNotice(tr("POP_ERROR_EXISTS_TEXT")));
    moveByMenu("It's", quoted);
    deleteByMenu("It's", quoted);
    choose("It's", {SaveAsEntry, SaveOnPhoneEntry}, {pleaseWait(), quoted});
    choose("Game", {MoveEntry}, {no(ask("POP_CONFIRM_MOVE_TEXT", "Game"))});
    choose("Game", {DeleteEntry}, {no(ask("POP_CONFIRM_DELETE_TEXT", "Game"))});
    EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList());
    EXPECT_EQ(names(apps()), QStringList({"Game", "It's"}));
    EXPECT_EQ(disagreements(), QStringList());
}

TEST_F(Files, CommandsThatASignalEndedMoveAndDeleteNothing) {
    addGame(0, "Alpha");
    addGame(1, "Beta");
    openFilled();
    // The status of a shell that was killed reads as a success. Some shells become the command.
    const QByteArray script =
        "[ $PPID = " + QByteArray::number(getpid()) + " ] && kill -9 $$ || kill -9 $PPID";
    const FakeCommand mv(phone, "mv", script);
    const FakeCommand rm(phone, "rm", script);
    for (const char* folder : {"Alpha", "Beta"}) {
        moveByMenu(folder);
        deleteByMenu(folder);
    }
    EXPECT_EQ(filesOf("Alpha", 0).size() + filesOf("Beta", 1).size(), 8);
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Beta"}));
    expectAgreement();
}

TEST_F(Files, SavedInThreePlaces) {
    addGame(0, "Game");
    openFilled();
    window->loadFolder("/mmc/mmca1");
    for (const auto& [entry, place, said] :
         Rows<int, QByteArray, QByteArray>{{SaveOnPhoneEntry, Path::phonePackages.toUtf8(), "PH\n"},
                                           {SaveOnCardEntry, Path::cardPackages.toUtf8(), "SD\n"},
                                           {SaveInBrowserEntry, "/mmc/mmca1", "FM\n"}}) {
        phone.makeFile(place + "/Game.zpk", "an older one, which no archiver could add to");
        const QByteArray output = outputOf([&, entry = entry] {
            choose("Game", {SaveAsEntry, entry}, {pleaseWait(), okNotice()});
        });
        EXPECT_TRUE(output.endsWith(said));
        expectPacked(place + "/Game.zpk", "Game", 0);
    }
    EXPECT_TRUE(names(files()).contains("Game.zpk"));
    expectAgreement();
}

TEST_F(Files, RenamedInEveryPlace) {
    addGame(0, "Game");
    openFilled();
    const QByteArray path = phone.host("/ezxlocal/download/mystuff/quiver/Game/Game.cfg");
    registerAppInMenu(*appIn("Game"));
    for (const auto& [name, inDescriptor] :
         Rows<QString, QByteArray>{{"  two  words ", "two  words"},
                                   {"it's \"%1\" %s $HOME", "it's \"%1\" %s $HOME"},
                                   {"Игра 游戏", "Игра 游戏"},
                                   {QString(127, 'x'), QByteArray(127, 'x')},
                                   {"", ""}}) {
        SCOPED_TRACE(qPrintable(name));
        writeFile(path, "# a game\r\nNames = x\r\nVersion = 1\n\nName = Old\r\nName = Older\n"
                        "Comment =  \xFF \nIcon = i.png");
        chmod(path.constData(), 0640);
        renameApp(*appIn("Game"), name);
        const QByteArray line = "Name = " + inDescriptor + '\n';
        EXPECT_EQ(readFile(path), "# a game\r\n" + line + "Version = 1\n" + line + line +
                                      "Comment =  \xFF \nIcon = i.png\n");
        EXPECT_EQ(modeOf(path), mode_t(0640));
        EXPECT_EQ(appIn("Game")->name, name);
        EXPECT_EQ(disagreements() + leftovers(), QStringList());
        discoverApps();
        EXPECT_EQ(appIn("Game")->name, name.trimmed());
    }
    fs::remove(path.toStdString());
    renameApp(*appIn("Game"), "Without descriptor");
    EXPECT_EQ(query("SELECT Name FROM AppReg"), TableRows{{QByteArray("Without descriptor")}});
    EXPECT_FALSE(exists(path));
}

TEST_F(Files, RenameDialogIsAnsweredByKeys) {
    addGame(0, "Alpha");
    addGame(1, "Beta");
    openFilled();
    const auto typing = [](const QString& text, int key) {
        return [=](ZPopup& popup) {
            EXPECT_EQ(messageOf(popup), tr("POP_RENAME_TEXT") + " Beta");
            auto* edit = popup.findChild<ZLineEdit*>();
            EXPECT_EQ(edit->selectedText(), "Beta");
            edit->insert(text);
            press(key);
        };
    };
    for (const int key : {Qt::Key_Escape, Qt::Key_F2})
        choose("Beta", {RenameEntry}, {typing("gone", key)});
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Beta"}));
    const QByteArray output =
        outputOf([&] { choose("Beta", {RenameEntry}, {typing("New\nExec = evil", Qt::Key_F1)}); });
    EXPECT_TRUE(output.endsWith("DEBUG:: Rename APP to New Exec = evil\n"));
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "New Exec = evil"}));
    EXPECT_EQ(apps().currentItem(), 1);
    const auto pasting = [](ZPopup& popup) {
        popup.findChild<ZLineEdit*>()->insert(QString(300, u'ä'));
        press(Qt::Key_F1);
    };
    choose("Alpha", {RenameEntry}, {pasting});
    EXPECT_EQ(appIn("Alpha")->name, QString(63, u'ä'));
    expectAgreement();
}
