#include "watcher.h"

#include "Environment.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// Most of this runs in a process that was split off from one with several threads: until it is
// another program it allocates nothing and uses nothing that could be locked.

namespace {

/// The files of the watching process. It holds no others: the display, the database and the lock of
/// a program that has ended would stay in use as long as an application runs.
enum Descriptor { errors = 0, forwarded = 1, ownErrors = 2, report = 3 };

struct Pipe {
    int out = -1;
    int in = -1;

    bool open() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            return false;
        out = ends[0];
        in = ends[1];
        return true;
    }

    ~Pipe() {
        for (const int end : {out, in}) {
            if (end >= 0)
                close(end);
        }
    }
};

/// The last of what was printed.
class Words {
public:
    void append(const char* bytes, size_t count) {
        const size_t kept = std::min(m_size, m_bytes.size() - std::min(count, m_bytes.size()));
        memmove(m_bytes.data(), m_bytes.data() + m_size - kept, kept);
        const size_t added = std::min(count, m_bytes.size());
        memcpy(m_bytes.data() + kept, bytes + count - added, added);
        m_size = kept + added;
    }

    const char* data() const { return m_bytes.data(); }

    size_t size() const { return m_size; }

private:
    std::array<char, longestWords> m_bytes;
    size_t m_size = 0;
};

void writeAll(int file, const char* bytes, size_t count) {
    while (count > 0) {
        const ssize_t written = write(file, bytes, count);
        if (written < 0)
            return;
        bytes += written;
        count -= size_t(written);
    }
}

/// Hands on what comes in within `patience` milliseconds. False where nothing did; at the end of
/// the input `source` is left without a file.
bool forward(pollfd& source, int patience, Words& words) {
    if (poll(&source, 1, patience) <= 0)
        return false;
    std::array<char, 4096> bytes;
    const ssize_t count = read(source.fd, bytes.data(), bytes.size());
    if (count <= 0) {
        source.fd = -1;
        return false;
    }
    writeAll(forwarded, bytes.data(), size_t(count));
    words.append(bytes.data(), size_t(count));
    return true;
}

/// The process that the shell has left running, which is this one's child since the shell has
/// ended. It came before whatever it has left running itself. 0 where there is none.
pid_t leftRunning() {
    const int file = open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
    std::array<char, 4096> text = {};
    const ssize_t count = file < 0 ? 0 : read(file, text.data(), text.size() - 1);
    close(file);
    pid_t first = 0;
    char* end = text.data();
    while (end < text.data() + count) {
        const auto child = pid_t(strtol(end, &end, 10));
        if (child <= 0)
            break;
        first = first == 0 ? child : std::min(first, child);
    }
    return first;
}

/// A shell's own word for a program that it could not execute or did not find.
bool couldNotStart(int waitStatus) {
    return WIFEXITED(waitStatus) &&
           (WEXITSTATUS(waitStatus) == 126 || WEXITSTATUS(waitStatus) == 127);
}

/// Watches the shell and then the application, until both have ended or a second is over, and hands
/// on what they print. Reports what came of it. True where more may be printed.
bool watch(pid_t shell) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    constexpr int interval = 10; // ms
    pollfd source = {.fd = errors, .events = POLLIN, .revents = 0};
    Words words;
    pid_t watched = shell;
    bool hasFailed = false;
    for (bool isInTime = true; isInTime || watched == shell;) {
        int status = 0;
        if (watched > 0 && waitpid(watched, &status, WNOHANG) == watched) {
            hasFailed = isInTime && couldNotStart(status);
            if (watched == shell)
                writeAll(report, reinterpret_cast<const char*>(&status), sizeof status);
            watched = watched == shell && !hasFailed ? leftRunning() : 0;
        }
        // What has ended may still have words on the way.
        if (!forward(source, watched > 0 ? interval : 0, words) && watched == 0)
            break;
        isInTime = std::chrono::steady_clock::now() < end;
    }
    if (hasFailed)
        writeAll(report, words.data(), words.size());
    return source.fd >= 0;
}

/// Becomes the shell with the command.
[[noreturn]] void runShell(const char* command, int errorsIn) {
    dup2(errorsIn, STDERR_FILENO);
    const int empty = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(empty, STDIN_FILENO);
    const std::array<const char*, 4> arguments = {"sh", "-c", command, nullptr};
    execve("/bin/sh", const_cast<char**>(arguments.data()), givenEnvironment());
    _exit(127);
}

/// Becomes a small program that hands on the rest, as this one's memory is too dear for as long as
/// an application runs. Where nobody takes it any more it is still read, so that the application is
/// neither held up nor ended.
[[noreturn]] void forwardTheRest() {
    execl("/bin/sh", "sh", "-c", "cat || exec cat > /dev/null", nullptr);
    _exit(127);
}

/// The life of the watching process.
[[noreturn]] void runWatcher(const char* command, const Pipe& errorPipe, const Pipe& reportPipe) {
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const pid_t shell = fork();
    if (shell == 0)
        runShell(command, errorPipe.in);
    dup2(errorPipe.out, errors);
    dup2(ownErrors, forwarded);
    dup2(reportPipe.in, report);
    closefrom(report + 1);
    // The keys of a terminal and a reader that is gone end others, not this one, nor what it
    // becomes: the application would lose its standard error. It ends when nobody writes there any
    // more.
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGTSTP, SIGTTOU})
        signal(number, SIG_IGN);
    const bool isUnfinished = shell > 0 && chdir("/") == 0 && watch(shell);
    close(report);
    prctl(PR_SET_CHILD_SUBREAPER, 0);
    if (isUnfinished)
        forwardTheRest();
    _exit(0);
}

} // namespace

int startWatched(const char* command) {
    Pipe errorPipe;
    Pipe reportPipe;
    if (!errorPipe.open() || !reportPipe.open())
        return -1;
    // The watching process is nobody's child, as nobody knows when it will end.
    const pid_t parent = fork();
    if (parent == 0) {
        const pid_t watcher = fork();
        if (watcher == 0)
            runWatcher(command, errorPipe, reportPipe);
        _exit(0);
    }
    if (parent < 0)
        return -1;
    waitpid(parent, nullptr, 0);
    return std::exchange(reportPipe.out, -1);
}
