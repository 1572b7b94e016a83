#pragma once

#include <QList>
#include <QString>

#include <optional>

/// One entry of a folder in the package browser.
struct FolderEntry {
    QString name;
    bool isFolder = false;
    std::optional<qint64> size; ///< in bytes; none for a folder or an entry that has vanished
};

/// The folders and then the files of the working directory, each sorted by name: the packages and,
/// with `showAll`, all other files.
QList<FolderEntry> listFolder(bool showAll);

/// "812 bytes" below 1024 bytes, "402.44 Kbytes" from there on.
QString sizeText(qint64 size);

/// The entry `name` of the working directory is a folder, or a link to one.
bool isFolderEntry(const QString& name);

/// Chosen in the browser, such a file is installed.
bool isPackageName(const QString& name);
