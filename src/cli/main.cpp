#include "Bytes.h"
#include "Environment.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "commandline.h"
#include "database.h"
#include "output.h"
#include "paths.h"
#include "phone.h"
#include "shell.h"
#include "terminal.h"
#include "upgrade.h"

#include <cstdio>

namespace {

/// The window, or a package's questions, in the phone's own program.
int startProgram(const CommandLine& line) {
    if (line.arguments.value(0) == u"x" && line.arguments.size() == 2 &&
        !exists(line.arguments.at(1))) {
        tell(QString("there is no file '%1'").arg(line.arguments.at(1)));
        return 1;
    }
    return choosePhone(line.root) ? startPhoneProgram(line.arguments) : 1;
}

int runOnPhone(const Command& command, const CommandLine& line) {
    const bool writes = command.access(line.call) == Access::Writes;
    if (!choosePhone(line.root) || (writes && !takePhone()))
        return 1;
    if (!writes)
        readPhone();
    // A check finds out by itself.
    if (command.run != runCheck && !isAppDbUsable() &&
        (writes || exists(hostPath(Path::database)))) {
        tell("the phone's database cannot be used; see quiver help check");
        if (writes)
            return 1;
    }
    if (writes)
        startWork();
    if (writes && command.run != runCheck) // which asks before it mends
        mendUpgrades();
    const int status = command.run(line.call);
    return writes && !showInSession() ? 1 : status;
}

} // namespace

int main(int argc, char** argv) {
    rememberEnvironment();
    outliveReaders();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(fromBytes(argv[i]));
    const CommandLine line = readCommandLine(arguments);
    if (line.error.isEmpty() && !line.command && line.arguments == QStringList{"--version"}) {
        puts("quiver " QUIVER_VERSION);
        return 0;
    }
    if (!line.error.isEmpty())
        return misuse(line.error + "; see quiver help");
    if (!line.command)
        return startProgram(line);
    keepOutputForResults();
    const bool needsPhone = line.command->access(line.call) != Access::Nothing;
    return closeResults(needsPhone ? runOnPhone(*line.command, line)
                                   : line.command->run(line.call));
}
