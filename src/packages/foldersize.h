#pragma once

#include <QString>

struct FolderContents {
    int entries = 0; ///< files and folders, the outermost included
    int files = 0;   ///< whatever is no folder
    qint64 bytes = 0;
    bool isRead = true; ///< false where some of it, or the folder that it lies in, cannot be
};

/// What lies in the folder at `path` (of the machine), at any depth; nothing where there is none.
FolderContents contentsOf(const QString& path);
