#include "operations.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "Waiting.h"
#include "archiver.h"
#include "database.h"
#include "descriptor.h"
#include "discovery.h"
#include "foldersize.h"
#include "language.h"
#include "menu.h"
#include "settings.h"
#include "shell.h"
#include "storage.h"
#include "upgrade.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace {

QString folderName(const ZPK_App& app) {
    return app.path.mid(app.path.lastIndexOf('/') + 1);
}

/// What was moved has lost something, as it only does when all has been copied, and the copy has
/// all that there was `before`. A source on a card that was pulled may only seem to have lost
/// something: then the copy's bytes have to tell, too.
bool isCopyWhole(const QString& from, const QString& to, const FolderContents& before) {
    const FolderContents left = contentsOf(from);
    const FolderContents copy = contentsOf(to);
    return left.entries < before.entries && copy.entries >= before.entries &&
           (left.isRead || copy.bytes >= before.bytes);
}

QString parentOf(const QString& path) {
    return path.left(path.lastIndexOf('/'));
}

/// The copy first: what a power cut leaves is then the source, or both, of which the marks tell the
/// next start, or the copy. Only a copy that is written lets the source go; false where it is not.
bool letSourceGo(const QString& from, const QString& to, KeptFolder& source) {
    const bool isWritten = runBeside([&] { return writeBack(to) ? 1 : 0; }) == 1;
    if (!isWritten || !exists(to)) {
        source.giveBack();
        return false;
    }
    source.release();
    runBeside([&] { return writeBack(parentOf(from)) ? 1 : 0; });
    return true;
}

Outcome settleMove(const QString& from, const QString& to, KeptFolder& source) {
    return letSourceGo(from, to, source) ? Outcome::Done : notWritten();
}

/// Ends a move that was cancelled on the way: the copy goes as long as the source is the whole one.
Outcome endMove(const QString& from, const QString& to, const FolderContents& before,
                KeptFolder& source) {
    if (!isCopyWhole(from, to, before)) {
        runSystem(QString("rm -rf '%1'").arg(to));
        return Outcome::Cancelled;
    }
    const Outcome outcome = settleMove(from, to, source);
    if (outcome == Outcome::Done)
        runSystem(QString("rm -rf '%1'").arg(from));
    return outcome;
}

/// Of a command that has succeeded and changed what lies at `path`.
Outcome writtenOutcome(const QString& path) {
    return runBeside([&] { return writeBack(path) ? 1 : 0; }) == 1 ? Outcome::Done : notWritten();
}

/// Moves the folder; true when the application lies at `to` afterwards. What a failed move has left
/// there is taken away, unless it is the whole one: half an application must not turn up beside the
/// real one.
bool moveFolder(const QString& from, const QString& to, bool quietOnSuccess) {
    if (exists(to)) {
        showError(tr("POP_ERROR_EXISTS_TEXT"));
        return false;
    }
    const FolderContents before = contentsOf(from);
    const CopyMark mark(to);
    KeptFolder source(from);
    WorkCancel cancel(WorkCancel::AtOnce);
    const bool done = runPathCommand(
        from, QString("mv '%1' '%2/'").arg(from, to), quietOnSuccess, [&](int waitStatus) {
            const bool isCancelled = cancel.end();
            if (waitStatus == 0)
                return settleMove(from, to, source);
            return isCancelled ? endMove(from, to, before, source) : outcomeOf(waitStatus);
        });
    // A command that a signal ended counts as a success, so the folder itself has to tell.
    if (done && !exists(from))
        return true;
    if (!fitsInQuotes(from) || !exists(to))
        return false;
    if (isCopyWhole(from, to, before))
        return letSourceGo(from, to, source);
    runSystem(QString("rm -rf '%1'").arg(to));
    return false;
}

/// Forgets the application that the database has at `path`. Nothing lay there before a move, so
/// that one was deleted by hand, or moved by a program that was killed before it could say so; the
/// newcomer would be taken for it.
void forgetAppAt(const QString& path) {
    QString text;
    if (!findUuidByPath(path, text))
        return;
    ZPK_App gone;
    gone.path = path;
    gone.uuid = std::make_unique<QUuid>(QUuid::fromString(text));
    if (isAppInMenu(path, nullptr))
        unregisterAppFromMenu(gone);
    deleteAppRecord(gone.uuid.get());
}

bool writeDescriptorName(const ZPK_App& app) {
    const QString path = hostPath(QString("%1/%2.cfg").arg(app.path, folderName(app)));
    const std::optional<QByteArray> text = readWholeFile(path);
    if (!text)
        return false;
    const QByteArray name = toBytes(app.name.trimmed());
    errno = 0;
    if (replaceFile(path, replaceKeyLine(*text, "Name", name)))
        return true;
    const int reason = errno == 0 ? EACCES : errno;
    printf("DEBUG:: Error writing cfg file (%s)\n", toBytes(phonePath(path)).constData());
    showError(phonePath(path) + ": " + QString::fromLocal8Bit(strerror(reason)));
    return false;
}

} // namespace

bool refuseWithoutFolder(const ZPK_App& app) {
    if (exists(hostPath(app.path)))
        return false;
    showError(app.path + ": " + QString::fromLocal8Bit(strerror(errno)));
    return true;
}

bool moveApp(ZPK_App& app, bool quietOnSuccess) {
    const int target = app.location == memoryCard ? phoneMemory : memoryCard;
    const QString path = appsFolder(target) + '/' + folderName(app);
    if (!moveFolder(hostPath(app.path), hostPath(path), quietOnSuccess)) {
        puts("DEBUG:: Error while moving ZPK");
        return false;
    }
    puts("DEBUG:: ZPK Moved succesfully");
    forgetAppAt(path);
    app.location = target;
    app.path = path;
    updateAppRecord(app.uuid.get(), app.name, app.path, app.location);
    if (app.registeredInMenu)
        updateAppInMenu(app);
    return true;
}

bool saveApp(const ZPK_App& app, const QString& folder, bool quietOnSuccess) {
    const QString name = folderName(app);
    const QString enter = QString("cd '%1';").arg(hostPath(appsFolder(app.location)));
    const QString older = folder + '/' + name + ".zpk";
    // Without its folder the archiver would leave an empty package, or pack what has the same name
    // in the working directory.
    if (folder.isEmpty() || refuseWithoutFolder(app))
        return false;
    if (fitsInQuotes(older))
        runSystem(QString("rm -f '%1'").arg(older));
    const qint64 bytes = contentsOf(hostPath(app.path)).bytes;
    const WorkGoal goal(WorkGoal::Reads, bytes);
    const QString pack = packCommand(older, name) + smallMemorySwitch(bytes, machineMemory());
    const QString unfinished = older + ".tmp";
    const bool isOurs = !exists(unfinished);
    WorkCancel cancel(WorkCancel::AtOnce);
    return runPathCommand(older, enter + ' ' + pack, quietOnSuccess, [&](int waitStatus) {
        const bool isCancelled = cancel.end();
        if (waitStatus == 0)
            return writtenOutcome(older);
        if (!isCancelled)
            return outcomeOf(waitStatus);
        remove(toBytes(older).constData());
        if (isOurs)
            remove(toBytes(unfinished).constData());
        return Outcome::Cancelled;
    });
}

bool deleteApp(ZPK_App& app, bool quietOnSuccess) {
    if (refuseWithoutFolder(app))
        return false;
    const QString path = hostPath(app.path);
    const bool done =
        runPathCommand(path, QString("rm -rf '%1'").arg(path), quietOnSuccess, [&](int waitStatus) {
            return waitStatus == 0 ? writtenOutcome(parentOf(path)) : outcomeOf(waitStatus);
        });
    if (!done || exists(path)) {
        puts("DEBUG:: Error while deleting ZPK");
        return false;
    }
    if (app.registeredInMenu)
        unregisterAppFromMenu(app);
    deleteAppRecord(app.uuid.get());
    // A moved or renamed application still stands under its old key, so the record itself is looked
    // for.
    std::erase_if(AppMap, [&](const auto& entry) { return entry.second.get() == &app; });
    puts("DEBUG:: ZPK Deleted succesfully");
    return true;
}

bool renameApp(ZPK_App& app, const QString& name) {
    if (refuseWithoutFolder(app))
        return false;
    app.name = name;
    const bool isWritten = writeDescriptorName(app);
    updateAppRecord(app.uuid.get(), app.name, app.path, app.location);
    if (app.registeredInMenu)
        updateAppInMenu(app);
    printf("DEBUG:: Rename APP to %s\n", toBytes(name).constData());
    return isWritten;
}
