#include "database.h"

#include "Bytes.h"
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

const QByteArray appReg = "CREATE TABLE AppReg (id INTEGER PRIMARY KEY, UUID, Name, PathName, "
                          "Location, RegDate)\n";

const QUuid game("{8e10aded-f8ee-0001-0203-040506070809}");
const QUuid other("{8e10aded-f8ee-1111-1111-111111111111}");

struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};

using Connection = std::unique_ptr<sqlite3, Closer>;

/// A connection of the test's own.
Connection connect(const Phone& phone) {
    phone.makeFolder("/ezxlocal/quiver");
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open(phone.host(databaseFile).constData(), &handle), SQLITE_OK);
    return Connection(handle);
}

int addRow(void* text, int count, char** columns, char**) {
    for (int i = 0; i < count; ++i)
        *static_cast<QByteArray*>(text) +=
            QByteArray(i == 0 ? "" : "|") + (columns[i] ? columns[i] : "NULL");
    *static_cast<QByteArray*>(text) += '\n';
    return 0;
}

/// All rows, a line each, with "|" between the columns.
QByteArray ask(const Connection& connection, const QByteArray& sql) {
    QByteArray text;
    EXPECT_EQ(sqlite3_exec(connection.get(), sql.constData(), addRow, &text, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection.get());
    return text;
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
    for (const auto& [before, output, tables] : Rows<QByteArray, QByteArray, QByteArray>{
             {"", creating + opened, "AppReg\nApp_Menu\n"},
             {"CREATE TABLE theirs(c)", opened, "theirs\n"},
             {appReg, opened, "AppReg\n"},
         }) {
        const Phone phone;
        ask(connect(phone), before);
        for (const QByteArray& expected : {output, opened}) {
            EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), expected) << before.constData();
            close();
        }
        EXPECT_EQ(ask(connect(phone),
                      "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"),
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
    const Connection locker = connect(phone);
    ask(locker, appReg + ";BEGIN EXCLUSIVE");
    EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), creating + failing + opened);
    addAppRecord(other, "Other", "/o", 0);
    ask(locker, "ROLLBACK");
    addAppRecord(game, "Game", "/g", 0);
    close();
    EXPECT_EQ(ask(locker, "SELECT Name FROM AppReg"), "Game\n");
}

TEST(Database, AMomentOfAnotherProgramIsWaitedFor) {
    const Phone phone;
    openNew(phone);
    const Connection locker = connect(phone);
    ask(locker, "BEGIN EXCLUSIVE");
    std::thread other([&] {
        sqlite3_sleep(200);
        ask(locker, "ROLLBACK");
    });
    addAppRecord(game, "Game", "/g", 0);
    other.join();
    EXPECT_EQ(ask(locker, "SELECT Name FROM AppReg"), "Game\n");
    close();
}

TEST(Database, EveryOperationDoesWhatItSays) {
    const Phone phone;
    openNew(phone);
    const Connection connection = connect(phone);
    outputOf([&] {
        const auto links = [&] {
            return ask(connection, "SELECT group_concat(app_id) FROM App_Menu");
        };
        EXPECT_FALSE(isAppKnown("/g", nullptr));
        addAppRecord(game, "Game", "/g", 1);
        addAppRecord(other, "", "/o'); --\"", 0);
        EXPECT_TRUE(isAppKnown("/g", nullptr) && isAppKnown("/G", &other));
        EXPECT_TRUE(isUuidUsed(nullptr) && isUuidUsed(&game));
        EXPECT_FALSE(isAppInMenu("/g", nullptr));
        // What succeeds is reported as false, too.
        EXPECT_FALSE(addAppToMenu("/g", nullptr) || addAppToMenu("/none", &other) ||
                     addAppToMenu("/none", nullptr));
        EXPECT_EQ(links(), "1,2\n");
        EXPECT_TRUE(isAppInMenu("/none", &other));
        EXPECT_FALSE(removeAppFromMenu(nullptr) || removeAppFromMenu(&game));
        EXPECT_EQ(links(), "2\n");
        EXPECT_FALSE(updateAppRecord(&game, "New's", "/n", 0) ||
                     updateAppRecord(nullptr, "x", "/x", 0) || deleteAppRecord(nullptr) ||
                     deleteAppRecord(&other));
        EXPECT_EQ(ask(connection, "SELECT id, Name, PathName, Location, RegDate FROM AppReg"),
                  "1|New's|/n|0|NULL\n");
    });
}

TEST(Database, PathsKeepTheirBytesAndNamesBecomeLatin1) {
    const Phone phone;
    openNew(phone);
    const QByteArray paths[] = {"/a\xFF", "/a\xFE", "/\xD0\x98", "/\xC3\xA9", "/\xE9"};
    for (const QByteArray& path : paths)
        addAppRecord(game, u"é И €"_s, fromBytes(path), 0);
    for (const QByteArray& path : paths)
        EXPECT_EQ(outputOf([&] { EXPECT_TRUE(isAppKnown(fromBytes(path), nullptr)); }),
                  "DEBUG:: Count for PathName ('" + path + "') = 1\n");
    EXPECT_EQ(ask(connect(phone), "SELECT Name, PathName FROM AppReg ORDER BY id"),
              "\xE9 ? ?|/a\xFF\n\xE9 ? ?|/a\xFE\n\xE9 ? ?|/\xD0\x98\n\xE9 ? ?|/\xC3\xA9\n"
              "\xE9 ? ?|/\xE9\n");
}
