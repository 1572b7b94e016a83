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

/// The thread that the work runs on; the commands are its children.
std::atomic<pid_t> workThread = 0;

int workDepth = 0;
bool (*screenTakesInput)() = nullptr;
WorkCancel* workCancel = nullptr;
WorkGoal::Direction goalDirection = WorkGoal::Writes;
qint64 goalBytes = 0;
int partNumber = 0;
int partTotal = 0;

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
    return "self/task/" + QByteArray::number(workThread);
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
        workThread = gettid();
        result = work();
        workThread = 0;
    }));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    // The command may have been about to start when the user cancelled.
    constexpr int interval = 20;
    QTimer canceller;
    QObject::connect(&canceller, &QTimer::timeout, [] {
        if (workCancel && workCancel->endsCommands() && workThread != 0)
            endChildren(threadOfWork());
    });
    if (workCancel)
        canceller.start(interval);
    ++workDepth;
    thread->start();
    loop.exec(screenTakesInput() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    --workDepth;
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
    return workDepth > 0;
}

WorkCancel::WorkCancel(When when) : m_when(when), m_isOuter(!workCancel) {
    if (m_isOuter)
        workCancel = this;
}

WorkCancel::~WorkCancel() {
    end();
}

bool WorkCancel::end() {
    if (m_isOuter)
        workCancel = nullptr;
    m_isOuter = false;
    return m_isRequested;
}

bool canCancelWork() {
    return workCancel && workDepth > 0 && !workCancel->isRequested();
}

void cancelWork() {
    if (canCancelWork())
        workCancel->request();
}

bool isCancellingWork() {
    return workCancel && workCancel->isRequested();
}

WorkGoal::WorkGoal(Direction direction, qint64 bytes) {
    goalDirection = direction;
    goalBytes = bytes;
}

WorkGoal::~WorkGoal() {
    goalBytes = 0;
}

WorkPart::WorkPart(int number, int total) {
    partNumber = number;
    partTotal = total;
}

WorkPart::~WorkPart() {
    partTotal = 0;
}

WorkProgress workProgress() {
    WorkProgress progress = {.number = partNumber, .total = partTotal};
    if (partTotal > 0)
        progress.fraction = double(partNumber - 1) / partTotal;
    if (goalBytes <= 0 || workThread == 0)
        return progress;
    const qint64 bytes =
        bytesOfChildren(threadOfWork(), goalDirection == WorkGoal::Reads ? "rchar:" : "wchar:");
    if (bytes > 0)
        progress.fraction = qMin(1.0, double(bytes) / double(goalBytes));
    return progress;
}
