#include "batch.h"
#include "commands.h"
#include "operations.h"
#include "output.h"
#include "terminal.h"

namespace {

QString detailsOf(const std::vector<ZPK_App*>& apps) {
    QStringList lines;
    for (const ZPK_App* app : apps)
        lines.append(app->shownName().trimmed() + "  " + app->path);
    return lines.join('\n');
}

} // namespace

int runRemove(const Call& call) {
    std::vector<Installed> apps = installedApps();
    const std::vector<ZPK_App*> chosen = chooseApps(apps, call.arguments);
    const QString question =
        QString("Remove %1, with all their files?").arg(counted(int(chosen.size()), "application"));
    if (!chosen.empty() && confirm(question, detailsOf(chosen)))
        doToEach(
            chosen, [](ZPK_App& app) { return deleteApp(app, true); },
            [](const ZPK_App& app) { return app.shownName().trimmed() + " is removed."; });
    return finish();
}
