#include "database.h"

#include "Bytes.h"
#include "support.h"

#include <memory>
#include <thread>

#include <sqlite3.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray databaseFile = "/ezxlocal/quiver/AppMan.db";
const QByteArray opened = "Application Database Opened\n";
const QByteArray closed = "Application Database Closed\n";
const QByteArray creating = "DEBUG:: Creating Application Database\n";
const QByteArray failing = "DEBUG:: Error executing Init Script\n";

const QByteArray appReg =
    "CREATE TABLE AppReg (   id INTEGER PRIMARY KEY,   UUID CHAR(38),   Name VARCHAR(64),   "
    "PathName VARCHAR(255),   Location INT,   RegDate DATE)\n";
const QByteArray appMenu =
    "CREATE TABLE App_Menu(   app_id\tINTENGER NOT NULL       CONSTRAINT fk_app_id REFERENCES "
    "AppReg(id) ON DELETE CASCADE)\n";

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
                  QString text = "untouched";
                  addAppRecord(game, "Game", "/g", 0);
                  EXPECT_FALSE(isAppKnown("/g", &game) || isAppInMenu("/g", &game));
                  EXPECT_FALSE(isUuidUsed(&game));
                  EXPECT_TRUE(isUuidUsed(nullptr));
                  EXPECT_FALSE(findUuidByPath("/g", text));
                  EXPECT_EQ(text, "untouched");
                  EXPECT_FALSE(addAppToMenu("/g", &game) || removeAppFromMenu(&game));
                  EXPECT_FALSE(updateAppRecord(&game, "Game", "/g", 0) || deleteAppRecord(&game));
                  EXPECT_NE(printAllApps(), SQLITE_OK);
                  printMenuApps();
              }),
              "");
}

} // namespace

TEST(Database, TablesAreMadeOnlyWhereTheFileHoldsNothing) {
    for (const auto& [before, output, schema] : Rows<QByteArray, QByteArray, QByteArray>{
             {"no file", creating + opened, appReg + appMenu},
             {"", creating + opened, appReg + appMenu},
             {"CREATE TABLE t(c)\n", opened, "CREATE TABLE t(c)\n"},
             {appReg, opened, appReg},
         }) {
        const Phone phone;
        if (before.startsWith("CREATE"))
            ask(connect(phone), before);
        else if (before.isEmpty())
            phone.makeFile(databaseFile, "");
        phone.makeFolder("/ezxlocal/quiver");
        for (const QByteArray& expected : {output, opened}) {
            EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), expected) << before.constData();
            close();
        }
        EXPECT_EQ(
            ask(connect(phone), "SELECT sql FROM sqlite_master WHERE type = 'table' ORDER BY name"),
            schema);
    }
}

TEST(Database, AFileOfAnotherKindIsLeftAsItIs) {
    for (const QByteArray& content :
         {QByteArray("plain text, no database"), QByteArray(5000, '\xA5'),
          "SQLite format 3\0"_ba + QByteArray(3000, 'x')}) {
        const Phone phone;
        phone.makeFile(databaseFile, content);
        EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), creating + failing + opened);
        expectUseless();
        close();
        EXPECT_EQ(readFile(phone.host(databaseFile)), content);
    }
    const Phone phone;
    phone.makeFolder("/ezxlocal/quiver");
    EXPECT_EQ(mkfifo(phone.host(databaseFile).constData(), 0666), 0);
    outputOf([] { openAppDb(); });
    expectUseless();
}

TEST(Database, AFileThatCannotBeOpenedIsReported) {
    for (const QByteArray kind : {"folder", "no folder above", "unreadable"}) {
        const Phone phone;
        if (kind != "no folder above")
            phone.makeFolder("/ezxlocal/quiver");
        if (kind == "folder")
            phone.makeFolder(databaseFile);
        else if (kind == "unreadable")
            phone.makeFile(databaseFile, ""), chmod(phone.host(databaseFile).constData(), 0);
        const Unprivileged unprivileged;
        testing::internal::CaptureStderr();
        const QByteArray reason =
            "Can't open Applications database: unable to open database file\n";
        EXPECT_EQ(outputOf([] { EXPECT_FALSE(openAppDb()); }), "DEBUG:: " + reason);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), reason.toStdString());
        expectUseless();
        close();
    }
}

TEST(Database, WhatIsAddedAfterALockWentAwayIsStored) {
    for (const bool isNew : {true, false}) {
        const Phone phone;
        const Connection locker = connect(phone);
        ask(locker, isNew ? "SELECT 1" : appReg);
        ask(locker, "BEGIN EXCLUSIVE");
        EXPECT_EQ(outputOf([] { EXPECT_TRUE(openAppDb()); }), creating + failing + opened);
        addAppRecord(other, "Other", "/o", 0);
        ask(locker, "ROLLBACK");
        ask(locker, isNew ? appReg : "SELECT 1");
        addAppRecord(game, "Game", "/g", 0);
        EXPECT_EQ(ask(locker, "SELECT Name FROM AppReg"), "Game\n");
        close();
        EXPECT_EQ(ask(locker, "SELECT Name FROM AppReg"), "Game\n");
    }
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

TEST(Database, EveryOperationDoesWhatItSaysAndPrintsIt) {
    const Phone phone;
    openNew(phone);
    const Connection connection = connect(phone);
    // The result, then both tables.
    const auto note = [&](bool result) {
        printf("%s: %s", result ? "true" : "false",
               ask(connection,
                   "SELECT (SELECT group_concat(id || ' ' || UUID || Name || PathName || "
                   "Location || ifnull(RegDate, '')) FROM AppReg), "
                   "(SELECT group_concat(app_id) FROM App_Menu)")
                   .replace(game.toByteArray(), "G ")
                   .replace(other.toByteArray(), "O ")
                   .constData());
    };
    const QByteArray output = outputOf([&] {
        note(isAppKnown("/g", nullptr));
        addAppRecord(game, "Game", "/g", 1);
        addAppRecord(other, "", "/o'); --\"", 0);
        note(isAppKnown("/g", nullptr));
        note(isAppKnown("/G", &other));
        note(isUuidUsed(nullptr));
        note(isUuidUsed(&game));
        note(isAppInMenu("/g", nullptr));
        note(addAppToMenu("/g", nullptr));
        note(addAppToMenu("/g", &other));
        note(addAppToMenu("/none", nullptr));
        note(isAppInMenu("/none", &other));
        note(removeAppFromMenu(nullptr));
        note(removeAppFromMenu(&game));
        note(updateAppRecord(&game, "New's", "/n", 0));
        note(updateAppRecord(nullptr, "x", "/x", 0));
        note(deleteAppRecord(nullptr));
        note(deleteAppRecord(&other));
    });
    EXPECT_EQ(output, "DEBUG:: Count for PathName ('/g') = 0\nfalse: NULL|NULL\n"
                      "DEBUG:: Count for PathName ('/g') = 1\n"
                      "true: 1 G Game/g1,2 O /o'); --\"0|NULL\n"
                      "DEBUG:: Count for PathName ('/G') = 1\n"
                      "true: 1 G Game/g1,2 O /o'); --\"0|NULL\n"
                      "true: 1 G Game/g1,2 O /o'); --\"0|NULL\n"
                      "DEBUG:: Count for PathName ('" +
                          game.toByteArray() +
                          "') = 1\n"
                          "true: 1 G Game/g1,2 O /o'); --\"0|NULL\n"
                          "DEBUG:: REGISTERED Count for PathName ('/g') = 0\n"
                          "false: 1 G Game/g1,2 O /o'); --\"0|NULL\n"
                          "DEBUG:: Registered App in Path ('/g')\n"
                          "false: 1 G Game/g1,2 O /o'); --\"0|1\n"
                          "DEBUG:: Registered App in Path ('/g')\n"
                          "false: 1 G Game/g1,2 O /o'); --\"0|1,1,2\n"
                          "DEBUG:: Registered App in Path ('/none')\n"
                          "false: 1 G Game/g1,2 O /o'); --\"0|1,1,2\n"
                          "DEBUG:: REGISTERED Count for PathName ('/none') = 1\n"
                          "true: 1 G Game/g1,2 O /o'); --\"0|1,1,2\n"
                          "false: 1 G Game/g1,2 O /o'); --\"0|1,1,2\n"
                          "false: 1 G Game/g1,2 O /o'); --\"0|2\n"
                          "false: 1 G New's/n0,2 O /o'); --\"0|2\n"
                          "false: 1 G New's/n0,2 O /o'); --\"0|2\n"
                          "false: 1 G New's/n0,2 O /o'); --\"0|2\n"
                          "false: 1 G New's/n0|2\n");
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

TEST(Database, TheListingsShowEveryRow) {
    const Phone phone;
    openNew(phone);
    const QByteArray all = "DEBUG:: List Applications in DataBase\nDEBUG:: [List START]\n";
    const QByteArray menu = "DEBUG:: List Menu Applications in DataBase\nDEBUG:: [List START]\n";
    const QByteArray end = "DEBUG:: [List END]\n";
    EXPECT_EQ(outputOf([] { EXPECT_EQ(printAllApps(), SQLITE_OK); }), all + end);
    addAppRecord(other, u"é"_s, fromBytes("/\xFF"), 1);
    addAppRecord(game, "Game", "/g", 0);
    ask(connect(phone), "INSERT INTO AppReg(id) VALUES(7)");
    outputOf([] { addAppToMenu("/g", nullptr), addAppToMenu("/g", nullptr); });
    addAppRecord(game, "again", fromBytes("/\xFF"), 0);
    QString first;
    EXPECT_TRUE(findUuidByPath(fromBytes("/\xFF"), first));
    EXPECT_EQ(first, other.toString());
    ask(connect(phone), "DELETE FROM AppReg WHERE Name = 'again'");
    const auto listed = [](const char* uuid, const char* name, const char* path, int location) {
        return QString("DEBUG:: ==========================================\n"
                       "DEBUG:: UUID    : %1\nDEBUG:: AppName : %2\nDEBUG:: PathName: %3\n"
                       "DEBUG:: Location: %4\n")
            .arg(uuid, fromBytes(name), fromBytes(path))
            .arg(location);
    };
    const QString otherLines = listed(other.toByteArray(), "\xE9", "/\xFF", 1);
    const QString gameLines = listed(game.toByteArray(), "Game", "/g", 0);
    EXPECT_EQ(outputOf([] { EXPECT_EQ(printAllApps(), SQLITE_OK); }),
              all + toBytes(otherLines + gameLines + listed("", "", "", 0)) + end);
    EXPECT_EQ(outputOf(printMenuApps), menu + toBytes(gameLines) + end);
}

TEST(Database, ClosingFailsWhileAStatementIsInUse) {
    const Phone phone;
    openNew(phone);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(AppDb, "SELECT 1", -1, &statement, nullptr);
    EXPECT_EQ(outputOf([] { EXPECT_FALSE(closeAppDb()); }),
              "DEBUG:: Error while closing Application Database\n"
              "Error while closing Application Database\n");
    sqlite3_finalize(statement);
    close();
}
