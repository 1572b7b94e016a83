#include "upgrade.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "aside.h"
#include "paths.h"

#include <filesystem>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

QByteArray pathOf(const QByteArray& root, const QByteArray& name) {
    return root + '/' + name;
}

bool isThere(const QByteArray& path) {
    struct stat info = {};
    return lstat(path.constData(), &info) == 0;
}

bool isFolder(const QByteArray& path) {
    struct stat info = {};
    return lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool removeTree(const QByteArray& path) {
    std::error_code error;
    fs::remove_all(path.toStdString(), error);
    return !error;
}

bool moveTo(const QByteArray& from, const QByteArray& to) {
    return rename(from.constData(), to.constData()) == 0;
}

/// Opened and locked; -1 where it is none, or locked by somebody else. Commands inherit the lock,
/// so an archiver that outlives its program is not taken for a dead one.
int lockFolder(const QByteArray& path) {
    const int folder = open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (folder >= 0 && flock(folder, LOCK_EX | LOCK_NB) == 0)
        return folder;
    if (folder >= 0)
        close(folder);
    return -1;
}

QList<QByteArray> namesIn(const QByteArray& path) {
    QList<QByteArray> names;
    DIR* folder = opendir(path.constData());
    if (!folder)
        return names;
    while (const dirent* entry = readdir(folder)) {
        const QByteArray name = entry->d_name;
        if (name != "." && name != "..")
            names.append(name);
    }
    closedir(folder);
    return names;
}

/// Moves what `to` lacks of `from`. False where something had to stay.
bool moveMissing(const QByteArray& from, const QByteArray& to) {
    bool isWhole = true;
    for (const QByteArray& name : namesIn(from)) {
        const QByteArray source = pathOf(from, name);
        const QByteArray target = pathOf(to, name);
        if (!isThere(target))
            isWhole = moveTo(source, target) && isWhole;
        else if (isFolder(source) && isFolder(target))
            isWhole = moveMissing(source, target) && isWhole;
    }
    return isWhole;
}

bool giveBack(const QByteArray& root, const QByteArray& name) {
    const QByteArray path = pathOf(root, name);
    const QByteArray before = asidePath(root, name, asideBefore);
    return isThere(before) && removeTree(path) && moveTo(before, path);
}

void bringOver(const QByteArray& root, const QByteArray& name) {
    const QByteArray left = asidePath(root, name, asideLeft);
    if (moveMissing(left, pathOf(root, name)))
        removeTree(left);
}

void mendIn(const QByteArray& root) {
    for (const QByteArray& aside : namesIn(root)) {
        const QByteArray before = nameOfAside(aside, asideBefore);
        const QByteArray left = nameOfAside(aside, asideLeft);
        const int lock = before.isEmpty() && left.isEmpty() ? -1 : lockFolder(pathOf(root, aside));
        if (lock < 0)
            continue;
        before.isEmpty() ? bringOver(root, left) : void(giveBack(root, before));
        close(lock);
    }
}

} // namespace

Upgrade::Upgrade(const QString& root, const QSet<QString>& names) {
    const QByteArray host = toBytes(hostPath(root));
    for (const QString& name : names) {
        const QByteArray path = pathOf(host, toBytes(name));
        if (!isThere(path))
            m_new.push_back(path);
        m_isReady = m_isReady && (!isFolder(path) || putAside(host, toBytes(name)));
    }
    if (!m_isReady)
        giveBack();
}

Upgrade::~Upgrade() {
    giveBack();
}

bool Upgrade::putAside(const QByteArray& root, const QByteArray& name) {
    const QByteArray path = pathOf(root, name);
    const QByteArray before = asidePath(root, name, asideBefore);
    const int lock = lockFolder(path);
    if (lock < 0)
        return false;
    if (!isThere(before) && !isThere(asidePath(root, name, asideLeft)) && moveTo(path, before)) {
        m_asides.push_back({root, name, lock});
        return true;
    }
    close(lock);
    return false;
}

bool Upgrade::isUnpacked() const {
    for (const Aside& aside : m_asides) {
        if (!isThere(pathOf(aside.root, aside.name)))
            return false;
    }
    return true;
}

void Upgrade::giveBack() {
    for (const Aside& aside : m_asides) {
        ::giveBack(aside.root, aside.name);
        close(aside.lock);
    }
    m_asides.clear();
}

void Upgrade::undo() {
    giveBack();
    for (const QByteArray& path : m_new)
        removeTree(path);
}

void Upgrade::finish() {
    for (const Aside& aside : m_asides) {
        syncfs(aside.lock); // the new version outlives a power cut before the old one is touched
        moveTo(asidePath(aside.root, aside.name, asideBefore),
               asidePath(aside.root, aside.name, asideLeft));
    }
    for (const Aside& aside : m_asides) {
        bringOver(aside.root, aside.name);
        close(aside.lock);
    }
    m_asides.clear();
}

void mendUpgrades() {
    for (const QString& root :
         {Path::phoneApps, Path::cardApps, Path::phoneSkins, Path::cardSkins, Path::extSkins})
        mendIn(toBytes(hostPath(root)));
}
