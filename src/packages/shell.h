#pragma once

#include <QString>

#include <functional>

/// From now on the program goes on when nobody reads its output any more; the commands that it runs
/// still end then, as any command does.
void outliveReaders();

/// Runs `command` with the C library's `system()` and gives its result; the screen goes on moving
/// meanwhile. What this program has printed comes out first. The command reads nothing from the
/// program's own input.
int runSystem(const QString& command);

enum class Outcome { Done, Failed, Cancelled };

/// What a command counts as whose work could not be written to the storage: a failure, which its
/// log tells of.
Outcome notWritten();

/// What a command counts as that ended with `waitStatus`, which `system` returned.
Outcome outcomeOf(int waitStatus);

/// Asked when a command has ended, before anything is shown: what it counts as.
using Verdict = std::function<Outcome(int waitStatus)>;

/// Runs `command` with its output in the command log, and shows how it ended: a notice of success
/// (not with `quietOnSuccess`), an error popup with the command's output, or a notice that it was
/// cancelled. True when it succeeded; false at once for an empty command. The redirection into the
/// log is appended to the caller's `command` itself.
bool runShellCommand(QString& command, bool quietOnSuccess, const Verdict& verdict = outcomeOf);

/// Shows `text` in an error popup.
void showError(const QString& text);

/// Errors that are shown while it lives name `subject` in their title: in a batch they would not
/// tell what they are about.
class ErrorSubject {
public:
    explicit ErrorSubject(const QString& subject);
    ~ErrorSubject();
    Q_DISABLE_COPY_MOVE(ErrorSubject)
};

/// True when `path` can stand in a command: the templates put paths in single quotes, which cannot
/// hold one.
bool fitsInQuotes(const QString& path);

/// As `runShellCommand` for a command with `path` in it. A path that does not fit ends it as a
/// failed command does, with an error popup that says why, and nothing is run.
bool runPathCommand(const QString& path, QString command, bool quietOnSuccess,
                    const Verdict& verdict = outcomeOf);
