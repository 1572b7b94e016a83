#pragma once

#include <QString>

/// The archiver of this machine, a path; empty where it has none.
QString machineArchiver();

/// Makes those folders that are missing of a memory card's in the phone at `root`, with modes that
/// an ordinary user can work with. False where one cannot be made.
bool makeCardFolders(const QString& root);

/// Makes the folder `root` (of the machine), which may be there and empty, the root of a phone: its
/// folders and its system's files, with a memory card in it where `hasCard` is true. It is whole or
/// not there at all. False, with the reason in `error`, where it cannot be made.
bool makePhone(const QString& root, bool hasCard, const QString& language, QString& error);
