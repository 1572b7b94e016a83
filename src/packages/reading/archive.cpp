#include "archive.h"

#include "Bytes.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <climits>

namespace {

constexpr int longestWait = 10'000; // ms; an archiver that cannot tell may wait for ever
constexpr qint64 longestListing = 32 * 1024 * 1024;

struct Output {
    QByteArray text;
    bool isWhole;   ///< false where the archiver hung or printed more than was allowed
    bool isSuccess; ///< it ended by itself, with status 0
};

/// Waits until the archiver prints or ends, so long as there is time and the program is not about
/// to end, which waits for its readers.
bool waitForOutput(QProcess& process, const QElapsedTimer& waited) {
    constexpr int step = 50; // ms
    while (waited.elapsed() < longestWait && !QCoreApplication::closingDown()) {
        if (process.waitForReadyRead(step))
            return true;
        if (process.state() == QProcess::NotRunning)
            return false;
    }
    return false;
}

/// What the archiver prints, little more than `limit` bytes of it.
Output outputOf(const QString& archiver, const QStringList& arguments, qint64 limit) {
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(archiver, arguments, QProcess::ReadOnly);
    QElapsedTimer waited;
    waited.start();
    QByteArray output;
    while (waitForOutput(process, waited)) {
        output += process.readAll();
        if (output.size() > limit)
            break;
    }
    const bool isWhole = output.size() <= limit && process.state() == QProcess::NotRunning;
    if (!isWhole) {
        process.kill();
        process.waitForFinished();
    }
    output += process.readAll();
    const bool isSuccess = isWhole && process.error() != QProcess::FailedToStart &&
                           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return {output, isWhole, isSuccess};
}

/// `name` without the parts that mean nothing in a path: the archiver leaves them out, too, when it
/// unpacks.
QString plainName(const QString& name) {
    QStringList parts = name.split('/', Qt::SkipEmptyParts);
    parts.removeAll(".");
    return (name.startsWith('/') ? "/" : "") + parts.join('/');
}

/// A line of the listing. Not every kind of archive has every key, and some have two that tell the
/// same.
void setProperty(ArchiveEntry& entry, const QByteArray& key, const QByteArray& value) {
    if (key == "Size") {
        entry.size = qint64(qMin(value.toULongLong(), qulonglong(largestSize)));
    } else if (key == "Attributes" || key == "Mode") {
        // "D drwxr-xr-x": those of DOS, and behind them those of a system that has links.
        const QByteArray mode = value.mid(value.lastIndexOf(' ') + 1);
        entry.isFolder |= value.startsWith('D') || mode.startsWith('d');
        entry.isLink |= mode.size() > 1 && mode.startsWith('l');
    } else if (key == "Folder") {
        entry.isFolder |= value == "+";
    } else if (key == "Symbolic Link") {
        entry.isLink |= !value.isEmpty();
    } else if (key == "Hard Link") {
        entry.twin = plainName(fromBytes(value));
    }
}

bool leadsUp(const QString& name) {
    return name.startsWith('/') || name.split('/').contains(u"..");
}

/// A link may climb within its outermost folder, and only before it goes down: what it goes down
/// through may be a link itself.
bool linkStaysInside(const QString& name, const QString& target) {
    if (target.isEmpty() || target.startsWith('/'))
        return false;
    const QStringList steps = target.split('/', Qt::SkipEmptyParts);
    qsizetype climbs = 0;
    while (climbs < steps.size() && steps.at(climbs) == u"..")
        ++climbs;
    return climbs < name.count('/') && !steps.mid(climbs).contains(u"..");
}

/// True where `name`, or what lies below it, is among the sorted `names`.
bool isTaken(const QStringList& names, const QString& name) {
    const QString below = name + '/';
    const auto next = std::lower_bound(names.begin(), names.end(), below);
    return (next != names.end() && next->startsWith(below)) ||
           std::binary_search(names.begin(), names.end(), name);
}

} // namespace

std::optional<QList<ArchiveEntry>> parseListing(const QByteArray& output) {
    const qsizetype start = output.indexOf("\n----------\n");
    if (start < 0)
        return std::nullopt;
    QList<ArchiveEntry> entries;
    for (qsizetype begin = start + 1, end = begin; end >= 0; begin = end + 1) {
        end = output.indexOf('\n', begin);
        const QByteArray line = output.mid(begin, end < 0 ? -1 : end - begin);
        const qsizetype equals = line.indexOf(" = ");
        if (equals < 0)
            continue;
        const QByteArray key = line.left(equals);
        const QByteArray value = line.mid(equals + 3);
        if (key == "Path") // a longer one can lie nowhere
            entries.emplaceBack().name =
                value.size() < PATH_MAX ? plainName(fromBytes(value)) : QString();
        else if (!entries.isEmpty())
            setProperty(entries.last(), key, value);
    }
    return entries;
}

std::optional<ArchiveListing> listArchive(const QString& archiver, const QString& path) {
    const Output output = outputOf(archiver, {"l", "-slt", "-spd", "--", path}, longestListing);
    const std::optional<QList<ArchiveEntry>> entries = parseListing(output.text);
    // What is listed is what will be unpacked, even if the archiver is not content with the rest.
    if (!entries || (!output.isSuccess && entries->isEmpty()))
        return std::nullopt;
    return ArchiveListing{*entries, output.isWhole};
}

std::optional<QByteArray> readFromArchive(const QString& archiver, const QString& path,
                                          const QStringList& names, qint64 limit) {
    QStringList arguments = {"x", "-so", "-spd"};
    for (const QString& name : names)
        arguments.append("-i!" + name);
    const Output output = outputOf(archiver, arguments + QStringList{"--", path}, limit);
    return output.isSuccess ? std::optional(output.text) : std::nullopt;
}

QSet<QString> foldersOf(const QList<ArchiveEntry>& entries) {
    QSet<QString> folders;
    for (const ArchiveEntry& entry : entries) {
        if (entry.name.contains('/'))
            folders.insert(entry.name.left(entry.name.lastIndexOf('/')));
        if (entry.isFolder)
            folders.insert(entry.name);
    }
    return folders;
}

bool staysInside(const QList<ArchiveEntry>& entries, const QStringList& targets) {
    QStringList links;
    QSet<QString> files;
    qsizetype read = 0;
    for (const ArchiveEntry& entry : entries) {
        if (entry.name.isEmpty() || leadsUp(entry.name))
            return false;
        if (entry.isLink &&
            (read == targets.size() || !linkStaysInside(entry.name, targets.at(read++))))
            return false;
        // A link that had another name as well could lie where it leads elsewhere.
        if (!entry.twin.isEmpty() && !files.contains(entry.twin))
            return false;
        if (entry.isLink)
            links.append(entry.name.toCaseFolded());
        else if (!entry.isFolder)
            files.insert(entry.name);
    }
    QStringList names;
    for (const QString& name : foldersOf(entries) + files)
        names.append(name.toCaseFolded()); // a memory card takes "A" and "a" for the same
    names.sort();
    return std::none_of(links.begin(), links.end(),
                        [&names](const QString& link) { return isTaken(names, link); });
}
