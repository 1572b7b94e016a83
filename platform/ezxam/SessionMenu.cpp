#include "SessionMenu.h"

#include "AM_AppObject.h"
#include "AM_Files.h"
#include "Bytes.h"
#include "RegularFile.h"
#include "ZConfig.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cerrno>

#include <unistd.h>

namespace {

const QString suffix = ".desktop";
constexpr qint64 largestEntry = 1 << 16;

/// As a value of the file's format: what is not to be seen on one line is a blank.
QString escaped(const QString& text) {
    QString value;
    for (const QChar c : text.trimmed())
        value +=
            c == '\\' ? QString("\\\\") : QString(c.category() == QChar::Other_Control ? ' ' : c);
    return value;
}

/// One argument of a command, whatever is in it: neither the quotes nor the fields of a command
/// line end it. It stands in a value of the file, so that its backslashes are escaped once more.
QString asArgument(const QString& path) {
    QString argument;
    for (const QChar c : path) {
        if (QStringLiteral("\"`$\\").contains(c))
            argument += '\\';
        argument += c == '%' ? QString("%%") : QString(c);
    }
    return '"' + escaped(argument) + '"';
}

/// Every program that reads the entry has to find the same file by it: the format has no place for
/// other bytes than those of UTF-8 without controls, and none for "=" in a program.
bool canBeNamed(const QString& path) {
    const QByteArray bytes = toBytes(path);
    return QString::fromUtf8(bytes).toUtf8() == bytes &&
           std::none_of(path.begin(), path.end(),
                        [](QChar c) { return c.category() == QChar::Other_Control || c == '='; });
}

bool staysInside(const QString& exec) {
    return !exec.isEmpty() && !exec.startsWith('/') && !exec.split('/').contains("..");
}

/// As one file, whatever else may be wrong with it.
bool namesProgram(const QString& folder, const QString& exec) {
    return staysInside(exec) && canBeNamed(folder + '/' + exec);
}

QString markOf(const SessionMenu& menu) {
    return QString("X-%1-Phone=").arg(menu.owner);
}

QByteArray entryOf(const SessionMenu& menu, const AM_AppObject& app) {
    const QString folder = menu.root + app.directory();
    const QString program = folder + '/' + app.exec();
    if (!app.directory().startsWith('/') || !namesProgram(folder, app.exec()))
        return QByteArray();
    const QString picture = menu.root + app.icon();
    const bool hasPicture = canBeNamed(picture) && QFileInfo(picture).isFile();
    const QString name = escaped(app.name());
    return QString("[Desktop Entry]\nType=Application\nName=%1\nIcon=%2\nExec=%3\nTryExec=%4\n"
                   "Path=%5\nCategories=Utility;\nTerminal=false\n%6%7\n")
        .arg(name.isEmpty() ? escaped(app.exec()) : name, escaped(hasPicture ? picture : menu.icon),
             asArgument(program), escaped(program), escaped(folder), markOf(menu),
             escaped(menu.root))
        .toUtf8();
}

/// Of what bears the mark, and of what is not there yet.
bool isOurs(const SessionMenu& menu, const QString& path) {
    QByteArray content;
    const Reading reading = readRegularFile(path, largestEntry, content);
    if (reading != Reading::Whole)
        return reading == Reading::Unreadable && errno == ENOENT;
    return content.contains('\n' + markOf(menu).toUtf8() + escaped(menu.root).toUtf8() + '\n');
}

bool writeEntry(const SessionMenu& menu, const QString& name, const QByteArray& entry) {
    const QString path = menu.target + '/' + name;
    QByteArray old;
    if (readRegularFile(path, largestEntry, old) == Reading::Whole && old == entry)
        return true;
    return !isOurs(menu, path) || replaceFile(path, entry);
}

bool removeOthers(const SessionMenu& menu, const QSet<QString>& kept) {
    bool isDone = true;
    const QStringList names =
        QDir(menu.target).entryList({menu.owner + "-*" + suffix}, QDir::Files);
    for (const QString& name : names) {
        const QString path = menu.target + '/' + name;
        if (!kept.contains(name) && isOurs(menu, path))
            isDone = unlink(toBytes(path).constData()) == 0 && isDone;
    }
    return isDone;
}

} // namespace

bool canStandInSession(const QString& folder, const QString& exec) {
    const QFileInfo program(folder + '/' + exec);
    return namesProgram(folder, exec) && program.isFile() && program.isExecutable();
}

bool syncSessionMenu(const SessionMenu& menu) {
    const ZConfig tree(menu.root + userMenuTreeFile, true);
    const ZConfig installed(menu.root + installedDbFile, true);
    QSet<QString> kept;
    bool isDone = true;
    for (const QString& item :
         tree.readEntry(menu.folder, "Items", QString()).split(';', Qt::SkipEmptyParts)) {
        const QUuid uuid(item);
        const QString group = uuid.toString(QUuid::WithoutBraces);
        if (uuid.isNull() || !installed.hasGroup(group))
            continue;
        const QByteArray entry = entryOf(menu, AM_AppObject(installed, group));
        if (entry.isEmpty())
            continue;
        const QString name = menu.owner + '-' + group + suffix;
        kept.insert(name);
        isDone = QDir().mkpath(menu.target) && writeEntry(menu, name, entry) && isDone;
    }
    return removeOthers(menu, kept) && isDone;
}
