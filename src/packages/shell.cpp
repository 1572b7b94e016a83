#include "shell.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "Waiting.h"
#include "dialogs.h"
#include "language.h"
#include "paths.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
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

/// Far more than a command prints; a folder in the log's place seems to be larger.
constexpr long longestLog = 64 * 1024 * 1024;

/// The command log as text; empty where it cannot be read.
QString readLog() {
    const std::unique_ptr<FILE, int (*)(FILE*)> log(
        fopen(toBytes(hostPath(Path::commandLog)).constData(), "r"), fclose);
    if (!log)
        return QString();
    fseek(log.get(), 0, SEEK_END);
    const long length = qMax(ftell(log.get()), 0L);
    rewind(log.get());
    if (length > longestLog) {
        puts("DEBUG:: Error while allocating memory for log file");
        return QString();
    }
    QByteArray bytes(length, '\0');
    if (fread(bytes.data(), 1, bytes.size(), log.get()) == size_t(length))
        return fromBytes(bytes);
    puts("DEBUG:: Error while reading log file");
    return QString();
}

/// An exit status whose low seven bits are zero is a success; 128 is, too, and so is a command that
/// a signal ended.
bool isSuccess(int status) {
    return (status & 127) == 0;
}

} // namespace

int runSystem(const QString& command) {
    fflush(stdout);
    const EmptyInput noInput;
    const QByteArray line = toBytes(command);
    return runBeside([&] { return system(line.constData()); });
}

bool runShellCommand(QString& command, bool quietOnSuccess) {
    if (command.isEmpty())
        return false;
    const QString log = hostPath(Path::commandLog);
    printf("DEBUG:: Exec command ( %s )\n", toBytes(command).constData());
    command += " > " + log + " 2>&1";
    const int status = runSystem(command) >> 8;
    printf("DEBUG:: Command executed returned %d\n", status);
    const bool success = isSuccess(status);
    if (success && quietOnSuccess)
        return true;
    if (success)
        showNotice(tr("POP_OK_TITLE"), tr("POP_OK_TEXT"));
    else
        showError(readLog());
    runSystem("cat " + log);
    remove(toBytes(log).constData());
    return success;
}

void showError(const QString& text) {
    showNotice(tr("POP_ERROR_TITLE"), text, "error_pop.bmp");
}

QString asFileArgument(const QString& name) {
    return name.startsWith('-') || name.startsWith('@') ? "./" + name : name;
}

QString literalNameSwitch(const QString& name) {
    return name.contains('*') || name.contains('?') ? " -spd" : "";
}

bool fitsInQuotes(const QString& path) {
    return !path.contains('\'');
}

bool runPathCommand(const QString& path, QString command, bool quietOnSuccess) {
    if (fitsInQuotes(path))
        return runShellCommand(command, quietOnSuccess);
    showError(tr("POP_ERROR_QUOTE_TEXT"));
    return false;
}
