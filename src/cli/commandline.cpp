#include "commandline.h"

#include "options.h"

#include <QCommandLineParser>

namespace {

struct Switch {
    const char* name;
    bool& value;
};

const Switch switches[] = {{"json", Option::json},
                           {"yes", Option::yes},
                           {"quiet", Option::quiet},
                           {"verbose", Option::verbose},
                           {"no-card", Option::noCard}};

bool isSwitch(const QString& argument) {
    for (const Switch& option : switches) {
        if (argument == "--" + QString(option.name))
            return true;
    }
    return false;
}

/// The place of the first argument that is no option that all commands take.
qsizetype firstOwn(const QStringList& arguments) {
    qsizetype at = 0;
    while (at < arguments.size()) {
        const QString& argument = arguments.at(at);
        if (argument == u"--root" || argument == u"--card")
            at += 2;
        else if (isSwitch(argument) || argument.startsWith("--root=") ||
                 argument.startsWith("--card="))
            ++at;
        else
            break;
    }
    return qMin(at, arguments.size());
}

bool isForProgram(const QString& first) {
    return first.isEmpty() || first == u"x" || first == u"--install" || first == u"--version" ||
           first.startsWith("--list-apps");
}

bool isPackage(const QString& name) {
    return name.endsWith(".zpk", Qt::CaseInsensitive) || name.endsWith(".zsk", Qt::CaseInsensitive);
}

/// The options of `command`, which may be null, with those of all.
QList<QCommandLineOption> optionsOf(const Command* command) {
    QList<QCommandLineOption> options = {QCommandLineOption("root", QString(), "DIR"),
                                         QCommandLineOption("card", QString(), "DIR")};
    for (const Switch& option : switches)
        options.append(QCommandLineOption(option.name));
    for (const CommandOption& option : command ? command->options : QList<CommandOption>())
        options.append(
            QCommandLineOption(option.name, QString(), option.value ? option.value : ""));
    return options;
}

QString wrongNumber(const Command& command, qsizetype count) {
    if (count < command.least)
        return QString("%1 needs %2").arg(command.name, command.arguments);
    if (command.most < 0 || count <= command.most)
        return QString();
    return command.most == 0
               ? QString("%1 takes no arguments").arg(command.name)
               : QString("%1 takes no more than %2").arg(command.name, command.arguments);
}

/// Reads the options of all commands and those of the command, wherever they stand.
void parse(const QStringList& arguments, CommandLine& line) {
    QCommandLineParser parser;
    parser.addOptions(optionsOf(line.command));
    if (!parser.parse(QStringList{"quiver"} + arguments)) {
        line.error = parser.errorText();
        line.error.chop(1); // the full stop
        return;
    }
    line.root = parser.value("root");
    if (parser.isSet("root") && line.root.isEmpty())
        line.error = "--root needs a folder";
    Option::card = parser.value("card");
    if (parser.isSet("card") && Option::card.isEmpty())
        line.error = "--card needs a folder";
    for (const Switch& option : switches)
        option.value = parser.isSet(option.name);
    line.call.arguments = parser.positionalArguments();
    for (const CommandOption& option :
         line.command ? line.command->options : QList<CommandOption>()) {
        if (parser.isSet(option.name))
            line.call.options[option.name] = parser.value(option.name);
    }
}

} // namespace

CommandLine readCommandLine(const QStringList& arguments) {
    CommandLine line;
    const qsizetype own = firstOwn(arguments);
    const QString first = arguments.value(own);
    const QStringList rest = arguments.mid(own);
    line.command = first == u"--help" || first == u"-h" ? findCommand("help") : findCommand(first);
    if (line.command && rest.mid(1).contains("--help")) {
        line.command = findCommand("help");
        line.call.arguments = {first};
        return line;
    }
    if (line.command) {
        parse(arguments.mid(0, own) + arguments.mid(own + 1), line);
        if (line.error.isEmpty())
            line.error = wrongNumber(*line.command, line.call.arguments.size());
        return line;
    }
    parse(arguments.mid(0, own), line);
    if (isForProgram(first))
        line.arguments = rest;
    else if (isPackage(first) && rest.size() == 1)
        line.arguments = QStringList{"x"} + rest;
    else if (line.error.isEmpty())
        line.error = isPackage(first) ? QString("one package at a time; see quiver help install")
                                      : QString("there is no command '%1'").arg(first);
    return line;
}
