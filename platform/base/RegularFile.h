#pragma once

#include <QByteArray>
#include <QString>

/// Opens the regular file at `path` (of the machine) for reading: its file descriptor, which the
/// caller closes, or -1. A pipe or a device in its place is not waited for.
int openRegularFile(const QString& path);

enum class Reading {
    Whole,
    Partial,   ///< what came before an error
    TooLarge,  ///< nothing was read
    Unreadable ///< not a regular file, or not to be opened; `errno` tells, ENOENT where none is
               ///< there
};

constexpr qint64 anySize = qint64(1) << 62;

/// Reads the regular file at `path` into `content`, where it is not larger than `limit` bytes.
Reading readRegularFile(const QString& path, qint64 limit, QByteArray& content);

/// Changes whenever the file at `path` does; empty where there is none.
QByteArray fileState(const QString& path);

/// True where something is at `path`, also behind links.
bool exists(const QString& path);

/// `path` without links; as it is where it leads nowhere.
QString realPath(const QString& path);

/// The process's working directory, a path of the machine; empty where it is none any more.
QString workingDirectory();

/// `path` as seen from the working directory.
QString absolutePath(const QString& path);

/// Waits until what came into the folder at `path`, went from it or got another name there outlives
/// a power cut.
void syncFolder(const QByteArray& path);

/// Puts `content` into the file at `path` (of the machine), which keeps its owner and mode:
/// afterwards either the old content or the new one is there, whole. False where it cannot be
/// written.
bool replaceFile(const QString& path, const QByteArray& content);
