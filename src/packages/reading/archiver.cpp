#include "archiver.h"

#include "settings.h"

namespace {

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

QString packExactlyCommand(const QString& package, const QString& name) {
    return packCommand(package, name) + " -t7z -mmt=off -mtm=off";
}
