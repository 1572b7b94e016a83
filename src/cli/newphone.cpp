#include "newphone.h"

#include "Bytes.h"
#include "ZConfig.h"
#include "paths.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const QStringList systemFolders = {"/etc", "/mmc", "/ezx_user/download/appwrite/am",
                                   "/ezx_user/download/appwrite/setup",
                                   "/ezxlocal/download/appwrite/am"};
const QStringList phoneFolders = {Path::systemFolder, Path::phoneApps, Path::phoneSkins,
                                  Path::phonePackages};
const QStringList cardFolders = {Path::cardApps, Path::cardSkins, Path::cardPackages,
                                 Path::cardMount + "/download"};

/// Of the session that made it, its umask may be closer.
bool makeFolders(const QString& root, const QString& path) {
    QString folder = root;
    for (const QString& step : path.split('/', Qt::SkipEmptyParts)) {
        folder += '/' + step;
        const QByteArray bytes = toBytes(folder);
        if (mkdir(bytes.constData(), 0755) == 0)
            chmod(bytes.constData(), 0755);
        else if (errno != EEXIST)
            return false;
    }
    return true;
}

QByteArray templateOf(const QString& path) {
    QFile file(":/phone" + path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& root, const QString& path, const QByteArray& content) {
    const QByteArray target = toBytes(root + path);
    FILE* file = fopen(target.constData(), "we");
    if (!file)
        return false;
    const bool isWritten =
        fwrite(content.constData(), 1, content.size(), file) == size_t(content.size());
    return fclose(file) == 0 && isWritten && chmod(target.constData(), 0644) == 0;
}

bool writeFiles(const QString& root, bool hasCard, const QString& language) {
    IniText settings(templateOf(Path::platformSettings));
    settings.writeEntry("SYS_SYSTEM_SET", "LanguageType", language);
    IniText custom;
    custom.writeEntry("UNPACK_TOOLS", "BIN_FULLPATH", machineArchiver());
    const QByteArray card = hasCard ? templateOf(Path::mountTable + ".card") : QByteArray();
    return writeFile(root, Path::mountTable, templateOf(Path::mountTable) + card) &&
           writeFile(root, Path::installedDb, templateOf(Path::installedDb)) &&
           writeFile(root, Path::userMenuTree, templateOf(Path::userMenuTree)) &&
           writeFile(root, Path::platformSettings, settings.text()) &&
           writeFile(root, Path::systemFolder + "/quiver.custom", custom.text());
}

bool fill(const QString& root, bool hasCard, const QString& language) {
    for (const QString& folder :
         systemFolders + phoneFolders + (hasCard ? QStringList{Path::extSkins} : QStringList())) {
        if (!makeFolders(root, folder))
            return false;
    }
    return (!hasCard || makeCardFolders(root)) && makeFolders(root, "/tmp") &&
           chmod(toBytes(root + "/tmp").constData(), 01777) == 0 &&
           chmod(toBytes(root).constData(), 0755) == 0 && writeFiles(root, hasCard, language);
}

/// Puts what was made in `from` into the place of `root`, or into that where it is an empty folder:
/// somebody may be in it.
bool putInPlace(const fs::path& from, const fs::path& root) {
    std::error_code error;
    if (!fs::is_directory(root, error))
        return rename(from.c_str(), root.c_str()) == 0;
    if (!fs::is_empty(root, error)) {
        errno = error ? EACCES : ENOTEMPTY;
        return false;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(from, error)) {
        if (rename(entry.path().c_str(), (root / entry.path().filename()).c_str()) != 0)
            return false;
    }
    return rmdir(from.c_str()) == 0;
}

} // namespace

QString machineArchiver() {
    const QString archiver = QStandardPaths::findExecutable("7z");
    return archiver.isEmpty() ? QStandardPaths::findExecutable("7zz") : archiver;
}

bool makeCardFolders(const QString& root) {
    return std::all_of(cardFolders.begin(), cardFolders.end(),
                       [&](const QString& folder) { return makeFolders(root, folder); });
}

bool makePhone(const QString& root, bool hasCard, const QString& language, QString& error) {
    QByteArray unfinished = toBytes(root) + ".XXXXXX";
    if (mkdtemp(unfinished.data()) && fill(fromBytes(unfinished), hasCard, language) &&
        putInPlace(unfinished.toStdString(), toBytes(root).toStdString()))
        return true;
    error = QString("%1 cannot be made: %2").arg(root, QString::fromLocal8Bit(strerror(errno)));
    std::error_code ignored;
    fs::remove_all(unfinished.toStdString(), ignored);
    return false;
}
