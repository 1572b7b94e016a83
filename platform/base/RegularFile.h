#pragma once

#include <QByteArray>
#include <QString>

/// Opens the regular file at `path` (of the machine) for reading: its file descriptor, which the
/// caller closes, or -1. A pipe or a device in its place is not waited for.
int openRegularFile(const QString& path);

/// Reads the whole file at `path` into `content`. False where it is not a regular file, cannot be
/// read to its end, or is larger than `limit` bytes.
bool readRegularFile(const QString& path, qint64 limit, QByteArray& content);

/// Puts `content` into the file at `path` (of the machine), which keeps its owner and mode:
/// afterwards either the old content or the new one is there, whole. False where it cannot be
/// written.
bool replaceFile(const QString& path, const QByteArray& content);
