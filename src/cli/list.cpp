#include "appregistry.h"
#include "apps.h"
#include "commands.h"
#include "options.h"
#include "output.h"

#include <QJsonArray>

namespace {

bool isWanted(const ZPK_App& app, const Call& call) {
    return (!call.has("place") || placeName(app.location) == call.value("place")) &&
           (!call.has("menu") || app.registeredInMenu);
}

QStringList rowOf(const Installed& installed, bool isLong) {
    const ZPK_App& app = *installed.app;
    QStringList row = {app.shownName().trimmed(), app.version.trimmed(), placeName(app.location),
                       installed.folder, app.registeredInMenu ? "menu" : ""};
    if (isLong)
        row += {app.author.trimmed(), app.uuid ? plainUuid(*app.uuid) : QString(), app.path};
    return row;
}

} // namespace

int runList(const Call& call) {
    const QString place = call.value("place");
    if (call.has("place") && place != u"phone" && place != u"card")
        return misuse(QString("'%1' is no place: phone or card").arg(place));
    QJsonArray documents;
    QList<QStringList> rows;
    for (const Installed& installed : installedApps()) {
        if (!isWanted(*installed.app, call))
            continue;
        if (Option::json)
            documents.append(describe(*installed.app));
        else
            rows.append(rowOf(installed, call.has("long")));
    }
    QStringList headings = {"NAME", "VERSION", "PLACE", "FOLDER", "MENU"};
    if (call.has("long"))
        headings += {"AUTHOR", "IDENTIFIER", "PATH"};
    if (Option::json)
        printDocument({{"applications", documents}});
    else
        printTable(headings, rows);
    return 0;
}
