#include "language.h"

#include "Bytes.h"
#include "PlatformText.h"
#include "settings.h"
#include "support.h"

#include <QRegularExpression>
#include <QSet>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Codes = QList<QByteArray>;

const char settingsFile[] = "/ezx_user/download/appwrite/setup/ezx_system.cfg";
const char languages[] = QUIVER_SOURCE_DIR "/languages/";

/// A file of that language gives for the key K its folder and its code, such as "/program de".
void makeLanguages(const Phone& phone, const QByteArray& folder, const Codes& codes) {
    for (const QByteArray& code : codes)
        phone.makeFile(folder + "/quiver_" + code + ".lng",
                       "[WORDS]\nK = " + folder + ' ' + code + '\n');
}

/// As the program does at its start.
void selectLanguage(const Phone& phone) {
    if (!selectLanguageFile(phone.host("/program")))
        selectLanguageFile(phone.host("/ezxlocal/quiver"));
}

/// The texts of a language file by key, read without the program; each key once and not empty.
QHash<QString, QString> wordsOf(const QByteArray& path) {
    QHash<QString, QString> words;
    for (const QByteArray& line : readFile(path).split('\n')) {
        const qsizetype sign = line.indexOf(" = ");
        if (line.startsWith('#') || line.startsWith('[') || line.isEmpty())
            continue;
        EXPECT_FALSE(words.contains(line.left(sign))) << qPrintable(path + ' ' + line);
        EXPECT_TRUE(sign > 0 && line.size() > sign + 3) << qPrintable(path + ' ' + line);
        words[line.left(sign)] = line.mid(sign + 3);
    }
    return words;
}

QSet<QString> matches(const char* pattern, const QString& text) {
    QSet<QString> found;
    for (auto all = QRegularExpression(pattern).globalMatch(text); all.hasNext();)
        found.insert(all.next().captured(1));
    return found;
}

} // namespace

TEST(Language, TheOwnLanguageGoesBeforeEnglishAndTheSystemsEnglishBeforeThePrograms) {
    for (const auto& [setting, program, system, text] : Rows<QByteArray, Codes, Codes, QString>{
             {"LanguageType = de", {"de", "en"}, {"de", "en"}, "/program de"},
             {"LanguageType = de", {"en"}, {"de", "en"}, "/ezxlocal/quiver de"},
             {"LanguageType = de", {"en", "fr"}, {"en", "fr"}, "/ezxlocal/quiver en"},
             {"LanguageType = de", {"en"}, {}, "/program en"},
             {"LanguageType = en_US", {"en_US", "en"}, {}, "/program en_US"},
             {"LanguageType = de_AT", {"en"}, {"de"}, "/ezxlocal/quiver de"},
             {"", {"en", "de"}, {"en"}, "/program en"},
         }) {
        const Phone phone;
        AppName = "quiver";
        phone.makeFile(settingsFile, "[SYS_SYSTEM_SET]\r\n" + setting);
        makeLanguages(phone, "/program", program);
        makeLanguages(phone, "/ezxlocal/quiver", system);
        outputOf([&] { selectLanguage(phone); });
        EXPECT_EQ(tr("K"), text) << setting.constData();
    }
}

TEST(Language, ThePlatformsLabelsAreTranslatedWhereTheLanguageHasThem) {
    const Phone phone;
    AppName = "quiver";
    phone.makeFile("/program/quiver_en.lng", "[WORDS]\nSK_YES = Aye\n");
    installTranslator();
    EXPECT_EQ(platformText("SK_YES", "Yes"), "Yes");
    outputOf([&] { selectLanguageFile(phone.host("/program")); });
    EXPECT_EQ(platformText("SK_YES", "Yes"), "Aye");
    EXPECT_EQ(platformText("SK_NO", "No") + tr("SK_NO"), "NoSK_NO");
}

TEST(Customization, EachGroupThatIsThereSetsItsSetting) {
    const QString standard = "/usr/local/Overhaul/p7zip/7z";
    const QString menu = "7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5";
    for (const auto& [file, archiver, menuUuid] : Rows<QByteArray, QString, QString>{
             {"", "old", menu},
             {"\xEF\xBB\xBF[UNPACK_TOOLS]\r\nBIN_FULLPATH=/bin/7z", "/bin/7z", menu},
             {"[UNPACK_TOOLS]\n", standard, menu},
             {"[MENU_CFGS]\nAPP_MENU_UUID = my menu\n", "old", "my menu"},
             {"[MENU_CFGS]\nBIN_FULLPATH = /bin/7z\n", "old", standard},
         }) {
        const Phone phone;
        AppName = "quiver";
        ArchiverPath = "old";
        phone.makeFile("/program/quiver.custom", file);
        outputOf([&] { EXPECT_TRUE(loadCustomization(phone.host("/program"))); });
        EXPECT_EQ(ArchiverPath, archiver) << file.constData();
        EXPECT_EQ(MenuUuid, menuUuid) << file.constData();
    }
}

TEST(LanguageFiles, HaveTheSameKeysAndPlaceholders) {
    const QHash<QString, QString> english = wordsOf(QByteArray(languages) + "quiver_en.lng");
    int files = 0;
    for (const auto& entry : fs::directory_iterator(languages)) {
        const QByteArray path = QByteArray::fromStdString(entry.path());
        const QHash<QString, QString> words = wordsOf(path);
        const auto keys = words.keys();
        EXPECT_EQ(QSet<QString>(keys.begin(), keys.end()),
                  matches("(.+)", english.keys().join('\n')))
            << path.constData();
        for (const QString& key : keys)
            EXPECT_EQ(matches("(%[0-9]+)", words[key]), matches("(%[0-9]+)", english[key]))
                << qPrintable(path + ' ' + key);
        ++files;
    }
    EXPECT_GT(files, 1);
}

TEST(LanguageFiles, HaveEveryKeyThatTheSourcesUse) {
    const QHash<QString, QString> english = wordsOf(QByteArray(languages) + "quiver_en.lng");
    const QString sources = allSources();
    QSet<QString> used = matches("\"((?:APP|POP|FT|TXT|SK|CST|ZPK)_[A-Z0-9_]+)\"", sources) +
                         matches("\\btr\\(\"([^\"]+)\"", sources) +
                         matches("platformText\\(\"([^\"]+)\"", sources);
    used.remove("APP_MENU_UUID"); // of the customization file
    EXPECT_GT(used.size(), 50);
    for (const QString& key : std::as_const(used))
        EXPECT_TRUE(english.contains(key)) << qPrintable(key);
}
