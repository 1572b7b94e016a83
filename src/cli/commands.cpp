#include "commands.h"

namespace {

Access nothing(const Call&) {
    return Access::Nothing;
}

Access reads(const Call&) {
    return Access::Reads;
}

Access writes(const Call&) {
    return Access::Writes;
}

const QList<Command> table = {
    {"list",
     "",
     0,
     0,
     reads,
     runList,
     "lists the applications",
     {{"place", "phone|card", "only those that lie there"},
      {"menu", nullptr, "only those in the phone's menu"},
      {"long", nullptr, "with author, identifier and path"}}},
    {"info", "APP|FILE", 1, 1, reads, runInfo, "tells all of an application or a package", {}},
    {"install",
     "FILE...",
     1,
     -1,
     writes,
     runInstall,
     "installs packages",
     {{"to", "phone|card|ext", "where to, for skins also the card's extended partition"}}},
    {"upgrade",
     "FILE|DIR...",
     1,
     -1,
     [](const Call& call) { return call.has("dry-run") ? Access::Reads : Access::Writes; },
     runUpgrade,
     "installs what is newer than what is installed",
     {{"dry-run", nullptr, "tells what would be installed"}}},
    {"remove", "APP...", 1, -1, writes, runRemove, "deletes applications", {}},
    {"move",
     "APP... --to PLACE",
     1,
     -1,
     writes,
     runMove,
     "moves them to the phone or the card",
     {{"to", "phone|card", "where to"}}},
    {"rename", "APP NAME", 2, 2, writes, runRename, "gives one another display name", {}},
    {"save",
     "APP... [--to PLACE|DIR]",
     1,
     -1,
     writes,
     runSave,
     "packs applications into packages",
     {{"to", "phone|card|DIR", "where to; by default the phone's folder of packages"}}},
    {"menu",
     "[add|remove APP... | sync]",
     0,
     -1,
     [](const Call& call) {
         return call.arguments.isEmpty() || call.arguments == QStringList{"sync"} ? Access::Reads
                                                                                  : Access::Writes;
     },
     runMenu,
     "changes or lists the phone's menu",
     {}},
    {"scan", "", 0, 0, writes, runScan, "finds applications and enters them", {}},
    {"check",
     "",
     0,
     0,
     [](const Call& call) { return call.has("repair") ? Access::Writes : Access::Reads; },
     runCheck,
     "tells what does not agree on the phone",
     {{"repair", nullptr, "mends it, after a question"}}},
    {"pack",
     "FOLDER [-o FILE]",
     1,
     1,
     nothing,
     runPack,
     "makes a package of an application's folder",
     {{"o", "FILE", "the package; by default FOLDER.zpk in the working directory"}}},
    {"new",
     "DIR",
     1,
     1,
     nothing,
     runNew,
     "makes a folder the root of a phone",
     {{"language", "CODE", "the phone's language; by default en"}}},
    {"help", "[COMMAND]", 0, 1, nothing, runHelp, "tells of the commands, or of one", {}},
};

} // namespace

const QList<Command>& commands() {
    return table;
}

const Command* findCommand(const QString& name) {
    for (const Command& command : commands()) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}
