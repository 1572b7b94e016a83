#include "phone.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "browser.h"
#include "database.h"
#include "language.h"
#include "lock.h"
#include "newphone.h"
#include "output.h"
#include "settings.h"
#include "storage.h"

#include <QDir>

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

/// The language of the session, where there are texts in it.
QString sessionLanguage() {
    QString locale;
    for (const char* name : {"LANG", "LC_MESSAGES", "LC_ALL"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            locale = qEnvironmentVariable(name);
    }
    const QString language = locale.section('.', 0, 0).section('@', 0, 0).section('_', 0, 0);
    const QString texts = phoneProgram() + '_' + language + ".lng";
    return !language.isEmpty() && !language.contains('/') && exists(texts) ? language : "en";
}

/// The root of the user's own phone.
QString ownRoot() {
    QString data = fromBytes(qgetenv("XDG_DATA_HOME"));
    if (!data.startsWith('/'))
        data = fromBytes(qgetenv("HOME")) + "/.local/share";
    return data + "/quiver/phone";
}

bool makeOwnPhone(const QString& root) {
    QDir().mkpath(root.left(root.lastIndexOf('/')));
    QString error;
    if (makePhone(root, false, sessionLanguage(), error) || isFolderEntry(root))
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
    return leadToPhone(chosen);
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
    srand(getpid()); // identifiers are drawn from it
    prepareStorage();
    openAppDb();
    return true;
}

int startPhoneProgram(const QStringList& arguments) {
    chooseArchiver();
    chooseScale();
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
