#include "upgrade.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "aside.h"
#include "foldersize.h"
#include "paths.h"

#include <algorithm>
#include <cerrno>
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

QByteArray parentOf(const QByteArray& path) {
    return path.left(path.lastIndexOf('/'));
}

QByteArray nameOf(const QByteArray& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

bool isThere(const QByteArray& path) {
    struct stat info = {};
    return lstat(path.constData(), &info) == 0;
}

bool isFolder(const QByteArray& path) {
    struct stat info = {};
    return lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

qint64 entriesIn(const QByteArray& path) {
    return contentsOf(fromBytes(path)).entries;
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

/// An empty folder that marks `name` in `root` with this end; its lock, or -1. The mark has to be
/// on the storage before what it is about.
int makeMark(const QByteArray& root, const QByteArray& name, const QByteArray& end) {
    const QByteArray mark = asidePath(root, name, end);
    if (mkdir(mark.constData(), 0755) != 0)
        return -1;
    const int lock = lockFolder(mark);
    syncFolder(root);
    return lock;
}

/// A mark that comes back with a card that was pulled would undo what was told to be done.
void removeMark(const QByteArray& mark, int lock) {
    if (lock < 0)
        return;
    rmdir(mark.constData());
    syncFolder(parentOf(mark));
    close(lock);
}

/// The source is whole as long as it has lost nothing; from then on the copy is.
void endCopy(const QByteArray& root, const QByteArray& name, const QByteArray& sourceRoot) {
    const QByteArray copy = pathOf(root, name);
    const QByteArray source = pathOf(sourceRoot, name);
    if (!isFolder(sourceRoot))
        return; // the card is out; later
    if (isThere(source)) {
        const bool isWhole = entriesIn(source) >= entriesIn(copy);
        removeTree(isWhole ? copy : source);
    }
    rmdir(asidePath(root, name, asideCopy).constData());
}

/// What is copied into `root` comes from `sourceRoot`.
void mendIn(const QByteArray& root, const QByteArray& sourceRoot) {
    for (const QByteArray& aside : namesIn(root)) {
        const QByteArray before = nameOfAside(aside, asideBefore);
        const QByteArray left = nameOfAside(aside, asideLeft);
        const QByteArray first = nameOfAside(aside, asideNone);
        const QByteArray copy = nameOfAside(aside, asideCopy);
        const int lock = isNameOfAside(fromBytes(aside)) ? lockFolder(pathOf(root, aside)) : -1;
        if (lock < 0)
            continue;
        if (!before.isEmpty())
            giveBack(root, before);
        else if (!left.isEmpty())
            bringOver(root, left);
        else if (!copy.isEmpty())
            endCopy(root, copy, sourceRoot);
        else if (!first.isEmpty() && removeTree(pathOf(root, first)))
            rmdir(pathOf(root, aside).constData());
        else if (first.isEmpty() && isThere(pathOf(root, nameOfAside(aside, asideLinks))))
            removeTree(pathOf(root, aside));
        close(lock);
    }
}

} // namespace

Upgrade::Upgrade(const QString& root, const QSet<QString>& names) {
    const QByteArray host = toBytes(hostPath(root));
    for (const QString& name : names) {
        const QByteArray path = pathOf(host, toBytes(name));
        if (!isThere(path))
            m_first.push_back({host, toBytes(name), makeMark(host, toBytes(name), asideNone)});
        m_isReady = m_isReady && (!isFolder(path) || putAside(host, toBytes(name)));
    }
    if (!m_isReady)
        giveBack();
}

Upgrade::~Upgrade() {
    giveBack();
    for (const Aside& first : m_first)
        removeMark(asidePath(first.root, first.name, asideNone), first.lock);
}

bool Upgrade::putAside(const QByteArray& root, const QByteArray& name) {
    const QByteArray path = pathOf(root, name);
    const QByteArray before = asidePath(root, name, asideBefore);
    const int lock = lockFolder(path);
    if (lock < 0) {
        m_error = errno == EWOULDBLOCK ? 0 : errno;
        return false;
    }
    if (!isThere(before) && !isThere(asidePath(root, name, asideLeft))) {
        if (moveTo(path, before)) {
            m_asides.push_back({root, name, lock});
            return true;
        }
        m_error = errno;
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
    for (const Aside& first : m_first)
        removeTree(pathOf(first.root, first.name));
}

bool Upgrade::keep() {
    return std::all_of(m_first.begin(), m_first.end(), [](const Aside& first) {
        return first.lock < 0 || syncfs(first.lock) == 0;
    });
}

void Upgrade::finish() {
    for (const Aside& aside : m_asides) {
        syncfs(aside.lock); // the new version outlives a power cut before the old one is touched
        moveTo(asidePath(aside.root, aside.name, asideBefore),
               asidePath(aside.root, aside.name, asideLeft));
        syncFolder(aside.root);
    }
    for (const Aside& aside : m_asides) {
        bringOver(aside.root, aside.name);
        close(aside.lock);
    }
    m_asides.clear();
}

KeptFolder::KeptFolder(const QString& folder)
    : m_folder(toBytes(folder)),
      m_copy(asidePath(parentOf(m_folder), nameOf(m_folder), asideBefore)) {
    if (isThere(m_copy))
        return;
    std::error_code error;
    const QByteArray links = asidePath(parentOf(m_folder), nameOf(m_folder), asideLinks);
    fs::copy(m_folder.toStdString(), links.toStdString(),
             fs::copy_options::recursive | fs::copy_options::create_hard_links |
                 fs::copy_options::copy_symlinks,
             error);
    m_lock = error ? -1 : lockFolder(links);
    if (m_lock >= 0 && moveTo(links, m_copy))
        return;
    removeTree(links);
    close(m_lock);
    m_lock = -1;
}

KeptFolder::~KeptFolder() {
    giveBack();
}

void KeptFolder::giveBack() {
    if (m_lock >= 0 && entriesIn(m_folder) < entriesIn(m_copy) && removeTree(m_folder))
        moveTo(m_copy, m_folder);
    release();
}

void KeptFolder::release() {
    if (m_lock < 0)
        return;
    removeTree(m_copy);
    close(m_lock);
    m_lock = -1;
}

CopyMark::CopyMark(const QString& target)
    : m_path(asidePath(parentOf(toBytes(target)), nameOf(toBytes(target)), asideCopy)),
      m_lock(makeMark(parentOf(toBytes(target)), nameOf(toBytes(target)), asideCopy)) {}

CopyMark::~CopyMark() {
    removeMark(m_path, m_lock);
}

void mendUpgrades() {
    const QByteArray phone = toBytes(hostPath(Path::phoneApps));
    const QByteArray card = toBytes(hostPath(Path::cardApps));
    mendIn(phone, card);
    mendIn(card, phone);
    for (const QString& skins : {Path::phoneSkins, Path::cardSkins, Path::extSkins})
        mendIn(toBytes(hostPath(skins)), QByteArray());
}
