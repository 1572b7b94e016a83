#pragma once

#include <QStringList>

#include <map>

/// How a command line was called, without the options that all commands take.
struct Call {
    QStringList arguments;
    std::map<QString, QString> options; ///< by their names; the value is empty where it takes none

    bool has(const QString& option) const { return options.contains(option); }

    QString value(const QString& option) const {
        const auto found = options.find(option);
        return found == options.end() ? QString() : found->second;
    }
};

/// What a command needs to have done before it runs.
enum class Access {
    Nothing, ///< no phone
    Reads,   ///< a phone, where nothing is changed and others may be at work
    Writes   ///< a phone of its own for as long as it runs
};

struct CommandOption {
    const char* name;  ///< one letter or a word
    const char* value; ///< what stands for its value in the help; null where it takes none
    const char* help;
};

struct Command {
    const char* name;
    const char* arguments; ///< as the help shows them
    int least;             ///< arguments that it needs
    int most;              ///< arguments that it takes; negative for any number
    Access (*access)(const Call& call);
    int (*run)(const Call& call); ///< gives the exit status
    const char* summary;
    QList<CommandOption> options;
};

/// All commands, in the order of the help.
const QList<Command>& commands();

/// Null where there is none of that name.
const Command* findCommand(const QString& name);

int runList(const Call& call);
int runInfo(const Call& call);
int runInstall(const Call& call);
int runUpgrade(const Call& call);
int runRemove(const Call& call);
int runMove(const Call& call);
int runRename(const Call& call);
int runSave(const Call& call);
int runMenu(const Call& call);
int runScan(const Call& call);
int runCheck(const Call& call);
int runPack(const Call& call);
int runNew(const Call& call);
int runHelp(const Call& call);
