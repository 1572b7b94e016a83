#include "dialogs.h"

#include "ChoiceRow.h"
#include "Look.h"
#include "RES_ICON_Reader.h"
#include "ZLabel.h"
#include "ZMessageDlg.h"
#include "ZScreen.h"
#include "support.h"

#include <QRegularExpression>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace {

using Action = std::function<void(ZPopup&)>;

constexpr int stays = -1;

/// The result of a dialog behind `action`: `stays` where that has not ended it.
int answerTo(ZMessageDlg::Type type, const Action& action) {
    ZMessageDlg dialog("Title", "Text", type);
    Dialogs dialogs({[&](ZPopup& popup) {
        action(popup);
        popup.done(stays); // the first answer holds
    }});
    return dialog.exec();
}

const QList<Choice> three = {{"One", "ctact_mobile_tab.bmp"}, {"Two", ""}, {"Three", "none.bmp"}};

std::optional<int> choose(const Action& action) {
    Dialogs dialogs({action});
    return chooseOne("Title", "Text", three);
}

QWidget* cardOf(const ZPopup& popup) {
    return popup.findChild<QScrollArea*>()->parentWidget();
}

auto smallestScreen() {
    ZScreen::instance().resize(176, 220);
    return qScopeGuard([] { ZScreen::instance().resize(Measure::screen); });
}

} // namespace

TEST(MessageDialog, EachKeyAnswersInItsWay) {
    for (const auto& [key, question, notice] : Rows<int, int, int>{
             {Qt::Key_Return, 1, 1},
             {Qt::Key_Select, 1, 1},
             {Qt::Key_F1, 1, 1},
             {Qt::Key_F2, 0, stays},
             {Qt::Key_Escape, 0, 0},
             {Qt::Key_Backspace, 0, 0},
             {Qt::Key_Space, stays, stays},
             {Qt::Key_Down, stays, stays},
         }) {
        const auto pressed = [key](ZPopup&) { press(key); };
        const auto held = [key](ZPopup& popup) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QCoreApplication::sendEvent(&popup, &event);
        };
        EXPECT_EQ(answerTo(ZMessageDlg::Question, pressed), question) << key;
        EXPECT_EQ(answerTo(ZMessageDlg::Notice, pressed), notice) << key;
        EXPECT_EQ(answerTo(ZMessageDlg::Question, held), stays) << key;
    }
}

TEST(MessageDialog, ALongTextScrollsByKeysAndAWideWordBreaks) {
    const auto restore = smallestScreen();
    const QString text = QString("a line of a command's output\n").repeated(60) +
                         QString(100, 'W') + QString("И").repeated(100);
    ZMessageDlg dialog("Title", text, ZMessageDlg::Notice);
    Dialogs dialogs({[&](ZPopup& popup) {
        const auto* scroll = popup.findChild<QScrollArea*>();
        EXPECT_LE(popup.findChild<ZLabel*>()->width(), scroll->viewport()->width());
        const QScrollBar* bar = scroll->verticalScrollBar();
        QList<int> places;
        for (const int key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Up}) {
            press(key);
            places.append(bar->value());
        }
        EXPECT_GT(places[0], 0);
        EXPECT_GT(places[1], 3 * places[0]);
        EXPECT_EQ(places.mid(2), (QList<int>{places[0], 0}));
        for (int i = 0; i < 100; ++i)
            press(Qt::Key_PageDown);
        EXPECT_EQ(bar->value(), bar->maximum());
        press(Qt::Key_Return);
    }});
    EXPECT_EQ(dialog.exec(), 1);
    EXPECT_EQ(messageOf(dialog), text);
}

TEST(ChoiceDialog, KeysMoveAndAccept) {
    using namespace Qt;
    for (const auto& [keys, chosen] : Rows<QList<int>, std::optional<int>>{
             {{Key_Return}, 0},
             {{Key_Down, Key_F1}, 1},
             {{Key_Down, Key_Down, Key_Down, Key_Down, Key_Return}, 2},
             {{Key_Down, Key_Down, Key_Up, Key_Return}, 1},
             {{Key_Down, Key_F2}, std::nullopt},
             {{Key_Backspace}, std::nullopt},
             {{Key_Return, Key_Down, Key_F2}, 0}, // what comes after the answer
             {{Key_F2, Key_Return}, std::nullopt},
         }) {
        const QList<int> pressed = keys;
        EXPECT_EQ(choose([&](ZPopup&) { std::for_each(pressed.begin(), pressed.end(), press); }),
                  chosen);
    }
}

TEST(ChoiceDialog, ATouchChoosesAndASecondOneAccepts) {
    const auto result = choose([](ZPopup& popup) {
        const auto rows = popup.findChildren<ChoiceRow*>();
        ASSERT_EQ(rows.size(), 3);
        touch(*rows.at(2));
        EXPECT_TRUE(rows.at(2)->isChecked());
        touch(*rows.at(1));
        EXPECT_TRUE(rows.at(1)->isChecked());
        EXPECT_FALSE(rows.at(2)->isChecked());
        touch(*rows.at(1));
        popup.done(0); // answered by then
    });
    EXPECT_EQ(result, 1);
}

TEST(Popup, KeysAndFocusGoBackToWhatLiesBelow) {
    auto* below = new QWidget;
    below->setFocusPolicy(Qt::StrongFocus);
    ZScreen::instance().setMainWidget(below);
    const auto restore = qScopeGuard([&] { delete below; });
    ZScreen::instance().present();
    below->setFocus();
    ZMessageDlg outer("Outer", "", ZMessageDlg::Question);
    int innerResult = stays;
    Dialogs dialogs({[&](ZPopup& popup) {
        EXPECT_EQ(&popup, &outer);
        QTimer::singleShot(20, [&] {
            EXPECT_EQ(ZPopup::active()->title(), "Inner");
            EXPECT_NE(ZScreen::instance().focusWidget(), &outer);
            press(Qt::Key_Escape);
        });
        innerResult = askYesNo("Inner", "Text");
        EXPECT_EQ(ZPopup::active(), &outer);
        EXPECT_TRUE(cardOf(outer)->isVisible()); // which the one above it had hidden
        EXPECT_EQ(ZScreen::instance().focusWidget(), &outer);
        press(Qt::Key_Return);
    }});
    EXPECT_EQ(outer.exec(), 1);
    EXPECT_EQ(innerResult, 0);
    EXPECT_EQ(ZScreen::instance().focusWidget(), below);
    EXPECT_EQ(ZPopup::active(), nullptr);
}

TEST(Icons, EveryNameInTheSourcesHasAPictureAndOthersNone) {
    static const QRegularExpression name("\"(\\w+\\.(?:bmp|gif|png|g))\"");
    int names = 0;
    const QString sources = allSources();
    for (auto all = name.globalMatch(sources); all.hasNext(); ++names) {
        const QString icon = all.next().captured(1);
        EXPECT_FALSE(RES_ICON_Reader().getIcon(icon).isNull()) << qPrintable(icon);
    }
    EXPECT_GT(names, 10);
    EXPECT_TRUE(RES_ICON_Reader().getIcon("none.bmp").isNull());
}
