#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZPopup.h"
#include "agreement.h"
#include "database.h"
#include "discovery.h"
#include "install.h"
#include "menu.h"
#include "operations.h"
#include "packageinfo.h"
#include "paths.h"
#include "settings.h"
#include "storage.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>

#include <unistd.h>

// Does one operation on the one application of the phone in QUIVER_ROOT, so that it can be killed
// on the way; or, as "install", an installation; or, as "check", does all of them on what a killed
// one has left; or, as "everything", on any number of applications whatever they are called.

namespace {

using Operation = std::function<bool(ZPK_App&)>;

bool isQuoted(const ZPK_App& app) {
    return app.path.contains('\'');
}

/// Each gives true where it did what it should; a single quote in the path is in the way of some.
const std::pair<std::string_view, Operation> operations[] = {
    {"register", [](ZPK_App& app) { return registerAppInMenu(app); }},
    {"unregister", [](ZPK_App& app) { return unregisterAppFromMenu(app); }},
    {"rename", [](ZPK_App& app) { return renameApp(app, "New" + app.name.trimmed()), true; }},
    {"move", [](ZPK_App& app) { return moveApp(app, true) != isQuoted(app); }},
    {"save", [](ZPK_App& app) { return saveApp(app, hostPath(Path::phonePackages), true), true; }},
    {"delete",
     [](ZPK_App& app) {
         const bool isLeft = isQuoted(app);
         return deleteApp(app, true) != isLeft;
     }},
};

bool perform(std::string_view name, ZPK_App& app) {
    for (const auto& [candidate, operation] : operations) {
        if (candidate == name)
            return operation(app);
    }
    return true;
}

bool agrees(std::string_view when) {
    const QStringList found = disagreements();
    for (const QString& what : found)
        fprintf(stderr, "%s: %s\n", when.data(), qPrintable(what));
    return found.isEmpty();
}

/// What a fresh program finds, but for the bystander.
QList<ZPK_App*> found() {
    discoverApps();
    QList<ZPK_App*> apps;
    for (const auto& [key, app] : AppMap) {
        if (app->name != u"Bystander")
            apps.append(app.get());
    }
    return apps;
}

/// Does these to every application, after a new discovery each; everything must agree after it.
bool performAll(std::initializer_list<std::string_view> names) {
    bool good = true;
    for (const std::string_view name : names) {
        for (ZPK_App* app : found())
            good = perform(name, *app) && good;
        good = agrees(name) && good;
    }
    for (const QString& what : leftovers())
        fprintf(stderr, "left over: %s\n", qPrintable(what));
    return good;
}

/// As a user would go on after a restart. Everything must agree again once the interrupted
/// operation has been repeated.
bool check() {
    const QList<ZPK_App*> apps = found();
    for (ZPK_App* app : apps) {
        fprintf(stderr, "found %s\n", qPrintable(hostPath(app->path)));
        if (!app->registeredInMenu)
            registerAppInMenu(*app);
        perform("unregister", *app);
        perform("rename", *app);
    }
    return apps.size() <= 1 && performAll({"register", "move", "move", "delete"}) &&
           found().isEmpty();
}

/// Installs the package on the phone as the window does, on whose screen it answers the questions.
void install(const char* package) {
    QTimer answering;
    QObject::connect(&answering, &QTimer::timeout, [] {
        if (ZPopup* popup = ZPopup::active())
            popup->done(1);
    });
    answering.start(5);
    installZpk(packageAt(package), true);
}

} // namespace

int main(int argc, char** argv) {
    QString error;
    if (argc < 2 || argc > 3 || !preparePhoneRoot(error))
        return 2;
    const std::string_view operation = argv[1];
    prepareStorage();
    openAppDb();
    ArchiverPath = qEnvironmentVariable("SEVEN_ZIP");
    srand(getpid());
    discoverApps();
    if (operation == "install") {
        const ZApplication application(argc, argv, ZApplication::GuiClient);
        install(argv[2]);
        return 0;
    }
    if (operation == "check")
        return check() ? 0 : 1;
    if (operation == "everything") {
        const ZApplication application(argc, argv, ZApplication::GuiClient); // errors are shown
        fprintf(stderr, "%d applications\n", int(found().size()));
        return performAll({"register", "save", "move", "rename", "move", "unregister", "delete"}) &&
                       leftovers().isEmpty()
                   ? 0
                   : 1;
    }
    qputenv("DRIVER", QByteArray::number(getpid()));
    fflush(stdout);
    fputs("START\n", stderr);
    if (!AppMap.empty())
        perform(operation, *AppMap.begin()->second);
    return 0;
}
