#pragma once

#include <QString>

/// The environment variable QUIVER_ROOT names a folder that plays the phone's root folder. Inside a
/// program a path is always the phone's own; these functions translate where the operating system
/// is called. Without the variable (on a phone) both forms are the same.

/// True for a path that a shell command can hold without quotes.
bool isPlainForShell(const QByteArray& path);

/// Checks QUIVER_ROOT, makes it absolute and gives it the "/tmp" that the phone's programs write
/// to. False, with the reason in `error`, where the folder does not exist or its path holds a
/// character that a shell command line would take apart. True when the variable is unset or empty.
bool preparePhoneRoot(QString& error);

/// The machine's path of an absolute phone path; ".." at the phone's root stays there. A relative
/// path comes back unchanged.
QString hostPath(const QString& phonePath);

/// The phone's path of a machine path; a path outside the phone's root comes back unchanged.
QString phonePath(const QString& hostPath);

/// Makes `path`, a phone path or one relative to the current folder, the process's working
/// directory. False when that is not possible.
bool enterFolder(const QString& path);

/// The phone path of the process's working directory.
QString currentFolder();

/// Remembers the process's working directory and goes back to it at the end of its scope, even when
/// the folder was renamed meanwhile.
class FolderGuard {
public:
    FolderGuard();
    ~FolderGuard();
    FolderGuard(const FolderGuard&) = delete;
    FolderGuard& operator=(const FolderGuard&) = delete;

private:
    int m_folder;
    QString m_entered;
};
