#include "Bytes.h"
#include "batch.h"
#include "commands.h"
#include "descriptor.h"
#include "menu.h"
#include "operations.h"
#include "output.h"

#include <algorithm>

namespace {

bool isName(const QString& name) {
    return !name.trimmed().isEmpty() && toBytes(name).size() <= longestValue &&
           std::none_of(name.begin(), name.end(),
                        [](QChar c) { return c.category() == QChar::Other_Control; });
}

/// Where the descriptor keeps the old name, so do the database and the phone's menu.
bool rename(ZPK_App& app, const QString& name) {
    const QString before = app.name;
    if (renameApp(app, name))
        return true;
    app.name = before;
    updateAppRecord(app.uuid.get(), app.name, app.path, app.location);
    if (app.registeredInMenu)
        updateAppInMenu(app);
    return false;
}

} // namespace

int runRename(const Call& call) {
    const QString name = call.arguments.at(1);
    if (!isName(name))
        return misuse("a name is one line of at most 127 bytes, and not blank");
    std::vector<Installed> apps = installedApps();
    doToEach(
        chooseApps(apps, {call.arguments.first()}), [&](ZPK_App& app) { return rename(app, name); },
        [&](const ZPK_App& app) {
            return QString("%1 is called %2.").arg(app.shownName().trimmed(), name.trimmed());
        });
    return finish();
}
