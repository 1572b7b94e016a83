#include "foldersize.h"

#include "Bytes.h"

#include <ftw.h>

namespace {

FolderContents counted;

int countEntry(const char*, const struct stat* info, int type, FTW*) {
    ++counted.entries;
    counted.bytes += type == FTW_F ? info->st_size : 0;
    return 0;
}

} // namespace

FolderContents contentsOf(const QString& path) {
    constexpr int openFolders = 16;
    counted = FolderContents();
    nftw(toBytes(path).constData(), countEntry, openFolders, FTW_PHYS);
    return counted;
}
