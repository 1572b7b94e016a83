#include "shell.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "Waiting.h"
#include "dialogs.h"
#include "language.h"
#include "paths.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// An archiver that asks for a password would wait for ever for an answer that nobody can give.
class EmptyInput {
public:
    EmptyInput() : m_saved(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
        const int empty = open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (empty < 0)
            return;
        dup2(empty, STDIN_FILENO);
        close(empty);
    }

    ~EmptyInput() {
        if (m_saved < 0)
            return;
        dup2(m_saved, STDIN_FILENO);
        close(m_saved);
    }

    EmptyInput(const EmptyInput&) = delete;
    EmptyInput& operator=(const EmptyInput&) = delete;

private:
    int m_saved;
};

/// Set by an `ErrorSubject`, since what shows an error, deep in the calls, knows of no batch.
QString errorSubject;

/// Far more than a command prints.
constexpr long longestLog = 64 * 1024 * 1024;

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

/// The log of the next command, made anew. Its folder is open to all, so what lies at `path` may be
/// anyone's: a pipe that would hold the command up, a link to what it would overwrite.
File makeLog(const QByteArray& path) {
    remove(path.constData());
    const int flags = O_RDONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const int descriptor = open(path.constData(), flags, 0600);
    return File(descriptor < 0 ? nullptr : fdopen(descriptor, "r"), fclose);
}

/// False where the command, or someone else, has put another file in the log's place.
bool isStillAt(FILE* log, const QByteArray& path) {
    struct stat made = {};
    struct stat found = {};
    return fstat(fileno(log), &made) == 0 && lstat(path.constData(), &found) == 0 &&
           made.st_dev == found.st_dev && made.st_ino == found.st_ino;
}

/// The log as text; empty where it cannot be read.
QString readLog(FILE* log) {
    fseek(log, 0, SEEK_END);
    const long length = qMax(ftell(log), 0L);
    rewind(log);
    if (length > longestLog) {
        puts("DEBUG:: Error while allocating memory for log file");
        return QString();
    }
    QByteArray bytes(length, '\0');
    if (fread(bytes.data(), 1, bytes.size(), log) == size_t(length))
        return fromBytes(bytes);
    puts("DEBUG:: Error while reading log file");
    return QString();
}

void showOutcome(Outcome outcome, bool quietOnSuccess, FILE* log) {
    if (outcome == Outcome::Failed)
        showError(readLog(log));
    else if (outcome == Outcome::Cancelled)
        showNotice(tr("POP_CANCELLED_TITLE"), tr("POP_CANCELLED_TEXT"));
    else if (!quietOnSuccess)
        showNotice(tr("POP_OK_TITLE"), tr("POP_OK_TEXT"));
}

} // namespace

Outcome outcomeOf(int waitStatus) {
    // The low seven bits of the exit status tell. 128 is a success, too, and so is a command that a
    // signal ended.
    return ((waitStatus >> 8) & 127) == 0 ? Outcome::Done : Outcome::Failed;
}

Outcome notWritten() {
    const int flags = O_WRONLY | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int log = open(toBytes(hostPath(Path::commandLog)).constData(), flags);
    const QByteArray text = toBytes(tr("POP_ERROR_NOT_WRITTEN_TEXT")) + '\n';
    if (write(log, text.constData(), text.size()) < 0)
        perror("quiver");
    close(log);
    return Outcome::Failed;
}

void outliveReaders() {
    // A signal that is ignored is ignored by the commands, too; one that is handled is not.
    signal(SIGPIPE, [](int) {});
}

int runSystem(const QString& command) {
    outliveReaders(); // Qt ignores the signal from its first process on
    fflush(stdout);
    const EmptyInput noInput;
    const QByteArray line = toBytes(command);
    return runBeside([&] { return system(line.constData()); });
}

bool runShellCommand(QString& command, bool quietOnSuccess, const Verdict& verdict) {
    if (command.isEmpty())
        return false;
    const QString path = hostPath(Path::commandLog);
    const QByteArray plainCommand = toBytes(command);
    command += " > " + path + " 2>&1";
    const File log = makeLog(toBytes(path));
    if (!log) {
        showError(tr("POP_ERROR_LOG_TEXT").replace("%1", path));
        return false;
    }
    printf("DEBUG:: Exec command ( %s )\n", plainCommand.constData());
    const int waitStatus = runSystem(command);
    printf("DEBUG:: Command executed returned %d\n", waitStatus >> 8);
    const Outcome outcome = verdict(waitStatus);
    showOutcome(outcome, quietOnSuccess, log.get());
    if (outcome == Outcome::Done && quietOnSuccess)
        return true;
    if (isStillAt(log.get(), toBytes(path))) {
        runSystem("cat " + path);
        remove(toBytes(path).constData());
    }
    return outcome == Outcome::Done;
}

void showError(const QString& text) {
    const QString title = tr("POP_ERROR_TITLE");
    showFailure(errorSubject.isEmpty() ? title : title + ": " + errorSubject, text);
}

ErrorSubject::ErrorSubject(const QString& subject) {
    errorSubject = subject;
}

ErrorSubject::~ErrorSubject() {
    errorSubject.clear();
}

bool fitsInQuotes(const QString& path) {
    return !path.contains('\'');
}

bool runPathCommand(const QString& path, QString command, bool quietOnSuccess,
                    const Verdict& verdict) {
    if (fitsInQuotes(path))
        return runShellCommand(command, quietOnSuccess, verdict);
    showError(tr("POP_ERROR_QUOTE_TEXT"));
    return false;
}
