#include "Bytes.h"
#include "RegularFile.h"
#include "archiver.h"
#include "browser.h"
#include "checks/findings.h"
#include "commands.h"
#include "newphone.h"
#include "output.h"
#include "settings.h"
#include "shell.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// Packs `folder`; empty, or why that failed.
QString packFolder(const QString& folder, const QString& package) {
    if (!fitsInQuotes(folder) || !fitsInQuotes(package))
        return "a path with a ' in it cannot be packed";
    // Beside the old one first, so that one of the two is there whole.
    const QString unfinished = package + ".new";
    remove(toBytes(unfinished).constData());
    const qsizetype slash = folder.lastIndexOf('/');
    const QString command =
        QString("cd '%1/' && %2 >/dev/null")
            .arg(folder.left(slash), packExactlyCommand(unfinished, folder.mid(slash + 1)));
    if (runSystem(command) == 0 &&
        rename(toBytes(unfinished).constData(), toBytes(package).constData()) == 0)
        return QString();
    remove(toBytes(unfinished).constData());
    return "the archiver could not pack it";
}

} // namespace

int runPack(const Call& call) {
    QString folder = realPath(absolutePath(call.arguments.first()));
    if (!isFolderEntry(folder))
        return misuse(QString("'%1' is not a folder").arg(call.arguments.first()));
    const QString name = folder.mid(folder.lastIndexOf('/') + 1);
    const QString package = absolutePath(call.has("o") ? call.value("o") : name + ".zpk");
    Findings findings;
    checkAppFolder(folder, name, {}, findings);
    for (const Finding& finding : findings)
        fail(finding.subject, QString("%1 [%2]").arg(finding.text, finding.kind));
    if (hasFailed())
        return finish();
    ArchiverPath = qEnvironmentVariableIsEmpty("QUIVER_ARCHIVER")
                       ? machineArchiver()
                       : fromBytes(qgetenv("QUIVER_ARCHIVER"));
    const QString reason = packFolder(folder, package);
    if (reason.isEmpty())
        succeed(name, package);
    else
        fail(name, reason);
    return finish();
}
