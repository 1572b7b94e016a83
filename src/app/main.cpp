#include "Bytes.h"
#include "Environment.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZScreen.h"
#include "appregistry.h"
#include "console.h"
#include "database.h"
#include "dialogs.h"
#include "language.h"
#include "lock.h"
#include "menu.h"
#include "settings.h"
#include "shell.h"
#include "storage.h"
#include "upgrade.h"
#include "zBaseGUI.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <unistd.h>

namespace {

bool prepareRoot() {
    QString error;
    if (preparePhoneRoot(error))
        return true;
    fprintf(stderr, "quiver: %s\n", toBytes(error).constData());
    return false;
}

void splitProgramPath(const QString& program) {
    const qsizetype slash = program.lastIndexOf('/');
    AppName = program.mid(slash + 1);
    AppPath = program.left(qMax<qsizetype>(slash, 0));
    printf("DEBUG:: App Name : %s\n", toBytes(AppName).constData());
    printf("DEBUG:: App Path : %s\n", toBytes(AppPath).constData());
}

/// The text that says why no window may be opened now; null where one may.
const char* obstacle() {
    constexpr int patience = 5000; // ms
    if (!claimWindow())
        return "TXT_ALREADY_OPEN";
    return lockPhone(patience) ? nullptr : "TXT_PHONE_BUSY";
}

} // namespace

int main(int argc, char** argv) {
    rememberEnvironment();
    outliveReaders();
    if (!prepareRoot())
        return 1;
    splitProgramPath(fromBytes(argv[0]));
    prepareStorage();
    mendUpgrades();
    openAppDb();
    auto application = std::make_unique<ZApplication>(argc, argv, ZApplication::GuiClient);
    QGuiApplication::setApplicationDisplayName("Quiver");
    loadSettings();
    installTranslator();
    srand(getpid());
    if (argc > 1 && checkParameters(argc, argv) != 0)
        return 0;
    if (const char* why = obstacle()) {
        showNotice("Quiver", tr(why));
        return 1;
    }
    mendMenu();
    loadAppRegistry(false);
    puts("DEBUG:: Register Load DONE");
    if (!ZApplication::hasDisplay()) {
        fputs("quiver: there is no display for the window\n", stderr);
        return 1;
    }
    auto window = std::make_unique<zBaseGUI>();
    ZScreen::instance().rememberPlace("quiver");
    application->setMainWidget(window.get());
    const int result = application->exec();
    window.reset();
    application.reset();
    closeAppDb();
    return result;
}
