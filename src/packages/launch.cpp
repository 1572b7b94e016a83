#include "launch.h"

#include "Bytes.h"
#include "TerminalDialog.h"
#include "Waiting.h"
#include "shell.h"
#include "watcher.h"

#include <QFile>
#include <QSocketNotifier>

#include <cstdio>

#include <unistd.h>

namespace {

/// As they can be read: the last of them.
QString readable(const QByteArray& words) {
    constexpr qsizetype longest = 500;
    const QString text = printable(fromBytes(words)).trimmed();
    return text.size() > longest ? u'…' + text.right(longest - 1) : text;
}

/// Waits for the shell's end.
int statusOfShell(int report) {
    int status = -1;
    return read(report, &status, sizeof status) == sizeof status ? status : -1;
}

/// Gives the words to `tell` when they come, and closes the report in any case.
void tellLater(int report, QObject* receiver, const LaunchFailure& tell) {
    auto* file = new QFile(receiver);
    file->open(report, QFile::ReadOnly | QFile::Unbuffered, QFile::AutoCloseHandle);
    auto* notifier = new QSocketNotifier(report, QSocketNotifier::Read, file);
    QObject::connect(notifier, &QSocketNotifier::activated, receiver, [file, notifier, tell] {
        notifier->setEnabled(false);
        const QString words = readable(file->readAll());
        file->deleteLater();
        if (!words.isEmpty())
            tell(words);
    });
}

} // namespace

int launch(const QString& command, QObject* receiver, const LaunchFailure& tell) {
    outliveReaders(); // Qt ignores the signal from its first process on
    fflush(stdout);
    const int report = startWatched(toBytes(command).constData());
    if (report < 0)
        return -1;
    const int status = runBeside([report] { return statusOfShell(report); });
    tellLater(report, receiver, tell);
    return status;
}
