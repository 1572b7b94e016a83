#pragma once

#include <QList>
#include <QString>
#include <QUuid>

struct sqlite3;

/// The applications that the program has found, and those of them that stand in the phone's menu,
/// in one SQLite file. The connection is opened at start-up and kept for the whole run. Without a
/// usable database every operation gives its failure value.
///
/// Paths are bound with their exact bytes, names in Latin-1. Where a UUID may be none, none is
/// bound as the empty text.

inline sqlite3* AppDb = nullptr;

/// Opens the database and makes its tables where it holds nothing yet. False when it cannot be
/// opened.
bool openAppDb();

/// Opens the database without ever writing to it. False where there is none, or none that can be
/// read.
bool openAppDbForReading();

/// The database is open, and it is one.
bool isAppDbUsable();

/// Changes whenever another program has changed the database.
int appDbVersion();

/// False when SQLite refuses to close.
bool closeAppDb();

/// While it lives the database is locked for what is read from it once, not by every operation. The
/// first change ends that, so that two programs that read and then write do not block each other.
class DbReading {
public:
    DbReading();
    ~DbReading();
    Q_DISABLE_COPY_MOVE(DbReading)
};

void addAppRecord(const QUuid& uuid, const QString& name, const QString& path, int location);

/// An application at `path` or with that `uuid` stands in the phone's menu.
bool isAppInMenu(const QString& path, const QUuid* uuid);

/// An application at `path` or with that `uuid` is in the database.
bool isAppKnown(const QString& path, const QUuid* uuid);

/// True also for none.
bool isUuidUsed(const QUuid* uuid);

/// The stored text of the UUID of the application at `path`; false when there is none.
bool findUuidByPath(const QString& path, QString& text);

/// Gives the row of `path` that has the text `old` in the place of an identifier, which may be none
/// at all, the identifier `uuid`.
void replaceUuid(const QString& path, const QString& old, const QUuid& uuid);

/// The next four report SQLite's "done" as false, so their result tells nothing about success:
/// callers go on in either case.
bool addAppToMenu(const QString& path, const QUuid* uuid);
bool removeAppFromMenu(const QUuid* uuid);
bool updateAppRecord(const QUuid* uuid, const QString& name, const QString& path, int location);
bool deleteAppRecord(const QUuid* uuid);

/// A row as it is stored, whatever that is.
struct AppRow {
    qint64 id;
    QString uuid; ///< read as Latin-1; empty for none
    QString name; ///< read as Latin-1
    QString path; ///< of the phone
    int links;    ///< how often the application stands in the phone's menu
};

/// All rows, in the order in which they were entered.
QList<AppRow> appRows();

/// The ids that the phone's menu has links for and no row stands for.
QList<qint64> strayLinks();

/// Each gives false where the database refuses: it removes a row, removes its links, or all with
/// that id where there is no row, adds a link, or gives the row another identifier.
bool removeRow(qint64 id);
bool removeLinks(qint64 id);
bool addLink(qint64 id);
bool setRowUuid(qint64 id, const QUuid& uuid);

/// Print a listing on standard output. The first gives SQLite's result of the whole query.
int printAllApps();
void printMenuApps();
