#include "apps.h"
#include "commands.h"
#include "discovery.h"
#include "output.h"

int runScan(const Call&) {
    const QHash<QString, AppRow> before = rowsByPath();
    findApps();
    const QHash<QString, AppRow> after = rowsByPath();
    const std::vector<Installed> apps = installedApps();
    int added = 0;
    for (const Installed& installed : apps) {
        const QString& path = installed.app->path;
        if (!after.contains(path))
            fail(installed.app->shownName().trimmed(), "could not be entered into the database");
        else if (!before.contains(path))
            ++added;
    }
    succeed(QString(), QString("%1, %2 of them new")
                           .arg(counted(int(apps.size()), "application"), QString::number(added)));
    return finish();
}
