#include "Waiting.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <csignal>
#include <memory>

#include <unistd.h>

namespace {

/// What is known of the work that goes on. It is the program's: there is one event loop that waits,
/// and the screen that asks how far the work is knows nothing of who does it.
struct Work {
    std::atomic<pid_t> thread = 0; ///< 0 where none runs; the commands are its children
    int depth = 0;
    WorkCancel* cancel = nullptr; ///< objects of those who do the work, where there are any
    const WorkGoal* goal = nullptr;
    const WorkPart* part = nullptr;
};

Work current;

/// Null in a program without a screen. Only the screen can tell, and it is built on this.
bool (*screenTakesInput)() = nullptr;

QByteArray readSystemFile(const QByteArray& path) {
    QFile file(QString::fromLatin1(path));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// Bytes that a running process has passed to (`rchar`) or from (`wchar`) its files so far, and its
/// ended children with it.
qint64 bytesOfProcess(const QByteArray& process, const QByteArray& counter) {
    for (const QByteArray& line : readSystemFile("/proc/" + process + "/io").split('\n')) {
        if (line.startsWith(counter))
            return line.mid(counter.size()).trimmed().toLongLong();
    }
    return 0;
}

QByteArray threadOfWork() {
    return "self/task/" + QByteArray::number(current.thread);
}

/// The processes that a thread has started; that of a command has but one thread.
QList<QByteArray> childrenOf(const QByteArray& thread) {
    QList<QByteArray> children =
        readSystemFile("/proc/" + thread + "/children").simplified().split(' ');
    children.removeAll(QByteArray());
    return children;
}

QByteArray threadOf(const QByteArray& process) {
    return process + "/task/" + process;
}

qint64 bytesOfChildren(const QByteArray& thread, const QByteArray& counter) {
    qint64 bytes = 0;
    for (const QByteArray& child : childrenOf(thread))
        bytes += bytesOfProcess(child, counter) + bytesOfChildren(threadOf(child), counter);
    return bytes;
}

/// Ends what the thread has started, and all that this has started. Each process is stopped first,
/// so that it starts nothing more unseen.
void endChildren(const QByteArray& thread) {
    for (const QByteArray& child : childrenOf(thread)) {
        kill(child.toInt(), SIGSTOP);
        endChildren(threadOf(child));
        kill(child.toInt(), SIGKILL);
    }
}

} // namespace

void setWaitingScreen(bool (*takesInput)()) {
    screenTakesInput = takesInput;
}

int runBeside(const std::function<int()>& work) {
    if (!QCoreApplication::instance() || !screenTakesInput)
        return work();
    int result = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        current.thread = gettid();
        result = work();
        current.thread = 0;
    }));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    // The command may have been about to start when the user cancelled.
    constexpr int interval = 20;
    QTimer canceller;
    QObject::connect(&canceller, &QTimer::timeout, [] {
        if (current.cancel && current.cancel->endsCommands() && current.thread != 0)
            endChildren(threadOfWork());
    });
    if (current.cancel)
        canceller.start(interval);
    ++current.depth;
    thread->start();
    loop.exec(screenTakesInput() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    --current.depth;
    return result;
}

void startBeside(const std::function<void()>& work, QObject* receiver,
                 const std::function<void()>& then) {
    QThreadPool::globalInstance()->start([work, then, guard = QPointer(receiver)] {
        work();
        const auto finish = [then, guard] {
            if (guard)
                then();
        };
        QMetaObject::invokeMethod(qApp, finish, Qt::QueuedConnection);
    });
}

bool isWorking() {
    return current.depth > 0;
}

WorkCancel::WorkCancel(When when) : m_when(when), m_isOuter(!current.cancel) {
    if (m_isOuter)
        current.cancel = this;
}

WorkCancel::~WorkCancel() {
    end();
}

bool WorkCancel::end() {
    if (m_isOuter)
        current.cancel = nullptr;
    m_isOuter = false;
    return m_isRequested;
}

bool canCancelWork() {
    return current.cancel && current.depth > 0 && !current.cancel->isRequested();
}

void cancelWork() {
    if (canCancelWork())
        current.cancel->request();
}

bool isCancellingWork() {
    return current.cancel && current.cancel->isRequested();
}

WorkGoal::WorkGoal(Direction direction, qint64 bytes) : m_direction(direction), m_bytes(bytes) {
    current.goal = this;
}

WorkGoal::~WorkGoal() {
    current.goal = nullptr;
}

WorkPart::WorkPart(int number, int total) : m_number(number), m_total(total) {
    current.part = this;
}

WorkPart::~WorkPart() {
    current.part = nullptr;
}

WorkProgress workProgress() {
    WorkProgress progress;
    if (const WorkPart* part = current.part; part && part->total() > 0) {
        progress = {.fraction = double(part->number() - 1) / part->total(),
                    .number = part->number(),
                    .total = part->total()};
    }
    const WorkGoal* goal = current.goal;
    if (!goal || goal->bytes() <= 0 || current.thread == 0)
        return progress;
    const qint64 bytes =
        bytesOfChildren(threadOfWork(), goal->direction() == WorkGoal::Reads ? "rchar:" : "wchar:");
    if (bytes > 0)
        progress.fraction = qMin(1.0, double(bytes) / double(goal->bytes()));
    return progress;
}
