#include "ops_support.h"

#include "Look.h"
#include "ZLabel.h"
#include "ZListBox.h"
#include "ZMessageDlg.h"
#include "ZPK_App.h"
#include "ZSeparator.h"
#include "descriptor.h"
#include "language.h"
#include "wraptext.h"

#include <QFontMetrics>
#include <QLayout>

#include <unistd.h>

namespace {

constexpr int lineWidth = 210;

QFont font() {
    return lookFont(12);
}

/// Just wide enough for this line with the blank that begins it.
int widthFor(const QString& line) {
    return QFontMetrics(font()).horizontalAdvance(' ' + line) + 1;
}

} // namespace

TEST(WrapText, DropsRepetitionsAndBeginsItsLinesWithABlank) {
    const struct {
        const char* text;
        const char* width;
        QStringList lines;
    } rows[] = {
        {"alpha beta alpha gamma", "alpha beta", {" alpha beta", "gamma"}},
        {"alpha  beta   gamma ", "alpha beta", {" alpha beta", "gamma"}},
        {"a b c d e f a b c d e f", "a b c", {" a b c", " d e f", ""}},
        {"alpha beta gamma", "alpha beta gamma delta", {"alpha beta gamma"}},
        {"  fits  as   it is ", "fits as it is and more than that", {"  fits  as   it is "}},
        {"beta beta beta beta beta", "beta beta", {" beta", ""}},
        {"aa aaa aa aaa aaaa aaaaa", "aaa aa", {" aa aaa", " aaaa", "aaaaa"}},
        {"                                  ", "x", {"", ""}},
        {"", "x", {""}},
    };

    for (const auto& row : rows) {
        EXPECT_EQ(wrapText(row.text, widthFor(row.width), font()), row.lines) << row.text;
        EXPECT_EQ(
            breakWideWords(row.text, widthFor(row.width), font()).split(' ', Qt::SkipEmptyParts),
            QString(row.text).split(' ', Qt::SkipEmptyParts))
            << row.text;
    }
}

TEST(WrapText, EndsForEveryCommentOfADescriptor) {
    const QByteArrayList pieces = {"W",
                                   "i",
                                   "two words ",
                                   " ",
                                   "-",
                                   "\xC2\xA0",
                                   "Ж",
                                   "字",
                                   "한",
                                   "ᄀ",
                                   "ᄀ\u1161",
                                   "\u0301",
                                   "e\u0301",
                                   "क्",
                                   "😀",
                                   "👩‍",
                                   "🇩🇪",
                                   "\u200D",
                                   "\u202E",
                                   "\uFDFD",
                                   "\t",
                                   "ﷺ",
                                   "𒐫",
                                   "\xFF",
                                   "\r",
                                   "x\u0308\u0308",
                                   "👩🏽‍🚀",
                                   "\u0E33"};
    for (const QByteArray& piece : pieces) {
        const QByteArray comment =
            findValue("Comment = " + piece.repeated(128 / piece.size() + 1), "Comment = ");
        for (const int width : {lineWidth, 2 * lineWidth}) {
            SCOPED_TRACE(testing::Message() << piece.toPercentEncoding().constData() << width);
            alarm(20); // a text that cannot be wrapped would take for ever and all memory
            const QString text = QString::fromUtf8(comment);
            const QString broken = breakWideWords(text, width, font());
            const QStringList lines = wrapText(broken, width, font());
            alarm(540);
            for (const QString& line : lines)
                EXPECT_LE(QFontMetrics(font()).horizontalAdvance(line), width);
            EXPECT_EQ(QString(broken).remove(' '), QString(text).remove(' '));
        }
    }
}

namespace {

class PropertiesPopup : public Ops {
protected:
    /// Title and content of the popup, with "---" for a separator.
    QStringList shown(const QByteArray& descriptor) {
        addGame(0, "Game");
        phone.makeFile("/ezxlocal/download/mystuff/quiver/Game/Game.cfg", descriptor);
        phone.makeFile("/ezxlocal/download/mystuff/quiver/Game/icon.png", "\x89PNG broken");
        window->refreshList(true);
        QStringList texts;
        const auto read = [&texts](ZPopup& popup) {
            texts.append(popup.title());
            const QLayout* content = popup.findChild<ZSeparator*>()->parentWidget()->layout();
            for (int i = 0; i < content->count(); ++i) {
                const auto* label = qobject_cast<ZLabel*>(content->itemAt(i)->widget());
                texts.append(label ? label->text() : "---");
                EXPECT_LE(content->itemAt(i)->widget()->width(), 240);
            }
            press(Qt::Key_F1);
        };
        const Dialogs dialogs({read});
        EXPECT_TRUE(outputOf([] { chooseInMenu({3}); }).endsWith("DEBUG:: Show APP Properties\n"));
        return texts;
    }
};

} // namespace

TEST_F(PropertiesPopup, ShowsTheFieldsUnderTheirHeadings) {
    addGame(0, "Game");
    openFilled();
    EXPECT_EQ(shown("Name = A <b>game</b>\nAuthor = Ann & Co\nVersion = 1.0\nIcon = icon.png\n"
                    "Comment = Short,  as it is\n"),
              QStringList({"A <b>game</b>", "---", "Author", "Ann & Co", "---", "Version", "1.0",
                           "---", "Comment", "Short,  as it is", "---"}));
    EXPECT_EQ(shown("Icon = missing.png\n"), QStringList({"", "---", "Author", "", "---", "Version",
                                                          "", "---", "Comment", "", "---"}));
    const QString comment = "a long comment of many words that has to be wrapped into lines on a "
                            "screen as narrow as the one of a phone";
    const QStringList lines = shown("Comment = " + comment.toUtf8()).mid(9);
    EXPECT_GE(lines.size(), 4);
    EXPECT_EQ(lines.first().left(7), " a long");
    EXPECT_EQ(lines.last(), "---");
    QByteArray word;
    for (int i = 1; word.size() < 127; ++i)
        word += QByteArray::number(i);
    EXPECT_EQ(shown("Comment = " + word).mid(9).join("").remove(' '), word.left(127) + "---");
}
