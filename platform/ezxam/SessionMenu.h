#pragma once

#include <QString>

/// A folder of the phone's menu that is shown in the menu of the session, too, where a desktop or a
/// handheld plays the phone. All paths are those of the machine.
struct SessionMenu {
    QString root;   ///< of the phone
    QString folder; ///< the group in UserMenuTree whose items are shown
    QString target; ///< where the session has the desktop entries of its user
    QString owner;  ///< begins the names of the entries, and is in the mark that they bear
    QString icon;   ///< for what has none of its own; a name or a path
};

/// The session can start `exec` in `folder`, as an entry would have it, now: `exec` names one
/// program there, without arguments.
bool canStandInSession(const QString& folder, const QString& exec);

/// Makes one desktop entry for each application in the folder, by the application manager's files
/// alone, and removes those of applications that are no longer in it. What is not written by it is
/// never touched. An application whose program cannot be named in an entry (one outside of its own
/// folder, or a path that is not UTF-8) is left out. False where something could not be written.
bool syncSessionMenu(const SessionMenu& menu);
