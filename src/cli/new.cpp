#include "RegularFile.h"
#include "commands.h"
#include "newphone.h"
#include "options.h"
#include "output.h"

#include <QDir>

namespace {

bool isLanguage(const QString& code) {
    for (const QChar c : code) {
        const bool isPlain = c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'_' || c == u'-');
        if (!isPlain)
            return false;
    }
    return !code.isEmpty();
}

} // namespace

int runNew(const Call& call) {
    const QString root = QDir::cleanPath(absolutePath(call.arguments.first()));
    const QString language = call.has("language") ? call.value("language") : "en";
    if (!isLanguage(language))
        return misuse("--language needs a code such as en or zh_CN");
    if (machineArchiver().isEmpty()) {
        fail(root, "neither 7z nor 7zz is on this machine");
        return finish();
    }
    QString error;
    if (makePhone(root, !Option::noCard, language, error))
        succeed(root, QString("A phone is in %1.").arg(root));
    else
        fail(QString(), error);
    return finish();
}
