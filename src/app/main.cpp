#include "Bytes.h"
#include "Environment.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "appregistry.h"
#include "console.h"
#include "database.h"
#include "dialogs.h"
#include "language.h"
#include "paths.h"
#include "settings.h"
#include "shell.h"
#include "storage.h"
#include "upgrade.h"
#include "zBaseGUI.h"

#include <QGuiApplication>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
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
    // The phone's files name an archiver of the phone, which the machine need not have.
    if (const QByteArray archiver = qgetenv("QUIVER_ARCHIVER"); !archiver.isEmpty())
        ArchiverPath = fromBytes(archiver);
    installTranslator();
}

/// Marks the phone as one that has a window, in `lock`; false where it has one already. The lock
/// ends with the process, however that ends; commands do not inherit it.
bool lockWindow(int& lock) {
    const QByteArray folder = toBytes(hostPath(Path::systemFolder));
    lock = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return lock < 0 || flock(lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace

int main(int argc, char** argv) {
    rememberEnvironment();
    outliveReaders();
    if (!checkPhoneRoot())
        return 1;
    splitProgramPath(fromBytes(argv[0]));
    prepareStorage();
    mendUpgrades();
    openAppDb();
    auto application = std::make_unique<ZApplication>(argc, argv, ZApplication::GuiClient);
    QGuiApplication::setApplicationDisplayName("Quiver");
    loadSettings();
    srand(getpid());
    if (argc > 1 && checkParameters(argc, argv) != 0)
        return 0;
    int lock = -1;
    if (!lockWindow(lock)) {
        showNotice("Quiver", tr("TXT_ALREADY_OPEN"));
        return 1;
    }
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
    close(lock);
    return result;
}
