#include "TerminalDialog.h"

#include "Bytes.h"
#include "PlatformText.h"

#include <cstdio>
#include <iostream>
#include <optional>
#include <string>

namespace {

void write(const QString& text) {
    std::fflush(stdout);
    std::fputs(toBytes(printable(text)).constData(), stderr);
}

std::optional<QString> answerTo(const QString& prompt) {
    write(prompt);
    std::string line;
    if (!std::getline(std::cin, line)) {
        write("\n");
        return std::nullopt;
    }
    return fromBytes(QByteArray::fromStdString(line)).trimmed().toLower();
}

} // namespace

QString printable(QString text) {
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control && c != u'\n' && c != u'\t')
            c = QChar::ReplacementCharacter;
    }
    return text;
}

bool askOnTerminal(const QString& title, const QString& text) {
    const QString yes = platformText("SK_YES", "Yes");
    const QString no = platformText("SK_NO", "No");
    tellOnTerminal(title, text);
    for (;;) {
        const std::optional<QString> answer = answerTo(QString("y = %1, n = %2: ").arg(yes, no));
        if (!answer || *answer == u"n" || *answer == u"no" || *answer == no.toLower())
            return false;
        if (*answer == u"y" || *answer == u"yes" || *answer == yes.toLower())
            return true;
    }
}

int chooseOnTerminal(const QString& title, const QString& text, const QStringList& items) {
    tellOnTerminal(title, text);
    for (qsizetype i = 0; i < items.size(); ++i)
        write(QString("%1. %2\n").arg(i + 1).arg(items.at(i)));
    for (;;) {
        const std::optional<QString> answer = answerTo(QString("1-%1: ").arg(items.size()));
        if (!answer || answer->isEmpty())
            return -1;
        const int number = answer->toInt();
        if (number >= 1 && number <= items.size())
            return number - 1;
    }
}

void tellOnTerminal(const QString& title, const QString& text) {
    write(title + '\n' + text + (text.endsWith('\n') ? "" : "\n"));
}
