#include "language.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"
#include "paths.h"
#include "settings.h"

#include <QCoreApplication>
#include <QTranslator>

#include <cstdio>

namespace {

const QString wordsGroup = "WORDS";
const QString englishCode = "en";

/// Of the file that is open as `LanguageConfig`.
QString chosenCode = englishCode;

QString languagePath(const QString& folder, const QString& code) {
    return QString("%1/%2_%3.lng").arg(folder, AppName, code);
}

bool openCandidate(const QString& folder, const QString& code) {
    const QString path = languagePath(folder, code);
    printf("DEBUG:: Checking for lng file : '%s'\n", toBytes(phonePath(path)).constData());
    if (!exists(path))
        return false;
    LanguageConfig = std::make_unique<ZConfig>(path, true);
    chosenCode = code;
    return true;
}

class LanguageTranslator : public QTranslator {
public:
    using QTranslator::QTranslator;

    QString translate(const char*, const char* key, const char*, int) const override {
        return LanguageConfig ? LanguageConfig->readEntry(wordsGroup, key, QString()) : QString();
    }

    bool isEmpty() const override { return false; }
};

} // namespace

bool selectLanguageFile(const QString& folder) {
    const QString code = phoneSetting("LanguageType", englishCode);
    printf("DEBUG:: Current LanguageType : '%s'\n", toBytes(code).constData());
    if (openCandidate(folder, code))
        return true;
    if (code.size() > 2 && openCandidate(folder, code.left(2)))
        return true;

    chosenCode = englishCode;
    puts("DEBUG:: The lng file is missing. Trying to use English lng file as default.");
    const QString english = languagePath(folder, englishCode);
    if (!LanguageConfig || exists(english))
        LanguageConfig = std::make_unique<ZConfig>(english, true);
    return false;
}

QString languageCode() {
    return chosenCode;
}

bool loadCustomization(const QString& folder) {
    const QString path = QString("%1/%2.custom").arg(folder, AppName);
    printf("DEBUG:: Checking for Customization file: %s\n", toBytes(phonePath(path)).constData());
    if (!exists(path))
        return false;
    puts("DEBUG:: Customization file found. Loading custom parameters");
    const ZConfig file(path, true);
    if (file.hasGroup("UNPACK_TOOLS")) {
        ArchiverPath = file.readEntry("UNPACK_TOOLS", "BIN_FULLPATH", defaultArchiver);
        printf("DEBUG:: UNPACK_TOOLS::BIN_FULLPATH : '%s'\n", toBytes(ArchiverPath).constData());
    }
    if (file.hasGroup("MENU_CFGS")) {
        // Files without the key are in use; their menu folder has this odd name on those phones.
        MenuUuid = file.readEntry("MENU_CFGS", "APP_MENU_UUID", defaultArchiver);
        printf("DEBUG:: MENU_CFGS::APP_MENU_UUID : '%s'\n", toBytes(MenuUuid).constData());
    }
    return true;
}

void loadSettings() {
    const QString systemFolder = hostPath(Path::systemFolder);
    ArchiverPath = defaultArchiver;
    if (!selectLanguageFile(AppPath))
        selectLanguageFile(systemFolder);
    if (!loadCustomization(AppPath))
        loadCustomization(systemFolder);
    if (const QByteArray archiver = qgetenv("QUIVER_ARCHIVER"); !archiver.isEmpty())
        ArchiverPath = fromBytes(archiver);
}

QString tr(const char* key) {
    const QString text = QString::fromUtf8(key);
    return LanguageConfig ? LanguageConfig->readEntry(wordsGroup, text, text) : text;
}

void installTranslator() {
    QCoreApplication::installTranslator(new LanguageTranslator(QCoreApplication::instance()));
}
