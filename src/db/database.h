#pragma once

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

/// False when SQLite refuses to close.
bool closeAppDb();

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

/// Print a listing on standard output. The first gives SQLite's result of the whole query.
int printAllApps();
void printMenuApps();
