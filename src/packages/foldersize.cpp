#include "foldersize.h"

#include "Bytes.h"

#include <filesystem>

namespace fs = std::filesystem;

FolderContents contentsOf(const QString& path) {
    FolderContents contents;
    std::error_code error;
    const fs::path folder = toBytes(path).toStdString();
    if (!fs::exists(fs::symlink_status(folder, error))) {
        contents.isRead = fs::is_directory(folder.parent_path(), error);
        return contents;
    }
    contents.entries = 1;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(folder, options, error), end;
         !error && entry != end; entry.increment(error)) {
        ++contents.entries;
        contents.files += entry->is_directory(error) && !entry->is_symlink(error) ? 0 : 1;
        if (entry->is_regular_file(error) && !entry->is_symlink(error))
            contents.bytes += qint64(entry->file_size(error));
        contents.isRead = contents.isRead && !error;
        error.clear();
    }
    contents.isRead = contents.isRead && !error;
    return contents;
}
