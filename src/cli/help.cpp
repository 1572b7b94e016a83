#include "commands.h"
#include "output.h"

namespace {

constexpr int column = 34;

QString inColumns(const QString& left, const QString& right) {
    return "  " + left.leftJustified(column) + ' ' + right;
}

QString usageOf(const Command& command) {
    return (QString(command.name) + ' ' + command.arguments).trimmed();
}

QString optionText(const CommandOption& option) {
    const QString name = QString(option.name).size() == 1 ? "-" : "--";
    return name + option.name + (option.value ? ' ' + QString(option.value) : QString());
}

int helpAll() {
    printResult(
        "usage: quiver [OPTION...] [COMMAND [ARGUMENT...]]   without a command: the window\n"
        "       quiver FILE.zpk | FILE.zsk                  as a double click does\n");
    for (const Command& command : commands())
        printResult(inColumns(usageOf(command), command.summary));
    printResult(
        "\nAn APP is a folder name, a display name, an identifier or a path.\n"
        "Options: --root DIR, --json, --yes, --quiet, --verbose, --version; see quiver(1).");
    return 0;
}

int helpOne(const Command& command) {
    printResult("usage: quiver " + usageOf(command) + "\n\n" + command.summary);
    for (const CommandOption& option : command.options)
        printResult(inColumns(optionText(option), option.help));
    return 0;
}

} // namespace

int runHelp(const Call& call) {
    if (call.arguments.isEmpty())
        return helpAll();
    const Command* command = findCommand(call.arguments.first());
    return command ? helpOne(*command)
                   : misuse(QString("there is no command '%1'").arg(call.arguments.first()));
}
