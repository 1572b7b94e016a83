#include "terminal.h"

#include "Bytes.h"
#include "TerminalDialog.h"
#include "Waiting.h"
#include "dialogs.h"
#include "options.h"
#include "output.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <utility>

#include <sys/signalfd.h>
#include <unistd.h>

namespace {

int stopInput = -1; ///< where Ctrl-C comes in; -1 before `startWork`
bool isStopped = false;
QString failure;
QString workTitle; ///< empty while no work goes on
QElapsedTimer workTime;

/// Takes a signal, where one has come.
void takeSignal() {
    signalfd_siginfo taken = {};
    if (read(stopInput, &taken, sizeof taken) != sizeof taken)
        return;
    isStopped = true;
    cancelWork();
}

bool acceptsInput() {
    return true;
}

void clearProgress() {
    if (showsProgress())
        fputs("\r\033[K", stderr);
}

void showProgress() {
    if (workTitle.isEmpty() || !showsProgress())
        return;
    const WorkProgress progress = workProgress();
    QString line = printable(workTitle);
    if (progress.total > 1)
        line += QString(", %1 of %2").arg(progress.number).arg(progress.total);
    if (progress.fraction >= 0)
        line += QString(", %1 %").arg(int(progress.fraction * 100));
    line += QString(", %1 s").arg(workTime.elapsed() / 1000);
    fputs(toBytes("\r\033[K" + line + (isCancellingWork() ? ", cancelling" : "")).constData(),
          stderr);
    fflush(stderr);
}

sigset_t stopSignals() {
    sigset_t numbers;
    sigemptyset(&numbers);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&numbers, number);
    return numbers;
}

/// While a question waits for its answer, nothing goes on that Ctrl-C could not simply end.
class QuestionOpen {
public:
    QuestionOpen() {
        clearProgress();
        const sigset_t numbers = stopSignals();
        sigprocmask(SIG_UNBLOCK, &numbers, &m_before);
    }

    ~QuestionOpen() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

    Q_DISABLE_COPY_MOVE(QuestionOpen)

private:
    sigset_t m_before = {};
};

} // namespace

void startWork() {
    static int count = 1;
    static char name[] = "quiver";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication application(count, arguments);
    const sigset_t wanted = stopSignals();
    sigprocmask(SIG_BLOCK, &wanted, nullptr);
    stopInput = signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK);
    static QSocketNotifier notifier(stopInput, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, takeSignal);
    constexpr int interval = 200; // ms
    static QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, showProgress);
    timer.start(interval);
    setWaitingScreen(acceptsInput);
}

bool isInterrupted() {
    if (stopInput >= 0)
        takeSignal();
    return isStopped;
}

bool canAsk() {
    return Option::yes || isatty(STDIN_FILENO);
}

bool confirm(const QString& question, const QString& details) {
    if (Option::yes)
        return true;
    if (!canAsk()) {
        fail(QString(), "nothing was done: there is no terminal to ask on, and no --yes");
        return false;
    }
    const QuestionOpen open;
    if (askOnTerminal(question, details))
        return true;
    fail(QString(), "nothing was done");
    return false;
}

QString takeFailure() {
    return std::exchange(failure, QString());
}

bool askYesNo(const QString& title, const QString& text, const QString&) {
    return confirm(title, text);
}

bool askAbout(const QString& title, const QString& text, const Details& details, const QString&) {
    return confirm(title, text + '\n' + details.heading);
}

std::optional<int> chooseOne(const QString& title, const QString& text,
                             const QList<Choice>& choices, const QString&) {
    if (!canAsk())
        return std::nullopt;
    QStringList texts;
    for (const Choice& choice : choices)
        texts.append(choice.text);
    const QuestionOpen open;
    const int chosen = chooseOnTerminal(title, text, texts);
    return chosen < 0 ? std::nullopt : std::optional(chosen);
}

std::optional<QString> askText(const QString&, const QString&, const QString&, int) {
    return std::nullopt; // a command names what it wants
}

void showNotice(const QString& title, const QString& text, const QString&) {
    failure = title + ": " + text;
}

/// The archiver tells much before it comes to the error, and its reason may stand a line below.
void showFailure(const QString&, const QString& text) {
    const QStringList lines = text.trimmed().split('\n', Qt::SkipEmptyParts);
    qsizetype at = 0;
    while (at < lines.size() && !lines.at(at).contains("error", Qt::CaseInsensitive))
        ++at;
    const bool isHeading = lines.value(at).trimmed().endsWith(':');
    failure = at == lines.size() ? lines.value(at - 1).trimmed()
                                 : lines.mid(at, isHeading ? 2 : 1).join(' ').trimmed();
}

void showWorking(const QString& title) {
    workTitle = title;
    workTime.start();
    showProgress();
}

void hideWorking() {
    workTitle.clear();
    clearProgress();
}
