#pragma once

/// Every SQL text of the program.
namespace Sql {

constexpr const char* anyObject = "SELECT * FROM sqlite_master";

/// A number that changes with what other connections commit.
constexpr const char* version = "PRAGMA data_version";

// What was told to be done is done, also when the power goes a moment later: without this, the
// journal of the last change may come back and undo it.
constexpr const char* durable = "PRAGMA synchronous = EXTRA";

constexpr const char* beginReading = "BEGIN";
constexpr const char* endReading = "COMMIT";

// "INTENGER" is what the databases in use have.
constexpr const char* init =
    "BEGIN TRANSACTION;CREATE TABLE AppReg (   id INTEGER PRIMARY KEY,   UUID CHAR(38),   Name "
    "VARCHAR(64),   PathName VARCHAR(255),   Location INT,   RegDate DATE);CREATE TABLE "
    "App_Menu(   app_id\tINTENGER NOT NULL       CONSTRAINT fk_app_id REFERENCES AppReg(id) ON "
    "DELETE CASCADE);COMMIT;";

// Every application is looked up by its path at each discovery; without these, a discovery would
// read the whole table once per application.
constexpr const char* indexes = "CREATE INDEX IF NOT EXISTS AppReg_PathName ON AppReg(PathName);"
                                "CREATE INDEX IF NOT EXISTS AppReg_UUID ON AppReg(UUID);"
                                "CREATE INDEX IF NOT EXISTS App_Menu_app_id ON App_Menu(app_id);";

constexpr const char* addApp =
    "INSERT INTO AppReg(UUID,Name,pathName,Location) VALUES(?, ?, ?, ?);";
constexpr const char* countInMenu =
    "SELECT COUNT(*) FROM AppReg WHERE id IN ( SELECT app_id FROM App_Menu) AND ( PathName=? OR "
    "UUID = ? );";
constexpr const char* countKnown = "SELECT COUNT(*) FROM AppReg WHERE PathName=? OR UUID = ?;";
constexpr const char* countUuid = "SELECT COUNT(*) FROM AppReg WHERE UUID = ?;";
constexpr const char* addToMenu =
    "INSERT INTO App_Menu(app_id) SELECT id from AppReg WHERE PathName = ? OR UUID = ?;";
constexpr const char* removeFromMenu =
    "DELETE FROM App_Menu WHERE app_id IN ( SELECT id from AppReg WHERE UUID = ? ) ;";
constexpr const char* findUuid = "SELECT UUID FROM AppReg WHERE PathName = ? ;";
// What stands there is no identifier, or not in the form that is looked for.
constexpr const char* replaceUuid =
    "UPDATE AppReg SET UUID = ? WHERE PathName = ? AND ifnull(UUID, '') = ?;";
constexpr const char* updateApp =
    "UPDATE AppReg SET Name = ?, PathName = ?, Location = ? WHERE UUID = ?;";
constexpr const char* deleteApp = "DELETE FROM AppReg WHERE UUID = ?;";
constexpr const char* allApps = "SELECT UUID,Name,pathName,Location FROM AppReg;";
constexpr const char* menuApps =
    "SELECT UUID,Name,pathName,Location FROM AppReg WHERE id IN ( SELECT app_id FROM App_Menu);";

// What a check holds against each other, row by row.
constexpr const char* rows =
    "SELECT id, UUID, Name, PathName, (SELECT COUNT(*) FROM App_Menu WHERE app_id = AppReg.id) "
    "FROM AppReg ORDER BY id;";
constexpr const char* strayLinks =
    "SELECT DISTINCT app_id FROM App_Menu WHERE app_id NOT IN (SELECT id FROM AppReg);";
constexpr const char* removeRow = "DELETE FROM AppReg WHERE id = ?;";
constexpr const char* removeLinks = "DELETE FROM App_Menu WHERE app_id = ?;";
constexpr const char* addLink = "INSERT INTO App_Menu(app_id) VALUES(?);";
constexpr const char* setRowUuid = "UPDATE AppReg SET UUID = ? WHERE id = ?;";

} // namespace Sql
