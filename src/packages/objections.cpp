#include "objections.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZPK_App.h"
#include "packageinfo.h"
#include "storage.h"

#include <QRegularExpression>

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

const char* const isUnsafe = "POP_ERROR_UNSAFE_TEXT";

bool isRegularFileOrNone(const QString& path) {
    struct stat info = {};
    return stat(toBytes(path).constData(), &info) != 0 || S_ISREG(info.st_mode);
}

} // namespace

const char* objectionTo(const Package& package) {
    if (!isRegularFileOrNone(package.path))
        return "POP_ERROR_NO_FILE_TEXT";
    return package.info && !package.info->isSafe ? isUnsafe : nullptr;
}

const char* objectionThere(const Package& package, const QString& folder) {
    if (!isUnchanged(package))
        return "POP_ERROR_CHANGED_TEXT";
    return package.info && !folder.isEmpty() && !staysInside(*package.info, folder) ? isUnsafe
                                                                                    : nullptr;
}

const char* objectionToLaunch(const ZPK_App& app) {
    static const QRegularExpression blank("[ \\t]");
    const QString command = hostPath(app.path) + '/' + app.exec;
    const QByteArray program = toBytes(command.section(blank, 0, 0));
    struct stat file = {};
    if (!isPlainForShell(program) || stat(program.constData(), &file) != 0 ||
        !S_ISREG(file.st_mode) || access(program.constData(), X_OK) == 0)
        return nullptr;
    struct statvfs storage = {};
    if (statvfs(program.constData(), &storage) != 0 || !(storage.f_flag & ST_NOEXEC))
        return "POP_ERROR_EXECUTABLE_TEXT";
    return app.location == memoryCard ? "POP_ERROR_NOEXEC_CARD_TEXT" : "POP_ERROR_NOEXEC_TEXT";
}
