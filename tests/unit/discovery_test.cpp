#include "discovery.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "agreement.h"
#include "database.h"
#include "storage.h"
#include "support.h"

#include <cstdlib>

#include <unistd.h>

namespace {

const QByteArray onPhone = "/ezxlocal/download/mystuff/quiver/";
const QByteArray onCard = "/mmc/mmca1/quiver/";

void makeApp(const Phone& phone, const QByteArray& path, const QByteArray& name) {
    phone.makeFile(path + path.mid(path.lastIndexOf('/')) + ".cfg", "Name = " + name + "\n");
}

void openDatabase(const Phone& phone) {
    phone.makeFolder("/ezxlocal/quiver");
    outputOf([] { EXPECT_TRUE(openAppDb()); });
}

/// What was discovered: lines of key, path and location in the order of the map.
QByteArray discovered() {
    outputOf(discoverApps);
    QByteArray lines;
    for (const auto& [key, app] : AppMap)
        lines += toBytes(key + ' ' + app->path + ' ' + QString::number(app->location) + '\n');
    return lines;
}

qsizetype rowCount() {
    return query("SELECT id FROM AppReg").size();
}

} // namespace

TEST(Discovery, TheMapIsOrderedByNameAndPlace) {
    const Phone phone;
    openDatabase(phone);
    SdPresent = true;
    makeApp(phone, onCard + "Two", "Same");
    for (const auto& [folder, name] : Rows<const char*, const char*>{{"One", "Same"},
                                                                     {"a", "Double"},
                                                                     {"b", "Double"},
                                                                     {"B", "Double"},
                                                                     {"c", "apple"},
                                                                     {"d", "Zebra"},
                                                                     {"e", ""},
                                                                     {"f", "\xD0\x98"}})
        makeApp(phone, onPhone + folder, name);
    EXPECT_EQ(discovered(), "Double_PH " + onPhone + "b 0\nSame_PH " + onPhone + "One 0\nSame_SD " +
                                onCard + "Two 1\nZebra_PH " + onPhone + "d 0\n_PH " + onPhone +
                                "e 0\napple_PH " + onPhone + "c 0\n\xD0\x98_PH " + onPhone +
                                "f 0\n");
    EXPECT_EQ(rowCount(), 9);
    SdPresent = false;
    EXPECT_FALSE(discovered().contains("_SD"));
}

TEST(Discovery, FoldersOfAnyNameAreFoundAndNothingElse) {
    const Phone phone;
    openDatabase(phone);
    QByteArray expected;
    for (const char* name : {"*", ".hidden", "a b", "it's \"$(x)\"", "\xD0\x98", "\xFF\xFE"}) {
        makeApp(phone, onPhone + name, name);
        expected += QByteArray(name) + "_PH " + onPhone + name + " 0\n";
    }
    makeApp(phone, "/elsewhere/Linked", "Linked");
    EXPECT_EQ(symlink(phone.host("/elsewhere/Linked").constData(),
                      phone.host(onPhone + "Linked").constData()),
              0);
    phone.makeFile(onPhone + "file", "Name = file\n");
    phone.makeFile(onPhone + "Wrong/wrong.cfg", "Name = x\n");
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_EQ(discovered(), expected);
        EXPECT_EQ(rowCount(), 6);
    }
}

TEST(Discovery, AnIdentifierIsDrawnOnceAndKept) {
    const Phone phone;
    openDatabase(phone);
    const QByteArray game = onPhone + "Game";
    makeApp(phone, game, "Game");
    const auto identifier = [] { return AppMap.begin()->second->uuid->toByteArray(); };
    srand(42);
    outputOf(discoverApps);
    const QByteArray used = identifier();
    EXPECT_TRUE(used.startsWith("{8e10aded-f8ee-")) << used.constData();
    outputOf([&] { addAppToMenu(game, nullptr); });
    makeApp(phone, game, "Renamed by hand");
    EXPECT_EQ(outputOf(discoverApps),
              "DEBUG:: Count for PathName ('" + game +
                  "') = 1\nDEBUG:: Application 'Renamed by hand' is already in DB.\n"
                  "\tApp UUID is " +
                  used + "\nDEBUG:: REGISTERED Count for PathName ('" + game + "') = 1\n");
    EXPECT_EQ(identifier(), used);
    EXPECT_TRUE(AppMap.begin()->second->registeredInMenu);
    // Moved by hand it is another application, and one that is taken is not drawn again.
    rename(phone.host(game).constData(), phone.host(onPhone + "Moved").constData());
    makeApp(phone, onPhone + "Moved", "Game");
    srand(42);
    EXPECT_TRUE(outputOf(discoverApps).contains("Count for PathName ('" + used + "') = 1\n"));
    EXPECT_NE(identifier(), used);
    EXPECT_EQ(rowCount(), 2);
}

TEST(Discovery, AnIdentifierThatNothingCanBeFoundByIsReplaced) {
    for (const auto& [stored, kept] : Rows<const char*, const char*>{
             {nullptr, nullptr},
             {"", nullptr},
             {"{8e10aded-f8ee", nullptr},
             {"{8E10ADED-F8EE-1111-2222-333333333333}", "{8e10aded-f8ee-1111-2222-333333333333}"},
         }) {
        const Phone phone;
        openDatabase(phone);
        makeApp(phone, onPhone + "Game", "Game");
        query("INSERT INTO AppReg(PathName) VALUES(?)", onPhone + "Game");
        if (stored)
            query("UPDATE AppReg SET UUID = ?", stored);
        discovered();
        const QUuid uuid = *AppMap.begin()->second->uuid;
        EXPECT_TRUE(kept ? uuid.toByteArray() == kept : !uuid.isNull())
            << uuid.toByteArray().data();
        outputOf([&] { EXPECT_TRUE(isUuidUsed(&uuid)); });
        EXPECT_EQ(rowCount(), 1);
    }
}

TEST(ListDir, TakesWhatTheFlagsSay) {
    const Phone phone;
    for (const char* folder : {"/d/Folder", "/d/afolder", "/d/folder.zpk"})
        phone.makeFolder(folder);
    for (const char* file : {"/d/a.zpk", "/d/B.zpk.old", "/d/c.ZPK", "/d/\xFF"})
        phone.makeFile(file, "");
    EXPECT_EQ(symlink("Folder", phone.host("/d/link").constData()), 0);
    EXPECT_TRUE(enterFolder("/d"));
    const QStringList packages = {"B.zpk.old", "a.zpk", "folder.zpk"};
    EXPECT_EQ(listDir(true, false, false, true), QStringList({"Folder", "afolder", "folder.zpk"}));
    EXPECT_EQ(listDir(false, true, false, true), packages);
    EXPECT_EQ(listDir(false, false, true, true), packages);
    const QStringList all = {"B.zpk.old",  "a.zpk", "c.ZPK",
                             "folder.zpk", "link",  fromBytes("\xFF")};
    EXPECT_EQ(listDir(false, true, true, true), all);
}
