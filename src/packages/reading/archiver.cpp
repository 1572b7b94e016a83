#include "archiver.h"

#include "settings.h"

#include <unistd.h>

namespace {

constexpr qint64 megabyte = 1024 * 1024;

/// `name` so that the archiver takes it neither for an option nor for a list of names.
QString asFileArgument(const QString& name) {
    return name.startsWith('-') || name.startsWith('@') ? "./" + name : name;
}

/// What a command must end with so that the archiver does not take `name` for a pattern, and with
/// it all that matches; empty for most names.
QString literalNameSwitch(const QString& name) {
    return name.contains('*') || name.contains('?') ? " -spd" : "";
}

} // namespace

QString unpackCommand(const QString& package, const QString& folder) {
    const QString command = QString("%2 x -y '%3'").arg(ArchiverPath, asFileArgument(package));
    return command + (folder.isEmpty() ? QString() : " -o" + folder) + literalNameSwitch(package);
}

QString testCommand(const QString& package) {
    return QString("%2 t -y '%3'").arg(ArchiverPath, asFileArgument(package)) +
           literalNameSwitch(package);
}

QString packCommand(const QString& package, const QString& name) {
    return QString("%1 a -y '%2' '%3'").arg(ArchiverPath, package, asFileArgument(name)) +
           literalNameSwitch(name);
}

qint64 machineMemory() {
    return qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGE_SIZE);
}

QString smallMemorySwitch(qint64 bytes, qint64 memory) {
    // Measured: what it packs at a time takes the archiver twelve times the room, and that is all
    // of the files, or 32 MB of them. The other half of the memory is for the rest of the phone.
    const qint64 most = memory / 2 / 12;
    if (most <= 0 || qMin(bytes, 32 * megabyte) <= most)
        return QString();
    int dictionary = 1; // MB
    while (2 * dictionary * megabyte <= most)
        dictionary *= 2;
    return QString(" -md%1m").arg(dictionary);
}

QString packExactlyCommand(const QString& package, const QString& name) {
    return packCommand(package, name) + " -t7z -mmt=off -mtm=off";
}
