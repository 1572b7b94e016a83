#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "appregistry.h"
#include "console.h"
#include "database.h"
#include "language.h"
#include "paths.h"
#include "settings.h"
#include "shell.h"
#include "storage.h"
#include "upgrade.h"
#include "zBaseGUI.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <unistd.h>

namespace {

bool checkPhoneRoot() {
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

void loadSettings() {
    const QString systemFolder = hostPath(Path::systemFolder);
    ArchiverPath = defaultArchiver;
    if (!selectLanguageFile(AppPath))
        selectLanguageFile(systemFolder);
    if (!loadCustomization(AppPath))
        loadCustomization(systemFolder);
    installTranslator();
}

} // namespace

int main(int argc, char** argv) {
    outliveReaders();
    if (!checkPhoneRoot())
        return 1;
    splitProgramPath(fromBytes(argv[0]));
    prepareStorage();
    mendUpgrades();
    openAppDb();
    auto application = std::make_unique<ZApplication>(argc, argv, ZApplication::GuiClient);
    loadSettings();
    srand(getpid());
    if (argc > 1 && checkParameters(argc, argv) != 0)
        return 0;
    loadAppRegistry(false);
    puts("DEBUG:: Register Load DONE");
    if (!ZApplication::hasDisplay()) {
        fputs("quiver: there is no display for the window\n", stderr);
        return 1;
    }
    auto window = std::make_unique<zBaseGUI>();
    application->setMainWidget(window.get());
    const int result = application->exec();
    window.reset();
    application.reset();
    closeAppDb();
    return result;
}
