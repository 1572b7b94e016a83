#include "archive.h"

#include "Bytes.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSet>

namespace {

constexpr int longestWait = 10'000; // ms; an archiver that cannot tell may wait for ever
constexpr qint64 longestListing = 32 * 1024 * 1024;

/// What the archiver prints; none where it fails, hangs or prints more than `limit` bytes.
std::optional<QByteArray> outputOf(const QString& archiver, const QStringList& arguments,
                                   qint64 limit) {
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(archiver, arguments, QProcess::ReadOnly);
    QElapsedTimer waited;
    waited.start();
    QByteArray output;
    while (process.waitForReadyRead(int(qMax<qint64>(0, longestWait - waited.elapsed())))) {
        output += process.readAll();
        if (output.size() > limit)
            break;
    }
    const int rest = int(qMax<qint64>(0, longestWait - waited.elapsed()));
    if (output.size() > limit || !process.waitForFinished(rest)) {
        // It may have ended before it was waited for.
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0 ||
        process.error() == QProcess::FailedToStart || output.size() > limit)
        return std::nullopt;
    return output;
}

void setAttributes(ArchiveEntry& entry, const QByteArray& attributes) {
    // "D drwxr-xr-x": those of DOS, and behind them those of a system that has links.
    const QByteArray mode = attributes.mid(attributes.lastIndexOf(' ') + 1);
    entry.isFolder = attributes.startsWith('D') || mode.startsWith('d');
    entry.isLink = mode.size() > 1 && mode.startsWith('l');
}

bool leadsUp(const QString& name) {
    return name.startsWith('/') || name.split('/').contains(u"..");
}

/// The names of the folders around `name`, outermost first.
QStringList foldersAround(const QString& name) {
    QStringList folders;
    for (qsizetype end = name.indexOf('/'); end >= 0; end = name.indexOf('/', end + 1))
        folders.append(name.left(end));
    return folders;
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
    return climbs <= foldersAround(name).size() - 1 && !steps.mid(climbs).contains(u"..");
}

} // namespace

std::optional<QList<ArchiveEntry>> parseListing(const QByteArray& output) {
    qsizetype start = output.indexOf("\n----------\n");
    if (start < 0)
        return std::nullopt;
    QList<ArchiveEntry> entries;
    for (const QByteArray& line : output.mid(start + 1).split('\n')) {
        const qsizetype equals = line.indexOf(" = ");
        const QByteArray key = line.left(equals);
        const QByteArray value = equals < 0 ? QByteArray() : line.mid(equals + 3);
        if (key == "Path")
            entries.append({.name = fromBytes(value)});
        else if (entries.isEmpty())
            continue;
        else if (key == "Size")
            entries.last().size = qMax<qint64>(0, value.toLongLong());
        else if (key == "Attributes")
            setAttributes(entries.last(), value);
    }
    return entries;
}

std::optional<QList<ArchiveEntry>> listArchive(const QString& archiver, const QString& path) {
    const std::optional<QByteArray> output =
        outputOf(archiver, {"l", "-slt", "-spd", "--", path}, longestListing);
    return output ? parseListing(*output) : std::nullopt;
}

std::optional<QByteArray> readFromArchive(const QString& archiver, const QString& path,
                                          const QStringList& names, qint64 limit) {
    QStringList arguments = {"x", "-so", "-spd"};
    for (const QString& name : names)
        arguments.append("-i!" + name);
    return outputOf(archiver, arguments + QStringList{"--", path}, limit);
}

bool staysInside(const QList<ArchiveEntry>& entries, const QStringList& targets) {
    QSet<QString> links;
    for (const ArchiveEntry& entry : entries) {
        if (entry.isLink && (links.size() >= targets.size() ||
                             !linkStaysInside(entry.name, targets.at(links.size()))))
            return false;
        if (entry.isLink)
            links.insert(entry.name);
    }
    for (const ArchiveEntry& entry : entries) {
        if (entry.name.isEmpty() || leadsUp(entry.name))
            return false;
        for (const QString& folder : foldersAround(entry.name)) {
            if (links.contains(folder))
                return false;
        }
    }
    return true;
}
