#include "question.h"

#include "ZPK_App.h"
#include "dialogs.h"
#include "language.h"
#include "objections.h"
#include "packageinfo.h"
#include "room.h"
#include "shell.h"
#include "version.h"

#include <QLocale>

namespace {

const QString packageIcon = "Mpkgbox_Small.g";

QString dataSize(qint64 bytes) {
    return QLocale(languageCode()).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

/// The package's version beside the installed one.
QString versionText(const PackageInfo& info) {
    const QString version = info.app->version.trimmed();
    const std::optional<QString> installed = installedVersion(info.folder);
    if (!installed)
        return version;
    const int difference = compareVersions(version, *installed);
    const char* key = difference == 0  ? "TXT_SAME_VERSION"
                      : difference > 0 ? "TXT_REPLACES"
                                       : "TXT_OLDER_VERSION";
    const auto shown = [](const QString& text) { return text.isEmpty() ? QString("-") : text; };
    return tr(key).replace("%2", shown(installed->trimmed())).replace("%1", shown(version));
}

Details detailsOf(const Package& package) {
    const PackageInfo& info = *package.info;
    const bool isSkin = package.path.endsWith(".zsk", Qt::CaseInsensitive);
    Details details;
    details.heading = info.app ? info.app->name.trimmed() : QString();
    if (details.heading.isEmpty())
        details.heading = info.folder.isEmpty() ? fileName(package) : info.folder;
    if (info.app)
        details.subheading = versionText(info);
    else if (!isSkin)
        details.subheading = tr("TXT_NO_APP");
    details.icon = info.icon;
    if (info.app && !info.app->author.trimmed().isEmpty())
        details.facts.append({tr("APP_AUTHOR"), info.app->author.trimmed()});
    details.facts.append({tr("TXT_UNPACKED"), dataSize(info.bytes)});
    details.facts.append({tr("TXT_FILES"), QString::number(info.files)});
    return details;
}

bool refuse(const QString& refusal) {
    if (!refusal.isEmpty())
        showError(refusal);
    return !refusal.isEmpty();
}

bool refuse(const char* objection) {
    return refuse(objection ? tr(objection) : QString());
}

/// The text that tells what the free space is enough for.
const char* freeKey(const Package& package, const QString& folder) {
    if (!package.info)
        return "TXT_FREE";
    if (!fits(*package.info, folder))
        return "TXT_TOO_SMALL";
    return fitsBeside(*package.info, folder) ? "TXT_FREE" : "TXT_TIGHT";
}

QList<Choice> choicesOf(const QList<Place>& places, const Package& package) {
    QList<Choice> choices;
    for (const Place& place : places) {
        Choice choice = {tr(place.key), place.iconName};
        if (const std::optional<qint64> free = freeBytes(place.folder))
            choice.secondText = tr(freeKey(package, place.folder)).arg(dataSize(*free));
        choices.append(choice);
    }
    return choices;
}

} // namespace

QString refusalText(const Package& package, const QString& folder) {
    for (const char* objection : {objectionTo(package), objectionThere(package, folder)}) {
        if (objection)
            return tr(objection);
    }
    if (!package.info || fits(*package.info, folder))
        return QString();
    return tr("POP_ERROR_SPACE_TEXT")
        .arg(dataSize(bytesNeeded(*package.info, folder)), dataSize(*freeBytes(folder)));
}

bool askToInstall(const QString& title, const QString& text, const Package& package) {
    if (refuse(objectionTo(package)))
        return false;
    const QString name = fileName(package);
    Details details = package.info ? detailsOf(package) : Details();
    if (!text.contains(name))
        details.facts.prepend({tr("TXT_PACKAGE"), name});
    return package.info || !details.facts.isEmpty() ? askAbout(title, text, details, packageIcon)
                                                    : askYesNo(title, text, packageIcon);
}

std::optional<QString> askPlace(const Question& question, const QList<Place>& places,
                                const Place& other, const Package& package) {
    if (refuse(objectionTo(package)))
        return std::nullopt;
    const std::optional<int> chosen =
        chooseOne(tr(question.title), tr(question.text), choicesOf(places, package), packageIcon);
    if (!chosen)
        return std::nullopt;
    const QString folder = places.value(*chosen, other).folder;
    return refuse(refusalText(package, folder)) ? std::nullopt : std::optional(folder);
}
