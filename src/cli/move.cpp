#include "batch.h"
#include "commands.h"
#include "operations.h"
#include "output.h"
#include "storage.h"

int runMove(const Call& call) {
    if (!call.has("to"))
        return misuse("say where to: --to phone or --to card");
    const std::optional<int> place = placeOf(call.value("to"));
    if (!place)
        return 2;
    const QString where = *place == memoryCard ? "the card" : "the phone";
    std::vector<Installed> apps = installedApps();
    // What is there already is where it should be.
    doToEach(
        chooseApps(apps, call.arguments),
        [&](ZPK_App& app) { return app.location == *place || moveApp(app, true); },
        [&](const ZPK_App& app) {
            return QString("%1 is on %2.").arg(app.shownName().trimmed(), where);
        });
    return finish();
}
