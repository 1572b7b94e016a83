// Input: the targets of the links, one a line|the archiver's technical listing.
#include "archive.h"

#include "Bytes.h"
#include "input.h"

#include <QHash>

namespace {

/// Where every link of a package leads, by its place.
using Links = QHash<QStringList, QString>;

QStringList stepsOf(const QString& path) {
    QStringList steps = path.split('/', Qt::SkipEmptyParts);
    steps.removeAll(".");
    return steps;
}

/// Follows `steps` from `place` as the system does, through links, too. False where that leads
/// above the folder that the package is unpacked into.
bool leadsInside(QStringList place, QStringList steps, const Links& links) {
    constexpr int longestWay = 100; // links may lead in a circle
    for (int taken = 0; taken < longestWay && !steps.isEmpty(); ++taken) {
        const QString step = steps.takeFirst();
        if (step == u".." && place.isEmpty())
            return false;
        if (step == u"..") {
            place.removeLast();
            continue;
        }
        place.append(step);
        if (!links.contains(place))
            continue;
        const QString target = links.value(place);
        if (target.startsWith('/'))
            return false;
        place.removeLast();
        steps = stepsOf(target) + steps;
    }
    return true;
}

Links linksOf(const QList<ArchiveEntry>& entries, const QStringList& targets) {
    Links links;
    qsizetype next = 0;
    for (const ArchiveEntry& entry : entries) {
        if (entry.isLink)
            links.insert(stepsOf(entry.name), targets.value(next++));
    }
    return links;
}

void checkEntry(const ArchiveEntry& entry, const Links& links) {
    const QStringList steps = stepsOf(entry.name);
    require(!entry.name.startsWith('/'), "no entry is absolute");
    require(!steps.isEmpty(), "no entry takes the place of the folder");
    require(!steps.contains(u".."), "no entry climbs");
    for (qsizetype depth = 1; depth < steps.size(); ++depth)
        require(!links.contains(steps.first(depth)), "no entry lies below a link");
    require(leadsInside({}, steps, links), "no link leads outside");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QList<QByteArray> input = pieces(data, size, 2);
    const QStringList targets = fromBytes(input[0]).split('\n');
    const std::optional<QList<ArchiveEntry>> entries = parseListing(input[1]);
    if (!entries)
        return 0;
    const qsizetype start = input[1].indexOf("\n----------\n");
    require(entries->size() == input[1].mid(start + 1).count("\nPath = "), "each path is an entry");
    for (const ArchiveEntry& entry : *entries)
        require(entry.size >= 0 && entry.size <= largestSize, "sizes can be added up");
    if (!staysInside(*entries, targets))
        return 0;
    const Links links = linksOf(*entries, targets);
    for (const ArchiveEntry& entry : *entries)
        checkEntry(entry, links);
    return 0;
}
