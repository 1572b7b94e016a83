#include "storage.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "paths.h"

#include <cstdio>

#include <dirent.h>
#include <fcntl.h>
#include <mntent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Decimal on purpose: phones in use have folders of this mode (01411).
constexpr mode_t folderMode = 777;

struct RequiredFolder {
    const QString& path;
    bool onCard;
    const char* failure;
};

} // namespace

bool writeBack(const QString& path) {
    const int file = open(toBytes(path).constData(), O_RDONLY | O_CLOEXEC);
    const bool isWritten = syncfs(file) == 0;
    close(file);
    return isWritten;
}

void detectCard() {
    FILE* table = setmntent(toBytes(hostPath(Path::mountTable)).constData(), "r");
    if (!table) {
        puts("DEBUG:: Cannot determine if SD is exists. Disabled by default");
        return;
    }
    for (const QByteArray& folder : mountPoints(table)) {
        if (folder.contains(toBytes(Path::cardMount))) {
            puts("DEBUG:: SD exists");
            SdPresent = true;
        }
        if (folder.contains(toBytes(Path::extMount))) {
            puts("DEBUG:: SD extended partition exists");
            SdExtPresent = true;
        }
    }
    if (!SdPresent)
        puts("DEBUG:: SD doesn't exist");
    endmntent(table);
}

QList<QByteArray> mountPoints(FILE* table) {
    QList<QByteArray> folders;
    while (const mntent* entry = getmntent(table))
        folders.append(entry->mnt_dir);
    return folders;
}

bool ensureDir(const QString& path) {
    const QByteArray host = toBytes(hostPath(path));
    if (DIR* folder = opendir(host.constData())) {
        closedir(folder);
        return true;
    }
    printf("DEBUG:: Dir '%s' doesn't exist. Try to create it\n", toBytes(path).constData());
    if (mkdir(host.constData(), folderMode) == 0)
        return true;
    puts("DEBUG:: [ERROR] : Directory creation Failed.");
    return false;
}

void prepareStorage() {
    detectCard();
    const RequiredFolder folders[] = {
        {Path::cardApps, true, "DEBUG:: SD Directory creation Failed"},
        {Path::cardSkins, true, "DEBUG:: SD Skins Directory creation Failed"},
        {Path::extSkins, true, "DEBUG:: SD Extended Partition Skins Directory creation Failed"},
        {Path::phoneApps, false, "DEBUG:: Phone Directory creation Failed"},
        {Path::phoneSkins, false, "DEBUG:: Phone Skins Directory creation Failed"},
        {Path::systemFolder, false, "DEBUG:: Application Sys Files Directory creation Failed"},
    };
    for (const RequiredFolder& folder : folders) {
        if ((SdPresent || !folder.onCard) && !ensureDir(folder.path))
            puts(folder.failure);
    }
}

QString appsFolder(int location) {
    return location == memoryCard ? Path::cardApps : Path::phoneApps;
}
