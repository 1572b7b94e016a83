#include "wraptext.h"

#include "Look.h"
#include "descriptor.h"
#include "support.h"

#include <QFontMetrics>

#include <unistd.h>

namespace {

int widthOf(const QString& text) {
    return QFontMetrics(lookFont(12)).horizontalAdvance(text);
}

} // namespace

TEST(WrapText, DropsRepetitionsAndBeginsItsLinesWithABlank) {
    for (const auto& [text, widestLine, lines] : Rows<QString, QString, QStringList>{
             {"alpha beta alpha gamma", " alpha beta", {" alpha beta", "gamma"}},
             {"alpha  beta   gamma ", " alpha beta", {" alpha beta", "gamma"}},
             {"beta beta beta beta", " beta beta", {" beta", ""}},
             {"aa aaa aa aaa aaaa aaaaa", " aaa aa", {" aa aaa", " aaaa", "aaaaa"}},
             {"  fits  as   it is ", "  fits  as   it is  ", {"  fits  as   it is "}},
             {"                   ", " x", {"", ""}},
             {"", " x", {""}}}) {
        const int width = widthOf(widestLine) + 1;
        EXPECT_EQ(wrapText(text, width, lookFont(12)), lines) << qPrintable(text);
        EXPECT_EQ(wrapText(breakWideWords(text, width, lookFont(12)), width, lookFont(12)).last(),
                  lines.last())
            << qPrintable(text);
    }
}

TEST(WrapText, AWordOfJustTheWidthIsBroken) {
    EXPECT_NE(breakWideWords("a wide", widthOf(" wide"), lookFont(12)), "a wide");
    EXPECT_EQ(breakWideWords("a wide", widthOf(" wide") + 1, lookFont(12)), "a wide");
}

TEST(WrapText, EndsForEveryCommentOfADescriptor) {
    constexpr int width = 210;
    for (const QByteArray piece :
         {"W", "two words ", "\xC2\xA0", "字", "e\u0301", "👩🏽‍🚀", "\xFF", "\r"}) {
        SCOPED_TRACE(piece.toPercentEncoding().constData());
        const QString comment = QString::fromUtf8(findValue(piece.repeated(128), ""));
        alarm(20); // a word that cannot be placed takes all time and memory
        const QString broken = breakWideWords(comment, width, lookFont(12));
        for (const QString& line : wrapText(broken, width, lookFont(12)))
            EXPECT_LE(widthOf(line), width);
        alarm(540);
        EXPECT_EQ(QString(broken).remove(' '), QString(comment).remove(' '));
    }
}
