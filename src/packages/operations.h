#pragma once

#include <QString>

struct ZPK_App;

/// What can be done to an installed application. Each shows its failure itself; with
/// `quietOnSuccess` it shows nothing else.

/// Says so and is true where the folder of `app` is not there: the card was pulled, or somebody
/// else deleted it. Then nothing may change that counts on the folder.
bool refuseWithoutFolder(const ZPK_App& app);

/// Moves `app` to the other storage location, and brings its record, the database and the phone's
/// menu in line. False, with nothing changed, where that fails or the target folder exists already.
bool moveApp(ZPK_App& app, bool quietOnSuccess);

/// Packs `app` into the package FOLDERNAME.zpk in `folder` (of the machine), in place of an older
/// one. False where that fails or is cancelled.
bool saveApp(const ZPK_App& app, const QString& folder, bool quietOnSuccess);

/// Deletes the folder of `app`, its menu entry, its row in the database, and the record itself,
/// which is gone from `AppMap` afterwards. False, with nothing changed, where the folder cannot be
/// deleted.
bool deleteApp(ZPK_App& app, bool quietOnSuccess);

/// Gives `app` another display name: in the record, the database and the phone's menu as it is, in
/// the descriptor without the blanks around it. The folder keeps its name. False, with nothing
/// changed, where the folder is not there; false also where the descriptor cannot be written.
bool renameApp(ZPK_App& app, const QString& name);
