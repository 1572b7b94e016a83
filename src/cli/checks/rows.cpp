#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "discovery.h"
#include "findings.h"
#include "paths.h"

#include <QSet>

#include <cstdio>

namespace {

void renewDatabase() {
    closeAppDb();
    const QByteArray path = toBytes(hostPath(Path::database));
    rename(path.constData(), (path + ".damaged").constData());
    openAppDb();
}

void checkUuid(const AppRow& row, QSet<QUuid>& known, Findings& findings) {
    const QUuid uuid = QUuid::fromString(row.uuid);
    const bool isTaken = !uuid.isNull() && known.contains(uuid);
    known.insert(uuid);
    if (!isTaken && !uuid.isNull() && uuid.toString() == row.uuid)
        return;
    const QString text = isTaken ? "another application has its identifier %1"
                                 : "its identifier '%1' cannot be used";
    findings.append({"unusable-identifier", row.path, text.arg(row.uuid), "give it another one",
                     [=] { setRowUuid(row.id, isTaken || uuid.isNull() ? unusedUuid() : uuid); }});
}

void checkPath(const AppRow& row, const QList<AppRow>& rows, Findings& findings) {
    if (!isThere(row.path) && !isOnAbsentCard(row.path))
        findings.append({"row-without-folder", row.path.isEmpty() ? row.name : row.path,
                         "the database has an application whose folder is not there",
                         "remove it from the database and the phone's menu",
                         [=] { forget(row.path, rows); }});
}

/// The ids of those rows that are meant: of several for one path, that which stands in the menu or
/// else the first one.
QHash<QString, qint64> meantRows(const QList<AppRow>& rows) {
    QHash<QString, qint64> meant;
    QSet<QString> linked;
    for (const AppRow& row : rows) {
        const bool isBetter = row.links > 0 && !linked.contains(row.path);
        if (isBetter || !meant.contains(row.path))
            meant.insert(row.path, row.id);
        if (row.links > 0)
            linked.insert(row.path);
    }
    return meant;
}

} // namespace

void checkRows(const PhoneState& state, Findings& findings) {
    if (!isAppDbUsable() && exists(hostPath(Path::database))) {
        findings.append({"database-unreadable", Path::database, "the database cannot be read",
                         "put it aside and begin another one", renewDatabase});
        return;
    }
    QSet<QUuid> known;
    const QHash<QString, qint64> meant = meantRows(state.rows);
    for (const AppRow& row : state.rows) {
        if (meant.value(row.path) != row.id) {
            findings.append({"doubled-row", row.path, "the database has it twice",
                             "remove the one that counts for nothing", [id = row.id] {
                                 removeLinks(id);
                                 removeRow(id);
                             }});
            continue;
        }
        checkPath(row, state.rows, findings);
        checkUuid(row, known, findings);
        if (row.links > 1)
            findings.append({"doubled-link", row.path,
                             "the database has it in the phone's menu more than once",
                             "leave one of them", [id = row.id] {
                                 removeLinks(id);
                                 addLink(id);
                             }});
    }
    for (const qint64 id : strayLinks())
        findings.append(
            {"link-without-row", QString::number(id),
             "the database has an application in the phone's menu that it does not know",
             "remove the link", [id] { removeLinks(id); }});
}
