#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

/// In bytes; more than any storage holds, and still to be added to.
constexpr qint64 largestSize = qint64(1) << 60;

/// One entry of a package, as the archiver lists it.
struct ArchiveEntry {
    QString name;    ///< with the folders that it lies in, '/' between them
    qint64 size = 0; ///< in bytes, unpacked, at most `largestSize`; of a link, its target's length
    bool isFolder = false;
    bool isLink = false;
    QString twin{}; ///< the entry that it is another name of (a hard link); empty for most

    bool operator==(const ArchiveEntry&) const = default;
};

/// What a package holds, as far as the archiver got.
struct ArchiveListing {
    QList<ArchiveEntry> entries;
    bool isWhole = true; ///< false where the listing was too long to be read to its end
};

/// The entries in the archiver's technical listing; none where `output` is no such listing.
std::optional<QList<ArchiveEntry>> parseListing(const QByteArray& output);

/// The listing of the package at `path` (of the machine), also of one that is damaged behind its
/// listing; none where `archiver` cannot tell. Both functions that start the archiver block, write
/// nothing and may run on any thread.
std::optional<ArchiveListing> listArchive(const QString& archiver, const QString& path);

/// What the entries `names` of the package hold, in the package's order; none where the archiver
/// fails or where that is more than `limit` bytes.
std::optional<QByteArray> readFromArchive(const QString& archiver, const QString& path,
                                          const QStringList& names, qint64 limit);

/// The folders that entries lie in, each the innermost one of its entry, and those that are entries
/// themselves.
QSet<QString> foldersOf(const QList<ArchiveEntry>& entries);

/// True when nothing of the package can come to lie, or lead, outside the folder that it is
/// unpacked into. `targets` are those of the links among the entries, in their order.
bool staysInside(const QList<ArchiveEntry>& entries, const QStringList& targets);
