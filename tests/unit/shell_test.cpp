#include "shell.h"

#include "ZPopup.h"
#include "support.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QByteArray logFile = "/tmp/quiver_exec.log";

/// The step that takes the dialog's title and text and acknowledges it.
Dialogs::Step reading(QStringList& shown) {
    return [&shown](ZPopup& popup) {
        shown = {popup.title(), messageOf(popup)};
        press(Qt::Key_F1);
    };
}

QByteArray started(const QString& command, int status) {
    return "DEBUG:: Exec command ( " + command.toUtf8() + " )\nDEBUG:: Command executed returned " +
           QByteArray::number(status) + '\n';
}

} // namespace

TEST(Shell, TheExitStatusDecides) {
    for (const auto& [ending, status, success] : Rows<const char*, int, bool>{
             {"sh -c 'echo out; echo err >&2; exit 0'", 0, true},
             {"sh -c 'echo out; echo err >&2; exit 1'", 1, false},
             {"sh -c 'echo out; echo err >&2; exit 128'", 128, true},
             {"sh -c 'echo out; echo err >&2; exit 255'", 255, false},
             {"exec sh -c 'echo out; echo err >&2; kill -9 $$'", 0, true},
         }) {
        const Phone phone;
        for (const bool quiet : {false, true}) {
            const bool silent = quiet && success;
            QString command = ending;
            QStringList shown;
            Dialogs dialogs(silent ? QList<Dialogs::Step>() : QList{reading(shown)});
            bool result = !success;
            const QByteArray output = outputOf([&] { result = runShellCommand(command, quiet); });
            EXPECT_EQ(result, success) << ending;
            EXPECT_EQ(output, started(ending, status) + (silent ? "" : "out\nerr\n"));
            EXPECT_EQ(shown, silent    ? QStringList()
                             : success ? QStringList({"POP_OK_TITLE", "POP_OK_TEXT"})
                                       : QStringList({"POP_ERROR_TITLE", "out\nerr\n"}));
            EXPECT_EQ(command, QString(ending) + " > " + phone.host(logFile) + " 2>&1");
            EXPECT_EQ(readFile(phone.host(logFile)), silent ? "out\nerr\n" : "");
            EXPECT_EQ(exists(phone.host(logFile)), silent);
        }
    }
}

TEST(Shell, ALogOfAnotherIsNeitherShownNorTakenAway) {
    const Phone phone;
    const QByteArray log = phone.host(logFile);
    QStringList shown;
    Dialogs dialogs({reading(shown)});
    const QString plain = "sh -c 'rm " + log + "; echo foreign > " + log + "; exit 1'";
    QString command = plain;
    EXPECT_EQ(outputOf([&] { EXPECT_FALSE(runShellCommand(command, true)); }), started(plain, 1));
    EXPECT_EQ(shown, (QStringList{"POP_ERROR_TITLE", ""}));
    EXPECT_EQ(readFile(log), "foreign\n");
}

TEST(Shell, WhatLiesInTheLogsPlaceIsNeitherUsedNorHarmed) {
    for (const auto& [prepare, runs] : Rows<QByteArray, bool>{
             {"mkfifo LOG", true},
             {"echo kept > LOG.other; ln -s LOG.other LOG", true},
             {"echo kept > LOG.other; ln LOG.other LOG", true},
             {"mkdir LOG", true},
             {"mkdir -p LOG/full", false},
             {"rm -r ${LOG%/*}", false},
         }) {
        const Phone phone;
        const QByteArray log = phone.host(logFile);
        EXPECT_EQ(runSystem("LOG=" + log + "; " + QByteArray(prepare).replace(" LOG", " $LOG")), 0);
        QStringList shown;
        Dialogs dialogs(runs ? QList<Dialogs::Step>() : QList{reading(shown)});
        QString command = "echo own; touch " + phone.host("/done");
        const QByteArray output =
            outputOf([&] { EXPECT_EQ(runShellCommand(command, true), runs); });
        EXPECT_EQ(exists(phone.host("/done")), runs) << prepare.constData();
        EXPECT_EQ(output.isEmpty(), !runs) << prepare.constData();
        EXPECT_EQ(shown,
                  runs ? QStringList() : QStringList({"POP_ERROR_TITLE", "POP_ERROR_LOG_TEXT"}));
        if (exists(log + ".other")) {
            EXPECT_EQ(readFile(log + ".other"), "kept\n") << prepare.constData();
        }
    }
}

TEST(Shell, CommandsReadNothingOfTheProgramsInput) {
    const Phone phone;
    phone.makeFile("/input", "an answer");
    const int before = dup(STDIN_FILENO);
    const int input = open(phone.host("/input").constData(), O_RDONLY);
    dup2(input, STDIN_FILENO);
    EXPECT_EQ(outputOf([] { runSystem("cat"); }), "");
    dup2(before, STDIN_FILENO);
    close(input);
    close(before);
}

TEST(Shell, CommandsEndWhereNobodyReadsThem) {
    const Phone phone;
    signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(runSystem("sh -c 'kill -PIPE $$; exit 0'"), (128 + SIGPIPE) << 8);
    EXPECT_EQ(raise(SIGPIPE), 0); // and the program does not
}

TEST(Shell, APathReachesTheShellAsItIsOrNotAtAll) {
    const Phone phone;
    const QString path = "/x'; touch " + phone.host("/harm") + "; '";
    QStringList shown;
    Dialogs dialogs({reading(shown)});
    EXPECT_EQ(outputOf([&] { EXPECT_FALSE(runPathCommand(path, "ls '" + path + "'", true)); }), "");
    EXPECT_EQ(shown, (QStringList{"POP_ERROR_TITLE", "POP_ERROR_QUOTE_TEXT"}));
    EXPECT_FALSE(exists(phone.host("/harm")));
    const QString harmless = "/$(touch x)\"`;&|<>*?\\ И\n";
    outputOf([&] {
        EXPECT_TRUE(runPathCommand(harmless, QString("printf %s '%1'").arg(harmless), true));
    });
    EXPECT_EQ(readFile(phone.host(logFile)), harmless.toUtf8());
}
