#include "apps_support.h"

#include "Look.h"
#include "ZLabel.h"
#include "ZPopup.h"
#include "ZSeparator.h"
#include "descriptor.h"
#include "wraptext.h"

#include <QFontMetrics>
#include <QLayout>

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

namespace {

class PropertiesPopup : public Ops {
protected:
    /// Title and content of the popup, with "---" for a separator.
    QStringList shown(const QByteArray& descriptor) {
        const QByteArray folder = "/ezxlocal/download/mystuff/quiver/Game";
        phone.makeFile(folder + "/Game.cfg", descriptor);
        phone.makeFile(folder + "/icon.png", "\x89PNG broken");
        window->refreshList(true);
        QStringList texts;
        const auto read = [&texts](ZPopup& popup) {
            texts.append(popup.title());
            const QLayout* content = popup.findChild<ZSeparator*>()->parentWidget()->layout();
            for (int i = 0; i < content->count(); ++i) {
                const auto* label = qobject_cast<ZLabel*>(content->itemAt(i)->widget());
                texts.append(label ? label->text() : "---");
            }
            press(Qt::Key_F1);
        };
        const Dialogs dialogs({read});
        EXPECT_TRUE(outputOf([] {
                        chooseInMenu({PropertiesEntry});
                    }).endsWith("DEBUG:: Show APP Properties\n"));
        return texts;
    }
};

} // namespace

TEST_F(PropertiesPopup, ShowsTheFieldsUnderTheirHeadings) {
    openFilled();
    EXPECT_EQ(shown("Name = A <b>game</b>\nAuthor = Ann & Co\nVersion = 1.0\nIcon = icon.png\n"
                    "Comment = Short,  as it is\n"),
              QStringList({"A <b>game</b>", "---", "Author", "Ann & Co", "---", "Version", "1.0",
                           "---", "Comment", "Short,  as it is", "---"}));
    EXPECT_EQ(shown("Icon = missing.png\n"),
              QStringList({"Game", "---", "Author", "", "---", "Version", "", "---", "Comment", "",
                           "---"}));
    QByteArray word;
    for (int i = 1; word.size() < 127; ++i)
        word += QByteArray::number(i);
    const QStringList lines = shown("Comment = " + word).mid(9);
    EXPECT_GE(lines.size(), 4);
    EXPECT_EQ(lines.join("").remove(' '), word.left(127) + "---");
}
