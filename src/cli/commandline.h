#pragma once

#include "commands.h"

/// What the program was called for.
struct CommandLine {
    QString root;                     ///< of `--root`; empty where it is not given
    const Command* command = nullptr; ///< null where the phone's own program is meant
    Call call;
    QStringList arguments; ///< for the phone's own program
    QString error;         ///< why the command line is wrong; empty where it is not
};

/// Reads the program's arguments, without its name. Options that every command takes are set.
CommandLine readCommandLine(const QStringList& arguments);
