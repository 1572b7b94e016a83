#include "console.h"

#include "Bytes.h"
#include "appregistry.h"
#include "database.h"
#include "install.h"

#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace {

struct Option {
    const char* text;
    void (*action)();
};

// "--install" only marks an installer's command line; the package itself is named without an
// option.
const Option options[] = {
    {"--install", [] { puts("DEBUG:: Installer Mode"); }},
    {"--list-apps-menu-registered", listAppsMenuRegistered},
    {"--list-apps-in-db", [] { printAllApps(); }},
    {"--list-apps-menu-registered-in-db", printMenuApps},
};

bool runOption(const char* argument) {
    for (const Option& option : options) {
        if (strcmp(argument, option.text) == 0) {
            option.action();
            return true;
        }
    }
    return false;
}

} // namespace

int checkParameters(int count, char** arguments) {
    puts("DEBUG:: Checking Parameters");
    for (int i = 1; i < count; ++i) {
        printf("\tParametro [%d] = %s\n", i, arguments[i]);
        if (runOption(arguments[i]))
            return 1;
    }
    if (count < 3 || access(arguments[2], F_OK) != 0)
        return 0;
    const QString path = fromBytes(arguments[2]);
    if (path.endsWith(".zpk", Qt::CaseInsensitive)) {
        installZpkFromConsole(path);
        return 1;
    }
    if (path.endsWith(".zsk", Qt::CaseInsensitive)) {
        installZskFromConsole(path);
        return 1;
    }
    return 0;
}
