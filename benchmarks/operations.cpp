// Does one operation to every application of the phone at QUIVER_ROOT, as a batch of the window
// does: operations register|move|delete. On standard error: the milliseconds that it took.

#include "operations.h"
#include "PhoneRoot.h"
#include "database.h"
#include "discovery.h"
#include "menu.h"
#include "storage.h"

#include <QElapsedTimer>

#include <cstdio>
#include <map>
#include <vector>

namespace {

using Operation = bool (*)(ZPK_App& app);

const std::map<QByteArray, Operation> operations = {
    {"register", registerAppInMenu},
    {"move", [](ZPK_App& app) { return moveApp(app, true); }},
    {"delete", [](ZPK_App& app) { return deleteApp(app, true); }},
};

/// All applications; a deletion takes its own out of `AppMap`.
std::vector<ZPK_App*> allApps() {
    std::vector<ZPK_App*> apps;
    for (const auto& [key, app] : AppMap)
        apps.push_back(app.get());
    return apps;
}

} // namespace

int main(int argc, char** argv) {
    const auto operation = operations.find(argc == 2 ? argv[1] : "");
    QString error;
    if (operation == operations.end() || !preparePhoneRoot(error)) {
        fprintf(stderr, "usage: operations register|move|delete %s\n", qPrintable(error));
        return 2;
    }
    prepareStorage();
    if (!openAppDb())
        return 1;
    discoverApps();
    const std::vector<ZPK_App*> apps = allApps();
    bool done = !apps.empty();
    QElapsedTimer timer;
    timer.start();
    for (ZPK_App* app : apps)
        done = operation->second(*app) && done;
    fprintf(stderr, "%.3f\n", double(timer.nsecsElapsed()) / 1e6);
    return closeAppDb() && done ? 0 : 1;
}
