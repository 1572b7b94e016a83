#include "PhoneRoot.h"
#include "database.h"
#include "discovery.h"
#include "menu.h"
#include "operations.h"
#include "ops_agreement.h"
#include "storage.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <unistd.h>

// Does one operation on the one application of the phone in QUIVER_ROOT, so that it can be killed
// on the way; or, as "check", does all of them on what a killed one has left.

namespace {

void perform(std::string_view operation, ZPK_App& app) {
    if (operation == "register")
        registerAppInMenu(app);
    else if (operation == "unregister")
        unregisterAppFromMenu(app);
    else if (operation == "rename")
        renameApp(app, "Renamed");
    else if (operation == "move")
        moveApp(app, true);
    else if (operation == "delete")
        deleteApp(app, true);
}

bool agrees(const char* when) {
    const QStringList found = disagreements();
    for (const QString& what : found)
        fprintf(stderr, "%s: %s\n", when, qPrintable(what));
    return found.isEmpty();
}

/// As a user would go on after a restart: each operation must work, and everything agree again once
/// the interrupted one has been repeated.
bool check() {
    if (AppMap.empty())
        return true;
    if (AppMap.size() != 1)
        return false;
    ZPK_App& app = *AppMap.begin()->second;
    fprintf(stderr, "found %s\n", qPrintable(hostPath(app.path)));
    if (!app.registeredInMenu)
        registerAppInMenu(app);
    unregisterAppFromMenu(app);
    renameApp(app, "Another");
    bool good = agrees("unregister");
    registerAppInMenu(app);
    good = agrees("register") && good;
    const QString path = app.path;
    good = moveApp(app, true) && agrees("move") && good;
    discoverApps();
    ZPK_App& moved = *AppMap.begin()->second;
    good = AppMap.size() == 1 && agrees("discovery") && good;
    good = moveApp(moved, true) && moved.path == path && agrees("move back") && good;
    good = deleteApp(moved, true) && good;
    discoverApps();
    for (const QString& what : leftovers())
        fprintf(stderr, "left over: %s\n", qPrintable(what));
    return good && AppMap.empty();
}

} // namespace

int main(int argc, char** argv) {
    QString error;
    if (argc != 2 || !preparePhoneRoot(error))
        return 2;
    const std::string_view operation = argv[1];
    prepareStorage();
    openAppDb();
    srand(getpid());
    discoverApps();
    if (operation == "check")
        return check() ? 0 : 1;
    qputenv("DRIVER", QByteArray::number(getpid()));
    fflush(stdout);
    fputs("START\n", stderr);
    if (!AppMap.empty())
        perform(operation, *AppMap.begin()->second);
    return 0;
}
