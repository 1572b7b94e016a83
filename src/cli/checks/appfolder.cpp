#include "Bytes.h"
#include "RegularFile.h"
#include "descriptor.h"
#include "findings.h"
#include "unpacking.h"

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr qint64 largestDescriptor = 16 * 1024 * 1024;
const char* const again = "put the folder aside; install the application again";

struct AppFolder {
    QString path; ///< of the machine
    QString subject;
    std::function<void()> setAside;

    QString name() const { return path.mid(path.lastIndexOf('/') + 1); }

    QString descriptor() const { return path + '/' + name() + ".cfg"; }
};

bool hasKey(const QByteArray& text, const QByteArray& key) {
    return ('\n' + text).contains('\n' + key + " = ");
}

/// `text` with the value in all lines of `key`, or in a line of its own where there is none.
QByteArray withValue(const QByteArray& text, const QByteArray& key, const QByteArray& value) {
    if (hasKey(text, key))
        return replaceKeyLine(text, key, value);
    return text + (text.isEmpty() || text.endsWith('\n') ? "" : "\n") + key + " = " + value + '\n';
}

/// Rewrites the descriptor as `change` has it.
void rewrite(const AppFolder& folder, const std::function<QByteArray(const QByteArray&)>& change) {
    QByteArray text;
    if (readRegularFile(folder.descriptor(), largestDescriptor, text) == Reading::Whole)
        replaceFile(folder.descriptor(), change(text));
}

std::function<void()> toSet(const AppFolder& folder, const QByteArray& key,
                            const QByteArray& value) {
    return [=] {
        rewrite(folder, [&](const QByteArray& text) { return withValue(text, key, value); });
    };
}

bool isTooLong(const QByteArray& text, const QByteArray& key) {
    const qsizetype start = ('\n' + text).indexOf('\n' + key + " = ");
    const qsizetype value = start + key.size() + 3;
    const qsizetype end = text.indexOf('\n', value);
    return start >= 0 && (end < 0 ? text.size() : end) - value > longestValue;
}

bool isRegular(const QString& path) {
    struct stat info = {};
    return stat(toBytes(path).constData(), &info) == 0 && S_ISREG(info.st_mode);
}

bool isExecutable(const QString& path) {
    struct stat info = {};
    return stat(toBytes(path).constData(), &info) == 0 && (info.st_mode & 0111) != 0;
}

/// What the system would start: every file of an installed application may be executable.
bool isProgram(const QString& path) {
    QByteArray start;
    return isExecutable(path) && readRegularFile(path, anySize, start) == Reading::Whole &&
           (start.startsWith("\x7F"
                             "ELF") ||
            start.startsWith("#!"));
}

/// The one program in the folder; empty where there is none, or a choice.
QByteArray onlyProgram(const QString& path) {
    QByteArray program;
    std::error_code error;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(toBytes(path).toStdString(), error)) {
        const QByteArray name = QByteArray::fromStdString(entry.path().filename().string());
        if (!isProgram(path + '/' + fromBytes(name)))
            continue;
        if (!program.isEmpty())
            return QByteArray();
        program = name;
    }
    return program;
}

/// The program that `exec` starts, a path of the machine: what stands before its arguments.
QString programOf(const AppFolder& folder, const QString& exec) {
    const QString whole = folder.path + '/' + exec;
    return isRegular(whole) ? whole : folder.path + '/' + exec.section(' ', 0, 0);
}

void checkProgram(const AppFolder& folder, const QString& exec, Findings& findings) {
    const QString program = programOf(folder, exec);
    if (!exec.isEmpty() && isRegular(program)) {
        if (!isExecutable(program))
            findings.append({"program-not-executable", folder.subject,
                             QString("its program %1 cannot be executed").arg(exec),
                             "make it executable", [=] { makeExecutable(program); }});
        return;
    }
    const QString text = exec.isEmpty() ? QString("its descriptor names no program")
                                        : QString("its program %1 is missing").arg(exec);
    const QByteArray only = onlyProgram(folder.path);
    if (only.isEmpty())
        findings.append({"program-missing", folder.subject, text, again, folder.setAside});
    else
        findings.append({"program-missing", folder.subject, text,
                         QString("name the one that is there, %1").arg(fromBytes(only)),
                         toSet(folder, "Exec", only)});
}

/// The beginnings of the pictures that the phone shows.
bool isPicture(const QString& path) {
    QByteArray start;
    if (readRegularFile(path, anySize, start) != Reading::Whole)
        return false;
    for (const char* magic : {"\x89PNG", "GIF8", "BM", "\xFF\xD8\xFF", "\x1F\x8B", "RIFF", "P1",
                              "P2", "P3", "P4", "P5", "P6", "/* XPM", "#define"}) {
        if (start.startsWith(magic))
            return true;
    }
    return start.left(4096).contains("<svg");
}

void checkIcon(const AppFolder& folder, const QString& icon, Findings& findings) {
    if (!icon.isEmpty() && !isPicture(folder.path + '/' + icon))
        findings.append({"icon-unreadable", folder.subject,
                         QString("its icon %1 cannot be read").arg(icon),
                         "name no icon; the phone shows its own then", toSet(folder, "Icon", "")});
}

/// False where the descriptor is so broken that nothing more can be told.
bool checkText(const AppFolder& folder, const QByteArray& text, Findings& findings) {
    if (text.contains('\0')) {
        findings.append({"descriptor-broken", folder.subject, "its descriptor holds zero bytes",
                         "remove them", [folder] {
                             rewrite(folder,
                                     [](QByteArray text) { return text.replace('\0', ""); });
                         }});
        return false;
    }
    if (!hasKey(text, "Name"))
        findings.append({"descriptor-broken", folder.subject, "its descriptor has no name",
                         "name it as its folder", toSet(folder, "Name", toBytes(folder.name()))});
    for (const char* key : {"Name", "Author", "Version", "Exec", "Icon", "Comment"}) {
        if (isTooLong(text, key))
            findings.append(
                {"descriptor-too-long", folder.subject,
                 QString("its descriptor's %1 is longer than %2 bytes").arg(key).arg(longestValue),
                 "cut it to what is read of it",
                 toSet(folder, key, findValue(text, QByteArray(key) + " = "))});
    }
    return true;
}

} // namespace

void checkAppFolder(const QString& path, const QString& subject,
                    const std::function<void()>& setAside, Findings& findings) {
    const AppFolder folder = {path, subject, setAside};
    QByteArray text;
    switch (readRegularFile(folder.descriptor(), largestDescriptor, text)) {
    case Reading::Whole:
        break;
    case Reading::Unreadable:
        if (!exists(folder.descriptor())) {
            findings.append(
                {"descriptor-missing", subject,
                 QString("there is no %1.cfg in it, so it is no application").arg(folder.name()),
                 again, setAside});
            return;
        }
        [[fallthrough]];
    case Reading::Partial:
    case Reading::TooLarge:
        findings.append(
            {"descriptor-broken", subject, "its descriptor cannot be read", again, setAside});
        return;
    }
    if (!checkText(folder, text, findings))
        return;
    const std::unique_ptr<ZPK_App> app = parseDescriptor(text);
    checkProgram(folder, app->exec.trimmed(), findings);
    checkIcon(folder, app->icon.trimmed(), findings);
}
