#include "Keypad.h"

#include "PhoneSettings.h"

#include <QHash>
#include <QStringList>

namespace {

const QStringList plain = {
    " ", ".,?!'\"-()@/:;_+&%*=#", "abc", "def", "ghi", "jkl", "mno", "pqrs", "tuv", "wxyz"};

/// What a language adds to the letters of 2 to 9.
const QHash<QString, QStringList> added = {
    {"de", {"ä", "", "", "", "ö", "ß", "ü", ""}},
    {"es", {"á", "é", "í", "", "óñ", "", "úü", ""}},
    {"fr", {"àâæç", "éèêë", "îï", "", "ôœ", "", "ùûü", "ÿ"}},
    {"it", {"à", "èé", "ì", "", "ò", "", "ù", ""}},
    {"pl", {"ąć", "ę", "", "ł", "óń", "ś", "", "źż"}},
    {"pt", {"áâãàç", "éê", "í", "", "óôõ", "", "ú", ""}},
};

/// Those of an alphabet that is not Latin stand in place of the plain ones.
const QHash<QString, QStringList> replaced = {
    {"ru", {"абвг", "деёжз", "ийкл", "мноп", "рсту", "фхцч", "шщъы", "ьэюя"}},
};

} // namespace

QString lettersOf(int digit) {
    const QString language = phoneSetting("LanguageType", "en").left(2);
    const QStringList others = replaced.value(language);
    const QString letters = digit >= 2 && !others.isEmpty()
                                ? others.at(digit - 2)
                                : plain.at(digit) + added.value(language).value(digit - 2);
    return letters + QString::number(digit);
}

int digitOf(int key) {
    return key >= Qt::Key_0 && key <= Qt::Key_9 ? key - Qt::Key_0 : -1;
}
