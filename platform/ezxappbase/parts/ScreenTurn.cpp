#include "ScreenTurn.h"

#include "Bytes.h"
#include "PhoneRoot.h"

#include <QDir>
#include <QSocketNotifier>
#include <QTimer>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t everybody = 01777;
constexpr int nameWidth = 10;     // digits, so that the order of names is that of numbers
constexpr int unlockedAfter = 50; // ms from the end of a program, which is told a little early

QByteArray folder() {
    static const QByteArray path = toBytes(hostPath("/tmp/screen"));
    return path;
}

QByteArray pathOf(const QByteArray& name) {
    return folder() + '/' + name;
}

/// The places that are taken, dead programs' included, in their order.
QStringList places() {
    return QDir(fromBytes(folder())).entryList(QDir::Files, QDir::Name);
}

QByteArray nextPlace() {
    const QStringList taken = places();
    const qulonglong last = taken.isEmpty() ? 0 : taken.last().toULongLong();
    return QByteArray::number(last + 1).rightJustified(nameWidth, '0');
}

/// Also removes the place of a program that has ended without a word.
bool isAlive(const QByteArray& name) {
    const int file = open(pathOf(name).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool isLocked = flock(file, LOCK_SH | LOCK_NB) != 0;
    if (!isLocked)
        unlink(pathOf(name).constData());
    close(file);
    return isLocked;
}

} // namespace

ScreenTurn::ScreenTurn(bool isLowest, QObject* parent) : QObject(parent) {
    if (!enter(isLowest))
        return;
    watch();
    look();
}

ScreenTurn::~ScreenTurn() {
    if (m_place < 0)
        return;
    unlink(pathOf(m_name).constData());
    close(m_place);
    close(m_watch);
}

/// The file gets its name only when it is locked, so that nobody takes it for a dead program's.
bool ScreenTurn::enter(bool isLowest) {
    if (mkdir(folder().constData(), everybody) == 0)
        chmod(folder().constData(), everybody);
    const QByteArray unnamed = pathOf("." + QByteArray::number(getpid()));
    m_place = open(unnamed.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (m_place < 0)
        return false;
    flock(m_place, LOCK_EX);
    if (isLowest) {
        m_name = QByteArray(nameWidth, '0');
        return rename(unnamed.constData(), pathOf(m_name).constData()) == 0;
    }
    do
        m_name = nextPlace();
    while (renameat2(AT_FDCWD, unnamed.constData(), AT_FDCWD, pathOf(m_name).constData(),
                     RENAME_NOREPLACE) != 0 &&
           errno == EEXIST);
    return true;
}

void ScreenTurn::watch() {
    m_watch = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    inotify_add_watch(m_watch, folder().constData(), IN_MOVED_TO | IN_DELETE | IN_CLOSE_WRITE);
    auto* notifier = new QSocketNotifier(m_watch, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char events[4096];
        while (read(m_watch, events, sizeof events) > 0) {
        }
        look();
        QTimer::singleShot(unlockedAfter, this, &ScreenTurn::look);
    });
}

void ScreenTurn::look() {
    const bool isOurs = !isCovered();
    if (isOurs == m_isOurs)
        return;
    m_isOurs = isOurs;
    emit changed(isOurs);
}

bool ScreenTurn::isCovered() const {
    const QStringList taken = places();
    return std::any_of(taken.begin(), taken.end(), [this](const QString& name) {
        return name > QString(m_name) && isAlive(toBytes(name));
    });
}
