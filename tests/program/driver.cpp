#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "agreement.h"
#include "database.h"
#include "discovery.h"
#include "menu.h"
#include "operations.h"
#include "paths.h"
#include "settings.h"
#include "storage.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>

#include <unistd.h>

// Does one operation on the one application of the phone in QUIVER_ROOT, so that it can be killed
// on the way; or, as "check", does all of them on what a killed one has left; or, as "everything",
// on any number of applications whatever they are called.

namespace {

bool failed = false;

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

void expect(bool isTrue, const char* what, const ZPK_App& app) {
    if (isTrue)
        return;
    fprintf(stderr, "%s: %s\n", what, toBytes(app.path).constData());
    failed = true;
}

/// Moves the application; a single quote in its path is in the way.
void moveOrRefuse(ZPK_App& app) {
    const QString before = app.path;
    const bool isQuoted = before.contains('\'');
    expect(moveApp(app, true) != isQuoted, "move", app);
    expect((app.path == before) == isQuoted, "place", app);
}

/// What a fresh program would find.
QList<ZPK_App*> allButTheBystander() {
    discoverApps();
    failed = !agrees("discovery") || failed;
    QList<ZPK_App*> apps;
    for (const auto& [key, app] : AppMap) {
        if (app->name != u"Bystander")
            apps.append(app.get());
    }
    fprintf(stderr, "%d applications\n", int(apps.size()));
    return apps;
}

/// Every operation on every application but the bystander; those that cannot be deleted are left.
bool doEverything() {
    const std::function<void(ZPK_App&)> operations[] = {
        [](ZPK_App& app) { registerAppInMenu(app); },
        [](ZPK_App& app) { saveApp(app, Path::phonePackages, true); },
        moveOrRefuse,
        [](ZPK_App& app) { renameApp(app, "New" + app.name.trimmed()); },
        moveOrRefuse,
        [](ZPK_App& app) { unregisterAppFromMenu(app); }};
    const QList<ZPK_App*> apps = allButTheBystander();
    for (const auto& operation : operations) {
        for (ZPK_App* app : apps)
            operation(*app);
        failed = !agrees("operation") || failed;
    }
    for (ZPK_App* app : allButTheBystander())
        expect(deleteApp(*app, true) != app->path.contains('\''), "delete", *app);
    for (const QString& what : leftovers()) {
        fprintf(stderr, "left over: %s\n", qPrintable(what));
        failed = true;
    }
    return !failed;
}

} // namespace

int main(int argc, char** argv) {
    QString error;
    if (argc != 2 || !preparePhoneRoot(error))
        return 2;
    const std::string_view operation = argv[1];
    prepareStorage();
    openAppDb();
    ArchiverPath = qEnvironmentVariable("SEVEN_ZIP");
    srand(getpid());
    discoverApps();
    if (operation == "check")
        return check() ? 0 : 1;
    if (operation == "everything") {
        const ZApplication application(argc, argv, ZApplication::GuiClient); // errors are shown
        return doEverything() ? 0 : 1;
    }
    qputenv("DRIVER", QByteArray::number(getpid()));
    fflush(stdout);
    fputs("START\n", stderr);
    if (!AppMap.empty())
        perform(operation, *AppMap.begin()->second);
    return 0;
}
