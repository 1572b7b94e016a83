#include "database.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "paths.h"
#include "statements.h"

#include <QList>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace {

/// The database was still busy when the last statement gave up. Nothing waits again before one got
/// through: a discovery has hundreds of statements. As what follows, this belongs to the one
/// connection of the program.
bool isHeldForLong = false;

/// Another program writes for a moment only; some wait for it.
int waitForOthers(void*, int tries) {
    constexpr int pause = 20; // ms
    constexpr int longestWait = 5000;
    isHeldForLong = isHeldForLong || tries * pause >= longestWait;
    if (!isHeldForLong)
        sqlite3_sleep(pause);
    return isHeldForLong ? 0 : 1;
}

/// A transaction of a `DbReading` is open.
bool isReading = false;

void endReading() {
    if (std::exchange(isReading, false))
        sqlite3_exec(AppDb, Sql::endReading, nullptr, nullptr, nullptr);
}

/// Prepared before and not in use: to prepare one costs more than what it does. There are so few
/// that nothing finds one faster than a look at each.
std::vector<sqlite3_stmt*> idleStatements;

/// That of this text, or none.
sqlite3_stmt* takeIdleStatement(const char* sql) {
    const auto found =
        std::find_if(idleStatements.begin(), idleStatements.end(), [&](sqlite3_stmt* statement) {
            return strcmp(sqlite3_sql(statement), sql) == 0;
        });
    if (found == idleStatements.end())
        return nullptr;
    std::swap(*found, idleStatements.back());
    sqlite3_stmt* statement = idleStatements.back();
    idleStatements.pop_back();
    return statement;
}

/// A prepared statement for one use. Where preparing failed it is not valid and every call does
/// nothing.
class Statement {
public:
    explicit Statement(const char* sql) : m_statement(takeIdleStatement(sql)) {
        if (!m_statement && AppDb)
            sqlite3_prepare_v2(AppDb, sql, -1, &m_statement, nullptr);
    }

    ~Statement() {
        if (!m_statement)
            return;
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
        idleStatements.push_back(m_statement);
    }

    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    bool isValid() const { return m_statement != nullptr; }

    Statement& bind(const QByteArray& text) {
        // SQLite copies nothing, so the text is kept until the statement ends.
        const QByteArray& kept = m_texts.at(m_bound) = text;
        sqlite3_bind_text(m_statement, ++m_bound, kept.constData(), -1, SQLITE_STATIC);
        return *this;
    }

    Statement& bind(qint64 number) {
        sqlite3_bind_int64(m_statement, ++m_bound, number);
        return *this;
    }

    int step() {
        if (!sqlite3_stmt_readonly(m_statement))
            endReading();
        const int result = sqlite3_step(m_statement);
        isHeldForLong = isHeldForLong && result == SQLITE_BUSY;
        return result;
    }

    int number(int column) { return sqlite3_column_int(m_statement, column); }

    qint64 id(int column) { return sqlite3_column_int64(m_statement, column); }

    /// The text of a column, empty for NULL.
    QByteArray text(int column) {
        return reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    }

    /// How the whole query went.
    int result() { return sqlite3_reset(m_statement); }

private:
    sqlite3_stmt* m_statement;
    std::array<QByteArray, 4> m_texts; // no statement has more
    int m_bound = 0;
};

QByteArray uuidText(const QUuid* uuid) {
    return uuid ? uuid->toByteArray() : QByteArray("");
}

int stopAtFirstRow(void*, int, char**, char**) {
    return 1;
}

bool isEmptyDatabase() {
    return sqlite3_exec(AppDb, Sql::anyObject, stopAtFirstRow, nullptr, nullptr) != SQLITE_ABORT;
}

void createTables() {
    puts("DEBUG:: Creating Application Database");
    if (sqlite3_exec(AppDb, Sql::init, nullptr, nullptr, nullptr) == SQLITE_OK)
        return;
    puts("DEBUG:: Error executing Init Script");
    // A script that stopped half-way leaves its transaction open, and with it all that follows
    // would be lost at the end of the run.
    if (!sqlite3_get_autocommit(AppDb))
        sqlite3_exec(AppDb, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool isCountNonZero(Statement& statement, const char* message, const QByteArray& subject) {
    statement.step();
    const int count = statement.number(0);
    printf("DEBUG:: %s for PathName ('%s') = %d\n", message, subject.constData(), count);
    return count != 0;
}

bool isStepOk(Statement& statement) {
    return statement.step() == SQLITE_OK;
}

/// True when a statement that gives no rows went through.
bool isDone(Statement& statement) {
    return statement.step() == SQLITE_DONE;
}

bool changeRow(const char* sql, qint64 id) {
    Statement statement(sql);
    return statement.isValid() && isDone(statement.bind(id));
}

int printApps(const char* sql, const char* heading) {
    Statement statement(sql);
    if (!statement.isValid())
        return SQLITE_ERROR;
    puts(heading);
    puts("DEBUG:: [List START]");
    while (statement.step() == SQLITE_ROW) {
        puts("DEBUG:: ==========================================");
        printf("DEBUG:: UUID    : %s\n", statement.text(0).constData());
        printf("DEBUG:: AppName : %s\n", statement.text(1).constData());
        printf("DEBUG:: PathName: %s\n", statement.text(2).constData());
        printf("DEBUG:: Location: %d\n", statement.number(3));
    }
    puts("DEBUG:: [List END]");
    return statement.result();
}

} // namespace

bool openAppDb() {
    const QByteArray path = toBytes(hostPath(Path::database));
    if (sqlite3_open(path.constData(), &AppDb) != SQLITE_OK) {
        const char* reason = sqlite3_errmsg(AppDb);
        printf("DEBUG:: Can't open Applications database: %s\n", reason);
        fprintf(stderr, "Can't open Applications database: %s\n", reason);
        sqlite3_close(AppDb);
        AppDb = nullptr;
        return false;
    }
    isHeldForLong = false;
    sqlite3_busy_handler(AppDb, waitForOthers, nullptr);
    sqlite3_exec(AppDb, Sql::durable, nullptr, nullptr, nullptr);
    if (isEmptyDatabase())
        createTables();
    sqlite3_exec(AppDb, Sql::indexes, nullptr, nullptr, nullptr);
    puts("Application Database Opened");
    return true;
}

bool openAppDbForReading() {
    const QByteArray path = toBytes(hostPath(Path::database));
    isHeldForLong = false;
    if (sqlite3_open_v2(path.constData(), &AppDb, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK &&
        sqlite3_busy_handler(AppDb, waitForOthers, nullptr) == SQLITE_OK &&
        sqlite3_exec(AppDb, Sql::anyObject, stopAtFirstRow, nullptr, nullptr) == SQLITE_ABORT)
        return true;
    sqlite3_close(AppDb);
    AppDb = nullptr;
    return false;
}

int appDbVersion() {
    int version = 0;
    const auto keep = [](void* place, int, char** values, char**) {
        *static_cast<int*>(place) = values[0] ? atoi(values[0]) : 0;
        return 0;
    };
    if (AppDb)
        sqlite3_exec(AppDb, Sql::version, keep, &version, nullptr);
    return version;
}

bool isAppDbUsable() {
    const int result = AppDb ? sqlite3_exec(AppDb, Sql::anyObject, stopAtFirstRow, nullptr, nullptr)
                             : SQLITE_ERROR;
    return result == SQLITE_OK || result == SQLITE_ABORT;
}

bool closeAppDb() {
    for (sqlite3_stmt* statement : std::exchange(idleStatements, {}))
        sqlite3_finalize(statement);
    if (AppDb && sqlite3_close(AppDb) != SQLITE_OK) {
        puts("DEBUG:: Error while closing Application Database");
        puts("Error while closing Application Database");
        return false;
    }
    AppDb = nullptr;
    puts("Application Database Closed");
    return true;
}

DbReading::DbReading() {
    isReading = isReading ||
                (AppDb && sqlite3_get_autocommit(AppDb) &&
                 sqlite3_exec(AppDb, Sql::beginReading, nullptr, nullptr, nullptr) == SQLITE_OK);
}

DbReading::~DbReading() {
    endReading();
}

void addAppRecord(const QUuid& uuid, const QString& name, const QString& path, int location) {
    Statement statement(Sql::addApp);
    if (statement.isValid())
        statement.bind(uuidText(&uuid))
            .bind(name.toLatin1())
            .bind(toBytes(path))
            .bind(location)
            .step();
}

bool isAppInMenu(const QString& path, const QUuid* uuid) {
    Statement statement(Sql::countInMenu);
    if (!statement.isValid())
        return false;
    const QByteArray bytes = toBytes(path);
    statement.bind(bytes).bind(uuidText(uuid));
    return isCountNonZero(statement, "REGISTERED Count", bytes);
}

bool isAppKnown(const QString& path, const QUuid* uuid) {
    Statement statement(Sql::countKnown);
    if (!statement.isValid())
        return false;
    const QByteArray bytes = toBytes(path);
    statement.bind(bytes).bind(uuidText(uuid));
    return isCountNonZero(statement, "Count", bytes);
}

bool isUuidUsed(const QUuid* uuid) {
    if (!uuid)
        return true;
    Statement statement(Sql::countUuid);
    if (!statement.isValid())
        return false;
    statement.bind(uuidText(uuid));
    return isCountNonZero(statement, "Count", uuidText(uuid));
}

bool findUuidByPath(const QString& path, QString& text) {
    Statement statement(Sql::findUuid);
    if (!statement.isValid() || statement.bind(toBytes(path)).step() != SQLITE_ROW)
        return false;
    text = QString::fromLatin1(statement.text(0));
    return true;
}

void replaceUuid(const QString& path, const QString& old, const QUuid& uuid) {
    Statement statement(Sql::replaceUuid);
    if (statement.isValid())
        statement.bind(uuidText(&uuid)).bind(toBytes(path)).bind(old.toLatin1()).step();
}

bool addAppToMenu(const QString& path, const QUuid* uuid) {
    Statement statement(Sql::addToMenu);
    if (!statement.isValid())
        return false;
    statement.bind(toBytes(path)).bind(uuidText(uuid));
    printf("DEBUG:: Registered App in Path ('%s')\n", toBytes(path).constData());
    return isStepOk(statement);
}

bool removeAppFromMenu(const QUuid* uuid) {
    if (!uuid)
        return false;
    Statement statement(Sql::removeFromMenu);
    return statement.isValid() && isStepOk(statement.bind(uuidText(uuid)));
}

bool updateAppRecord(const QUuid* uuid, const QString& name, const QString& path, int location) {
    Statement statement(Sql::updateApp);
    if (!statement.isValid())
        return false;
    statement.bind(name.toLatin1()).bind(toBytes(path)).bind(location).bind(uuidText(uuid));
    return isStepOk(statement);
}

bool deleteAppRecord(const QUuid* uuid) {
    if (!uuid)
        return false;
    Statement statement(Sql::deleteApp);
    return statement.isValid() && isStepOk(statement.bind(uuidText(uuid)));
}

QList<AppRow> appRows() {
    QList<AppRow> rows;
    Statement statement(Sql::rows);
    while (statement.isValid() && statement.step() == SQLITE_ROW)
        rows.append({statement.id(0), QString::fromLatin1(statement.text(1)),
                     QString::fromLatin1(statement.text(2)), fromBytes(statement.text(3)),
                     statement.number(4)});
    return rows;
}

QList<qint64> strayLinks() {
    QList<qint64> ids;
    Statement statement(Sql::strayLinks);
    while (statement.isValid() && statement.step() == SQLITE_ROW)
        ids.append(statement.id(0));
    return ids;
}

bool removeRow(qint64 id) {
    return changeRow(Sql::removeRow, id);
}

bool removeLinks(qint64 id) {
    return changeRow(Sql::removeLinks, id);
}

bool addLink(qint64 id) {
    return changeRow(Sql::addLink, id);
}

bool setRowUuid(qint64 id, const QUuid& uuid) {
    Statement statement(Sql::setRowUuid);
    return statement.isValid() && isDone(statement.bind(uuidText(&uuid)).bind(id));
}

int printAllApps() {
    return printApps(Sql::allApps, "DEBUG:: List Applications in DataBase");
}

void printMenuApps() {
    printApps(Sql::menuApps, "DEBUG:: List Menu Applications in DataBase");
}
