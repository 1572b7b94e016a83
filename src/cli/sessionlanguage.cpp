#include "sessionlanguage.h"

#include "RegularFile.h"
#include "ZConfig.h"
#include "paths.h"

#include <QStringList>

namespace {

/// "de" of "de_DE.UTF-8@euro"; empty for "C.UTF-8" and "POSIX", which stand for no language.
QString languageOf(const QString& locale) {
    const QString code = locale.section('.', 0, 0).section('@', 0, 0).section('_', 0, 0);
    return code == u"C" || code == u"POSIX" || code.contains('/') ? QString() : code;
}

QString sessionLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            return qEnvironmentVariable(name);
    }
    return QString();
}

} // namespace

QString sessionLanguage(const QString& program) {
    const QString locale = sessionLocale();
    if (languageOf(locale).isEmpty())
        return QString();
    QStringList wishes = qEnvironmentVariable("LANGUAGE").split(':');
    wishes.append(locale);
    for (const QString& wanted : wishes) {
        const QString language = languageOf(wanted);
        if (!language.isEmpty() && exists(program + '_' + language + ".lng"))
            return language;
    }
    return QString();
}

void followSessionLanguage(const QString& root, const QString& language) {
    const QString group = "SYS_SYSTEM_SET";
    const QString lastKey = "SessionLanguage"; // what this has written last
    const QString usedKey = "LanguageType";
    ZConfig settings(root + Path::platformSettings, false);
    const QString used = settings.readEntry(group, usedKey, QString());
    if (language.isEmpty() || settings.readEntry(group, lastKey, used) != used)
        return;
    settings.writeEntry(group, usedKey, language);
    settings.writeEntry(group, lastKey, language);
    settings.flush();
}
