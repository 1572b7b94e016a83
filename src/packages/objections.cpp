#include "objections.h"

#include "Bytes.h"
#include "packageinfo.h"

#include <sys/stat.h>

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
