#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "ZPK_App.h"
#include "apps.h"
#include "commands.h"
#include "dialogs.h"
#include "options.h"
#include "output.h"
#include "paths.h"
#include "storage.h"
#include "terminal.h"
#include "unpacking.h"

namespace {

struct Target {
    QString name; ///< as `--to` has it
    QString apps; ///< folders of the phone; empty where such packages cannot go there
    QString skins;
};

QList<Target> targets() {
    QList<Target> list = {{"phone", Path::phoneApps, Path::phoneSkins}};
    if (SdPresent)
        list.append({"card", Path::cardApps, Path::cardSkins});
    if (SdPresent && SdExtPresent)
        list.append({"ext", QString(), Path::extSkins});
    return list;
}

const QString& folderOf(const Target& target, const Package& package) {
    return isSkin(package) ? target.skins : target.apps;
}

/// The folders that the package can go to, or the one that `wanted` names.
QList<Target> choicesFor(const Package& package, const QString& wanted) {
    QList<Target> choices;
    for (const Target& target : targets()) {
        if (!folderOf(target, package).isEmpty() && (wanted.isEmpty() || target.name == wanted))
            choices.append(target);
    }
    return choices;
}

/// Of several places, the one where the package is installed already; all of them where that tells
/// nothing.
QList<Target> placesOf(const Package& package, const QList<Target>& choices) {
    QList<Target> places;
    for (const Target& target : choices) {
        if (exists(hostPath(folderOf(target, package) + '/' + package.info->folder)))
            places.append(target);
    }
    return places.size() == 1 && !package.info->folder.isEmpty() ? places : choices;
}

/// Where the package goes; none, told, where that is not known.
std::optional<QString> folderFor(const Package& package, const QString& wanted) {
    const QList<Target> choices = placesOf(package, choicesFor(package, wanted));
    if (choices.size() == 1)
        return folderOf(choices.first(), package);
    if (choices.isEmpty()) {
        fail(fileName(package), QString("cannot go to '%1'").arg(wanted));
        return std::nullopt;
    }
    QList<Choice> names;
    for (const Target& target : choices)
        names.append({target.name, QString()});
    const std::optional<int> chosen =
        Option::yes ? std::nullopt : chooseOne(fileName(package), "Where to?", names);
    if (!chosen)
        fail(fileName(package), "say where to with --to");
    return chosen ? std::optional(folderOf(choices.at(*chosen), package)) : std::nullopt;
}

QString lineOf(const Plan& plan) {
    const PackageInfo& info = *plan.package.info;
    QString line = fileName(plan.package);
    if (info.app)
        line +=
            QString(": %1 %2").arg(info.app->shownName().trimmed(), info.app->version.trimmed());
    return QString("%1, %2, into %3").arg(line.trimmed(), sizeWords(info.bytes), plan.folder);
}

} // namespace

int runInstall(const Call& call) {
    const QString wanted = call.value("to");
    if (call.has("to") && wanted != u"phone" && wanted != u"card" && wanted != u"ext")
        return misuse(QString("'%1' is no place: phone, card or ext").arg(wanted));
    QList<Plan> plans;
    QStringList lines;
    for (const QString& file : call.arguments) {
        const std::optional<Package> package =
            readForInstallation(absolutePath(file), !Option::yes);
        const std::optional<QString> folder = package ? folderFor(*package, wanted) : std::nullopt;
        if (!folder)
            continue;
        plans.append({*package, *folder});
        lines.append(lineOf(plans.last()));
    }
    const QString question = QString("Install %1?").arg(counted(int(plans.size()), "package"));
    if (!plans.isEmpty() && confirm(question, lines.join('\n')))
        installAll(plans);
    return finish();
}
