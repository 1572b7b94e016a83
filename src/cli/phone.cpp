#include "phone.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "SessionMenu.h"
#include "browser.h"
#include "card.h"
#include "database.h"
#include "language.h"
#include "lock.h"
#include "menu.h"
#include "newphone.h"
#include "options.h"
#include "output.h"
#include "paths.h"
#include "sessionlanguage.h"
#include "settings.h"
#include "storage.h"

#include <QDir>
#include <QProcess>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Where this program lies; what belongs to it lies beside that folder.
QString programFolder() {
    const QString program = realPath("/proc/self/exe");
    return program.left(program.lastIndexOf('/'));
}

QString phoneProgram() {
    return realPath(programFolder() + "/../bin/quiver");
}

/// Where the user's programs keep their data.
QString dataFolder() {
    const QString data = fromBytes(qgetenv("XDG_DATA_HOME"));
    return data.startsWith('/') ? data : fromBytes(qgetenv("HOME")) + "/.local/share";
}

/// The root of the user's own phone.
QString ownRoot() {
    return dataFolder() + "/quiver/phone";
}

bool makeOwnPhone(const QString& root) {
    const QString parent = root.left(root.lastIndexOf('/'));
    QString error = QString("%1 cannot be made").arg(parent);
    if (QDir().mkpath(parent) && (makePhone(root, false, "en", error) || isFolderEntry(root)))
        return true; // another first start may have been faster
    tell(error);
    return false;
}

/// A link to a phone whose path the shell would take apart; it goes with the program.
class PhoneLink {
public:
    ~PhoneLink() {
        if (m_folder.isEmpty())
            return;
        unlink(path().constData());
        rmdir(m_folder.constData());
    }

    bool isMade() const { return !m_folder.isEmpty(); }

    bool leadTo(const QByteArray& root) {
        QByteArray folder = "/tmp/quiver-XXXXXX";
        if (!mkdtemp(folder.data()))
            return false;
        m_folder = folder;
        return symlink(root.constData(), path().constData()) == 0 && qputenv("QUIVER_ROOT", path());
    }

private:
    QByteArray path() const { return m_folder + "/phone"; }

    QByteArray m_folder;
};

PhoneLink phoneLink;
QString chosenRoot; ///< empty where the machine is the phone

/// Of the card that was put in, before the phone's own programs make them with modes that only
/// root can work with. A card that cannot be written has none.
void prepareCard() {
    if (!chosenRoot.isEmpty() && exists(chosenRoot + Path::cardMount))
        makeCardFolders(chosenRoot);
}

/// Somebody looks after the phone with the card that is in it.
bool isCardInUse() {
    return isCardIn(chosenRoot) && (hasWindow() || !phoneHolder().isEmpty());
}

/// The card that the user names, else, for his own phone, the one that is in use, else what the
/// machine has. A second one counts where it is a part of the same storage.
bool chooseCard() {
    if (!Option::card.isEmpty()) {
        if (!isFolderEntry(Option::card)) {
            tell(QString("the card '%1' is not a folder").arg(Option::card));
            return false;
        }
        return insertCard(chosenRoot, realPath(absolutePath(Option::card)), QString());
    }
    if (Option::noCard)
        return insertCard(chosenRoot, QString(), QString());
    if (!isOwnPhone() || isCardInUse())
        return true;
    const std::vector<Storage> storages = removableStorages();
    const bool hasCard = !storages.empty();
    const bool hasSecond = storages.size() > 1 && storages[0].disk == storages[1].disk;
    return insertCard(chosenRoot, hasCard ? fromBytes(storages[0].folder) : QString(),
                      hasSecond ? fromBytes(storages[1].folder) : QString());
}

bool leadToPhone(const QString& root) {
    const QByteArray path = toBytes(absolutePath(root));
    if (isPlainForShell(path))
        return qputenv("QUIVER_ROOT", path);
    if (phoneLink.leadTo(path))
        return true;
    tell("no link to the phone can be made in /tmp");
    return false;
}

/// The phone's own files name an archiver of the phone.
void chooseArchiver() {
    if (qEnvironmentVariableIsEmpty("QUIVER_ARCHIVER"))
        qputenv("QUIVER_ARCHIVER", toBytes(machineArchiver()));
}

/// Reads the settings of the phone, as its own program does.
void loadPhone() {
    const QString program = phoneProgram();
    AppName = program.mid(program.lastIndexOf('/') + 1);
    AppPath = program.left(program.lastIndexOf('/'));
    chooseArchiver();
    loadSettings();
}

/// Lines of the display; 0 where they cannot be told.
int displayLines() {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ? 0 : 1000;
    FILE* output = popen("xdpyinfo 2>/dev/null", "re");
    char line[256];
    int lines = 0;
    while (output && fgets(line, sizeof line, output))
        sscanf(line, " dimensions: %*dx%d", &lines);
    if (output)
        pclose(output);
    return lines;
}

/// Twice the size where that fits: a screen of 320 lines is a stamp on a desktop of today.
void chooseScale() {
    if (qEnvironmentVariableIsEmpty("QUIVER_SCALE") && displayLines() >= 1000)
        qputenv("QUIVER_SCALE", "2");
}

pid_t programProcess = 0;

/// Gives the exit status of the process, as a shell does.
int statusOf(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int runProgram(char* const* arguments) {
    programProcess = fork();
    if (programProcess == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        execv(arguments[0], arguments);
        _exit(127);
    }
    // The link has to outlive the program, so this one ends behind it.
    signal(SIGINT, SIG_IGN);
    signal(SIGTERM, [](int number) { kill(programProcess, number); });
    signal(SIGHUP, [](int number) { kill(programProcess, number); });
    return statusOf(programProcess);
}

/// As the user gave them.
QStringList cardOptions() {
    if (Option::noCard)
        return {"--no-card"};
    return Option::card.isEmpty() ? QStringList() : QStringList{"--card", Option::card};
}

} // namespace

bool choosePhone(const QString& root) {
    QString chosen = root.isEmpty() ? fromBytes(qgetenv("QUIVER_ROOT")) : root;
    if (chosen.isEmpty() && !isFolderEntry("/ezxlocal/download")) {
        chosen = ownRoot();
        if (!isFolderEntry(chosen) && !makeOwnPhone(chosen))
            return false;
    }
    if (chosen.isEmpty())
        return true;
    if (!isFolderEntry(chosen)) {
        tell(QString("the phone's root '%1' is not a folder").arg(chosen));
        return false;
    }
    if (!isFolderEntry(chosen + "/ezxlocal")) {
        tell(QString("'%1' is no phone's root: there is no folder ezxlocal in it").arg(chosen));
        return false;
    }
    chosenRoot = realPath(absolutePath(chosen));
    if (isOwnPhone())
        followSessionLanguage(chosenRoot, sessionLanguage(phoneProgram()));
    if (!leadToPhone(chosen))
        return false;
    if (chooseCard())
        return true;
    tell("the card cannot be put into the phone");
    return Option::card.isEmpty() && !Option::noCard; // nobody has asked for it
}

bool isOwnPhone() {
    return !chosenRoot.isEmpty() && chosenRoot == realPath(ownRoot());
}

bool showInSession() {
    if (!isOwnPhone() ||
        syncSessionMenu({chosenRoot, MenuUuid, dataFolder() + "/applications", "quiver", "quiver"}))
        return true;
    tell("the menu of the session cannot be written: " + dataFolder() + "/applications");
    return false;
}

void readPhone() {
    loadPhone();
    detectCard();
    openAppDbForReading();
}

bool takePhone() {
    constexpr int patience = 5000; // ms
    QString error;
    if (!preparePhoneRoot(error)) {
        tell(error);
        return false;
    }
    if (!lockPhone(patience)) {
        const QString holder = phoneHolder();
        tell("another program has this phone" + (holder.isEmpty() ? QString() : ": " + holder));
        return false;
    }
    loadPhone();
    prepareCard();
    srand(getpid()); // identifiers are drawn from it
    prepareStorage();
    openAppDb();
    mendMenu();
    return true;
}

/// The restart of the phone's menu finds a busybox that shows the menu in the session instead.
void playApplicationManager() {
    if (chosenRoot.isEmpty())
        return;
    const QByteArray stand = toBytes(realPath(programFolder() + "/../manager"));
    qputenv("PATH", stand + ':' + qgetenv("PATH"));
    if (!isOwnPhone())
        return;
    const QString self = realPath("/proc/self/exe");
    qputenv("QUIVER_SESSION_MENU", toBytes(self));
    // What the phone's settings say is not known here. The card has to stay in.
    QProcess::execute(self, QStringList{"menu", "sync"} + cardOptions());
}

int startPhoneProgram(const QStringList& arguments) {
    chooseArchiver();
    playApplicationManager();
    chooseScale();
    prepareCard();
    std::vector<QByteArray> bytes = {toBytes(phoneProgram())};
    for (const QString& argument : arguments)
        bytes.push_back(toBytes(argument));
    std::vector<char*> pointers;
    pointers.reserve(bytes.size() + 1);
    for (QByteArray& argument : bytes)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    if (phoneLink.isMade())
        return runProgram(pointers.data());
    execv(pointers[0], pointers.data());
    tell(QString("%1 cannot be started: %2")
             .arg(phoneProgram(), QString::fromLocal8Bit(strerror(errno))));
    return 1;
}
