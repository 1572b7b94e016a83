#pragma once

#include <QString>
#include <QUuid>

struct ZPK_App;

/// The phone's menu files were edited in this run; its menu shows that after its processes have
/// started again.
inline bool menuChanged = false;

/// Which of the files that an edit of the menu needs cannot be written, and why; empty where all
/// can be.
QString menuObstacle();

/// The application manager's files have the application with that `uuid` whole.
bool isInMenuFiles(const QUuid& uuid);

/// Each edits the application manager's files, the database and the record's menu flag together.
/// Always true: what could not be written is left as it was.

/// Puts `app` into the phone's menu, at the end of the program's own folder.
bool registerAppInMenu(ZPK_App& app);

/// Takes `app` out of the phone's menu.
bool unregisterAppFromMenu(ZPK_App& app);

/// Ends what a kill or a power cut has interrupted of the two above: the application stands in the
/// phone's files and in the database, or in neither.
void mendMenu();

/// Brings the menu entry of `app` in line with its record.
bool updateAppInMenu(const ZPK_App& app);
