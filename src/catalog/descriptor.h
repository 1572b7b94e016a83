#pragma once

#include "ZPK_App.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

/// Bytes of UTF-8 that a value of a descriptor may have.
constexpr qsizetype longestValue = 127;

/// An application's descriptor is the file in its folder that is named as the folder, with the
/// extension ".cfg": lines "Key = value" in UTF-8. Other lines mean nothing; the first line of a
/// key counts.

/// The whole file at `path` (of the machine); none when it cannot be opened, is not a regular file
/// or is too large to be what the program reads (16 MiB).
std::optional<QByteArray> readWholeFile(const QString& path);

/// What follows `prefix` in the first line of `text` that begins with it, at most 127 bytes and
/// whole characters; empty when there is no such line.
QByteArray findValue(const QByteArray& text, const QByteArray& prefix);

/// `text` with every line that begins with `key` replaced by "key = value". Empty lines are left
/// out; nothing is added when no line matches.
QByteArray replaceKeyLine(const QByteArray& text, const QByteArray& key, const QByteArray& value);

/// The application that a descriptor's `text` describes, without its folder.
std::unique_ptr<ZPK_App> parseDescriptor(const QByteArray& text);

/// The application in the sub-folder `folderName` of the working directory; null when there is no
/// readable descriptor. Location, identifier and menu flag are left to the caller.
std::unique_ptr<ZPK_App> readDescriptor(const QString& folderName);

/// As `readDescriptor`, for whoever knows the working directory: `parent`, a path of the phone.
std::unique_ptr<ZPK_App> readDescriptor(const QString& parent, const QString& folderName);
