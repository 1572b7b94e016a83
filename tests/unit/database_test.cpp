#include "database.h"

#include "Bytes.h"
#include "agreement.h"
#include "support.h"

#include <memory>
#include <thread>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray databaseFile = "/ezxlocal/quiver/AppMan.db";
const QByteArray opened = "Application Database Opened\n";
const QByteArray closed = "Application Database Closed\n";
const QByteArray creating = "DEBUG:: Creating Application Database\n";
const QByteArray failing = "DEBUG:: Error executing Init Script\n";

const QUuid game("{8e10aded-f8ee-0001-0203-040506070809}");
const QUuid other("{8e10aded-f8ee-1111-1111-111111111111}");

/// Another program's connection, which has the database for itself until it is closed.
std::shared_ptr<sqlite3> lock(const Phone& phone) {
    sqlite3* other = nullptr;
    sqlite3_open(phone.host(databaseFile).constData(), &other);
    EXPECT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    return {other, sqlite3_close};
}

void openNew(const Phone& phone) {
    phone.makeFolder("/ezxlocal/quiver");
    EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), creating + opened);
}

void close() {
    EXPECT_EQ(outputOf([] { EXPECT_TRUE(closeAppDb()); }), closed);
}

/// Every operation gives its failure value and prints nothing.
void expectUseless() {
    EXPECT_EQ(outputOf([] {
                  QString text;
                  addAppRecord(game, "Game", "/g", 0);
                  EXPECT_FALSE(isAppKnown("/g", &game) || isAppInMenu("/g", &game) ||
                               isUuidUsed(&game) || findUuidByPath("/g", text) ||
                               addAppToMenu("/g", &game) || removeAppFromMenu(&game) ||
                               updateAppRecord(&game, "Game", "/g", 0) || deleteAppRecord(&game));
                  EXPECT_NE(printAllApps(), SQLITE_OK);
                  printMenuApps();
              }),
              "");
}

} // namespace

TEST(Database, TablesAreMadeOnlyWhereTheFileHoldsNothing) {
    for (const auto& [before, output, tables] : Rows<const char*, QByteArray, TableRows>{
             {"", creating + opened, {{"AppReg"}, {"App_Menu"}}},
             {"CREATE TABLE theirs(c)", opened, {{"theirs"}}},
         }) {
        const Phone phone;
        phone.makeFolder("/ezxlocal/quiver");
        query(before);
        for (const QByteArray& expected : {output, opened}) {
            EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), expected) << before;
            close();
        }
        EXPECT_EQ(query("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"),
                  tables);
    }
}

TEST(Database, AFileOfAnotherKindIsLeftAsItIs) {
    for (const QByteArray& content :
         {QByteArray("plain text, no database"), "SQLite format 3\0"_ba + QByteArray(3000, 'x')}) {
        const Phone phone;
        phone.makeFile(databaseFile, content);
        EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), creating + failing + opened);
        expectUseless();
        close();
        EXPECT_EQ(readFile(phone.host(databaseFile)), content);
    }
}

TEST(Database, WhatIsAddedAfterALockWentAwayIsStored) {
    const Phone phone;
    openNew(phone);
    close();
    std::shared_ptr<sqlite3> other = lock(phone);
    EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), creating + failing + opened);
    addAppRecord(game, "Lost", "/o", 0);
    other.reset();
    addAppRecord(game, "Game", "/g", 0);
    close();
    EXPECT_EQ(query("SELECT Name FROM AppReg"), TableRows{{"Game"}});
}

TEST(Database, AMomentOfAnotherProgramIsWaitedFor) {
    const Phone phone;
    openNew(phone);
    std::thread other([held = lock(phone)]() mutable {
        sqlite3_sleep(200);
        held.reset();
    });
    addAppRecord(game, "Game", "/g", 0);
    other.join();
    EXPECT_EQ(query("SELECT Name FROM AppReg"), TableRows{{"Game"}});
}

TEST(Database, EveryOperationDoesWhatItSays) {
    const Phone phone;
    openNew(phone);
    outputOf([] {
        const char* links = "SELECT app_id FROM App_Menu";
        EXPECT_FALSE(isAppKnown("/g", nullptr));
        addAppRecord(game, "Game", "/g", 1);
        addAppRecord(other, "", "/o'); --\"", 0);
        EXPECT_TRUE(isAppKnown("/g", nullptr) && isAppKnown("/G", &other));
        EXPECT_TRUE(isUuidUsed(nullptr) && isUuidUsed(&game));
        EXPECT_FALSE(isAppInMenu("/g", nullptr));
        // What succeeds is reported as false, too.
        EXPECT_FALSE(addAppToMenu("/g", nullptr) || addAppToMenu("/none", &other) ||
                     addAppToMenu("/none", nullptr));
        EXPECT_EQ(query(links), (TableRows{{"1"}, {"2"}}));
        EXPECT_TRUE(isAppInMenu("/none", &other));
        EXPECT_FALSE(removeAppFromMenu(nullptr) || removeAppFromMenu(&game));
        EXPECT_EQ(query(links), TableRows{{"2"}});
        EXPECT_FALSE(updateAppRecord(&game, "New's", "/n", 0) ||
                     updateAppRecord(nullptr, "x", "/x", 0) || deleteAppRecord(nullptr) ||
                     deleteAppRecord(&other));
        EXPECT_EQ(query("SELECT id, Name, PathName, Location FROM AppReg"),
                  (TableRows{{"1", "New's", "/n", "0"}}));
    });
}
