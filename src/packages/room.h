#pragma once

#include <QString>

#include <optional>

struct PackageInfo;

/// Whether a package fits into a folder of the phone.

/// Bytes that the package needs there at the least: files that it replaces make room first.
qint64 bytesNeeded(const PackageInfo& info, const QString& folder);

/// Bytes that are free for a user where the folder lies; none where it cannot be told.
std::optional<qint64> freeBytes(const QString& folder);

/// True also where it cannot be told.
bool fits(const PackageInfo& info, const QString& folder);

/// True where the storage holds the new version beside the one that it replaces, and where it
/// cannot be told.
bool fitsBeside(const PackageInfo& info, const QString& folder);
