#include "window_support.h"

#include "ChoiceRow.h"
#include "FlatButton.h"
#include "Look.h"
#include "MenuRow.h"
#include "SoftKeyBar.h"
#include "WindowPlace.h"
#include "ZLabel.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "language.h"
#include "packageinfo.h"
#include "question.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QFile>
#include <QScrollArea>
#include <QTest>

#include <cstring>
#include <filesystem>

using namespace Qt;

namespace {

bool isScrolled(const QWidget& widget) {
    for (const QWidget* at = &widget; at; at = at->parentWidget()) {
        if (qobject_cast<const QAbstractScrollArea*>(at->parentWidget()))
            return true;
    }
    return false;
}

/// The code of each language file.
std::vector<std::string> languages() {
    std::vector<std::string> codes;
    for (const auto& file : std::filesystem::directory_iterator(QUIVER_SOURCE_DIR "/languages"))
        codes.push_back(file.path().stem().string().substr(strlen("quiver_")));
    return codes;
}

class UiLayout : public Ui, public testing::WithParamInterface<std::string> {
protected:
    UiLayout() { m_words = QString::fromUtf8(readFile(languageFile())); }

    static QByteArray languageFile() {
        return QByteArray(QUIVER_SOURCE_DIR "/languages/quiver_") + GetParam().c_str() + ".lng";
    }

    /// Everything that can be seen lies on the screen and all its text can be read.
    void expectReadable(const char* state) {
        QCoreApplication::processEvents();
        const QRect screen = ZScreen::instance().rect();
        SCOPED_TRACE(testing::Message()
                     << state << ' ' << screen.width() << 'x' << screen.height());
        int found = 0;
        for (QWidget* widget : ZScreen::instance().findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            const QRect place(widget->mapTo(&ZScreen::instance(), QPoint()), widget->size());
            EXPECT_TRUE(isScrolled(*widget) || screen.contains(place))
                << widget->metaObject()->className();
            found += expectTexts(*widget);
        }
        EXPECT_GT(found, 4); // title, tabs and keys at the least
    }

    /// Sizes from the smallest to that of a phone of today.
    template<typename Check>
    void atEverySize(const Check& check) {
        for (const QSize size : {QSize(176, 200), QSize(320, 200), QSize(1080, 2160)}) {
            ZScreen::instance().resize(size);
            QCoreApplication::processEvents();
            ASSERT_EQ(window->size(), size);
            check();
        }
    }

private:
    int expectTexts(QWidget& widget) {
        const QList<DrawnText> texts = drawnTexts(widget);
        // Glyphs reach over by part of a pixel; the outer rows of a list may show one half only.
        const int cut = qobject_cast<QAbstractScrollArea*>(widget.parentWidget()) ? 100 : 0;
        const QRectF room = QRectF(widget.rect()).adjusted(-1, -cut, 1, cut);
        for (const DrawnText& drawn : texts) {
            const QByteArray what = drawn.text.toUtf8() + " in " + widget.metaObject()->className();
            const QRectF ink = drawn.place;
            EXPECT_TRUE(room.contains(ink))
                << what.constData() << ": " << ink.left() << ',' << ink.top() << ' ' << ink.right()
                << ',' << ink.bottom() << " in " << room.width() << 'x' << room.height();
            // Large letters may cost the end of a menu entry on the smallest screen.
            const bool isTight = scaled(16) > 16 && ZScreen::instance().width() < 200 &&
                                 qobject_cast<MenuRow*>(&widget);
            const bool isElided =
                drawn.text.contains(QChar(0x2026)) && !m_words.contains(drawn.text);
            EXPECT_FALSE(isElided && !isTight) << what.constData();
            for (const DrawnText& other : texts)
                EXPECT_TRUE(&other == &drawn || !other.place.adjusted(2, 1, -2, -1).intersects(ink))
                    << what.constData() << " and " << qPrintable(other.text);
        }
        return int(texts.size());
    }

    QString m_words;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Languages, UiLayout, testing::ValuesIn(languages()),
                         [](const auto& info) { return info.param; });

TEST_P(UiLayout, ListsAndMenusCanBeRead) {
    insertCard();
    addApp(0, "Alpha");
    addApp(1, "Beta");
    phone.makeFile("/mmc/mmca1/a.zpk", "x");
    openFilled(GetParam().c_str());
    atEverySize([this] {
        expectReadable("list");
        press(Key_F1);
        expectReadable("main menu");
        press(Key_6);
        expectReadable("save-as menu");
        pressAll({Key_Escape, Key_7});
        expectReadable("view menu");
        pressAll({Key_Escape, Key_8});
        press(Key_Return);
        expectReadable("multi-select");
        press(Key_F1);
        expectReadable("multi-select menu");
        pressAll({Key_F2, Key_F2, Key_Right});
        expectReadable("browser");
        press(Key_F1);
        expectReadable("package menu");
        pressAll({Key_F2, Key_Left});
    });
}

TEST_P(UiLayout, NoticesOfEmptyListsCanBeRead) {
    insertCard();
    phone.makeFolder("/mmc/mmca1/bare");
    openFilled(GetParam().c_str());
    window->loadFolder("/mmc/mmca1/bare");
    atEverySize([this] {
        expectReadable("nothing installed");
        press(Key_Right);
        expectReadable("nothing to install");
        press(Key_Left);
    });
    addApp(0, "Alpha");
    chooseInMenu({RefreshEntry});
    chooseInMenu({ViewEntry, OnPhoneEntry});
    atEverySize([this] { expectReadable("all hidden"); });
}

TEST_P(UiLayout, DialogsCanBeRead) {
    insertCard();
    phone.makeFile("/mmc/mmca1/a.zpk", "no archive");
    openFilled(GetParam().c_str());
    press(Key_Right);
    const auto reading = [this](const char* what, int key) {
        return [this, what, key](ZPopup& popup) {
            atEverySize([&] { expectReadable(what); });
            key ? press(key) : popup.done(0);
        };
    };
    press(Key_End);
    {
        Dialogs dialogs({reading("question", Key_F1), reading("places", Key_F1),
                         reading("please wait", 0), reading("error", Key_F1)});
        press(Key_Return);
        QTest::qWait(40);
    }
    PackageInfo info;
    info.isSafe = true;
    info.bytes = 1'200'000'000'000;
    info.folder = "Game";
    auto app = std::make_shared<ZPK_App>();
    app->name = QString(127, 'J'); // reaches out to the left
    app->author = QString(127, 'W');
    addApp(0, "Game", "Ann\nVersion = 2.0");
    info.app = app;
    for (const char* version : {"1.0", "2.0", "99"}) {
        app->version = version;
        Dialogs dialogs({reading("package", Key_F2)});
        askToInstall("T", "T", {"a.zpk", "", info});
    }
}

TEST_F(Ui, TheWindowComesBackWhereItWasAsFarAsTheScreenHasRoom) {
    EXPECT_EQ(placeFile("quiver"), QString()) << "nothing is kept without a desktop";
    const QByteArray file = phone.host("/config/quiver/window.conf");
    const auto restored = [&] {
        QWidget window;
        window.setGeometry(1, 2, 240, 320);
        restorePlace(window, QString::fromUtf8(file));
        return window.geometry();
    };
    const QRect first(1, 2, 240, 320);
    EXPECT_EQ(restored(), first);
    QWidget window;
    window.setGeometry(70, 80, 300, 400);
    keepPlace(window, QString::fromUtf8(file));
    EXPECT_EQ(restored(), QRect(70, 80, 300, 400));
    const QSize screen = window.screen()->availableSize();
    for (const auto& [content, expected] :
         Rows<QByteArray, QRect>{{"place=@Rect(9000 80 300 400)", QRect(1, 2, 300, 400)},
                                 {"place=@Rect(-500 0 9000 9000)", QRect(QPoint(1, 2), screen)},
                                 {"place=@Rect(5 5 0 -7)", first},
                                 {"place=@Rect(5 5", first},
                                 {"place=@Variant(\\0\\0\\0\\x7f", first}}) {
        writeFile(file, "[window]\n" + content + '\n');
        EXPECT_EQ(restored(), expected) << content.constData();
    }
}

TEST_F(Ui, ScreenReadersFindNamesAndRoles) {
    insertCard();
    addApp(0, "Alpha");
    phone.makeFile("/mmc/mmca1/a.zpk", "no archive");
    openFilled();
    std::function<void(QAccessibleInterface*, QStringList&)> collect =
        [&](QAccessibleInterface* item, QStringList& found) {
            const QAccessible::State state = item->state();
            found.append(QString("%1 %2%3%4")
                             .arg(item->role())
                             .arg(item->text(QAccessible::Name), state.disabled ? " off" : "",
                                  state.checked ? " checked" : ""));
            for (int i = 0; i < item->childCount(); ++i) {
                if (!item->child(i)->state().invisible)
                    collect(item->child(i), found);
            }
        };
    const auto expectTold = [&](QObject* object,
                                const QList<std::pair<QAccessible::Role, QString>>& expected) {
        QStringList found;
        collect(QAccessible::queryAccessibleInterface(object), found);
        for (const auto& [role, name] : expected)
            EXPECT_TRUE(found.contains(QString("%1 %2").arg(role).arg(name)))
                << qPrintable(name) << " in " << qPrintable(found.join(", "));
    };
    chooseInMenu({MultiSelectEntry});
    press(Key_Return);
    expectTold(&ZScreen::instance(), {{QAccessible::Client, "Quiver"},
                                      {QAccessible::PageTab, "zpk"},
                                      {QAccessible::ListItem, "Alpha, Author checked"},
                                      {QAccessible::Button, "Options"}});
    press(Key_F1);
    expectTold(ZOptionsMenu::active(), {{QAccessible::PopupMenu, "Options"},
                                        {QAccessible::Button, "Add to/remove from menu off"}});
    pressAll({Key_F2, Key_F2, Key_Right, Key_End});
    Dialogs dialogs({pressing(Key_F1), [&](ZPopup& popup) {
                         expectTold(&popup, {{QAccessible::Dialog, "Install package"},
                                             {QAccessible::StaticText, "Where to?"},
                                             {QAccessible::RadioButton, "Phone memory checked"}});
                         press(Key_F2);
                     }});
    press(Key_Return);
    QTest::qWait(40);
}
