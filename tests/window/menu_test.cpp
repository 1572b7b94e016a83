#include "window_support.h"

#include "FlatButton.h"
#include "MenuRow.h"
#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "ZSoftKey.h"
#include "language.h"

#include <QSignalSpy>
#include <QTabBar>
#include <QTest>

using namespace Qt;

namespace {

const QStringList closed = {"Options", "Exit"};
const QStringList opened = {"Select", "Cancel"};

class UiMenu : public Ui {
protected:
    /// The menu in front and its highlighted entry.
    QString place() {
        const ZOptionsMenu* menu = ZOptionsMenu::active();
        const std::pair<const ZOptionsMenu*, const char*> names[] = {
            {nullptr, "none"},
            {window->getMainMenu(), "main"},
            {window->getSaveAsMenu(), "save"},
            {window->getViewMenu(), "view"},
            {window->getMultiSelectMenu(), "multi"},
            {window->getPackageMenu(), "package"}};
        for (const auto& [candidate, name] : names) {
            if (candidate == menu)
                return menu ? QString("%1 %2").arg(name).arg(menu->highlighted()) : name;
        }
        return "another";
    }

    void expectPlaces(const QList<std::pair<QList<int>, QString>>& table) {
        for (const auto& [keys, expected] : table) {
            pressAll(keys);
            EXPECT_EQ(place(), expected) << testing::PrintToString(keys.toVector());
            EXPECT_EQ(softKeys(), ZOptionsMenu::active() ? opened : closed);
            for (int i = 0; i < 3; ++i)
                press(Key_Escape);
            EXPECT_EQ(place(), "none");
        }
    }

    /// What the event loop gives back after `action`; `stays` when it is still running a moment
    /// later.
    static int loopResult(const std::function<void()>& action, int patience) {
        QTimer::singleShot(0, qApp, action);
        QTimer end;
        QObject::connect(&end, &QTimer::timeout, [] { QCoreApplication::exit(stays); });
        end.start(patience);
        return QCoreApplication::exec();
    }

    static bool isLeftBy(const std::function<void()>& action) {
        return loopResult(action, 5000) == 0;
    }

    static bool isKeptBy(const std::function<void()>& action) {
        return loopResult(action, 300) == stays;
    }

    static constexpr int stays = 99;
};

} // namespace

TEST_F(UiMenu, KeysBeforeTheFirstFillFindEmptyLists) {
    insertCard();
    addApp(0, "Alpha");
    open();
    for (const int key : {Key_Down, Key_PageUp, Key_End, Key_Return, Key_Escape, Key_1, Key_A,
                          Key_Right, Key_Down, Key_Return, Key_Left})
        hold(key, 20);
    EXPECT_EQ(window->currentApp(), nullptr);
    press(Key_F1); // the menu comes first, the lists below it
    waitForFirstFill();
    EXPECT_EQ(place(), "main 0");
    press(Key_F2);
    EXPECT_EQ(names(apps()), QStringList({"Alpha"}));
    EXPECT_EQ(apps().currentItem(), 0);
}

TEST_F(UiMenu, KeysMoveThroughTheMenus) {
    insertCard();
    addApp(0, "Alpha");
    openFilled();
    expectPlaces({
        {{Key_F1, Key_Up}, "main 9"},
        {{Key_F1, Key_Down, Key_Down, Key_Up}, "main 1"},
        {{Key_F1, Key_PageDown, Key_Home}, "main 0"},
        {{Key_F1, Key_Left}, "main 0"},
        {{Key_F1, Key_6, Key_Up, Key_Up}, "save 1"},
        {{Key_F1, Key_Down, Key_Down, Key_Down, Key_Down, Key_Down, Key_Right}, "save 0"},
        {{Key_F1, Key_7, Key_Left, Key_Left}, "main 6"},
        {{Key_F1, Key_7, Key_Escape, Key_6}, "save 0"},
        {{Key_F1, Key_Escape}, "none"},
        {{Key_F1, Key_7, Key_1}, "none"},
        {{Key_F1, Key_7, Key_F1}, "none"},
        {{Key_Right, Key_F1}, "package 1"}, // no package to install
        {{Key_Left, Key_F1}, "main 0"},
        {{Key_Escape, Key_Backspace}, "none"},
    });
    EXPECT_TRUE(window->getViewMenu()->isItemChecked(OnCardEntry)); // toggled twice

    press(Key_F1);
    hold(Key_Down, 30);
    EXPECT_EQ(place(), "main 9"); // a held key stops at the end
    hold(Key_Up, 30);
    EXPECT_EQ(place(), "main 0");
    press(Key_Escape);
    hold(Key_F1, 30);
    EXPECT_EQ(place(), "main 0"); // and does not go on to choose
    hold(Key_7, 30);
    EXPECT_EQ(place(), "view 0");
    hold(Key_Return, 30);
    EXPECT_EQ(place(), "none");
    EXPECT_FALSE(window->getViewMenu()->isItemChecked(OnCardEntry));
}

TEST_F(UiMenu, DisabledEntriesAreSteppedOver) {
    addApp(0, "Alpha");
    openFilled();
    expectPlaces({
        {{Key_F1, Key_Home}, "main 1"},
        {{Key_F1, Key_Up, Key_Down}, "main 1"},
        {{Key_F1, Key_1}, "main 1"},
        {{Key_F1, Key_6}, "save 1"},
        {{Key_F1, Key_7, Key_1}, "view 1"},
    });
    EXPECT_TRUE(window->getViewMenu()->isItemChecked(OnCardEntry));
    press(Key_F1);
    touch(*rowOf(*window->getMainMenu(), MoveEntry));
    EXPECT_EQ(place(), "main 1");
}

TEST_F(UiMenu, FingersChooseAndCloseMenus) {
    insertCard();
    addApp(0, "Alpha");
    addApp(0, "Beta");
    openFilled();
    const QPoint outside(235, middleOf(apps(), 1).y());
    ZOptionsMenu& main = *window->getMainMenu();
    press(Key_F1);
    touch(*rowOf(main, ViewEntry));
    EXPECT_EQ(place(), "view 0");
    touch(*rowOf(*window->getViewMenu(), OnlyRegisteredEntry));
    EXPECT_EQ(place(), "none");
    EXPECT_TRUE(window->getViewMenu()->isItemChecked(OnlyRegisteredEntry));
    chooseInMenu({ViewEntry, OnlyRegisteredEntry});
    pressAll({Key_F1, Key_7});
    touch(apps(), outside - QPoint(230, 0));
    EXPECT_EQ(place(), "main 6");
    pressMouse(*rowOf(main, RefreshEntry), QPoint(9, 9));
    releaseMouse(apps(), outside); // changed one's mind
    EXPECT_EQ(place(), "main 8");
    touch(apps(), outside);
    EXPECT_EQ(place(), "none");
    EXPECT_EQ(apps().currentItem(), 0); // the row below the menu noticed nothing
    touch(*window->getSoftKey()->findChildren<FlatButton*>().at(0));
    EXPECT_EQ(place(), "main 0");
    touch(*main.findChild<SoftKeyBar*>()->findChildren<FlatButton*>().at(1));
    EXPECT_EQ(place(), "none");
}

TEST_F(UiMenu, ClosingTheWindowClosesWhatLiesOnTop) {
    addApp(0, "Alpha");
    openFilled();
    const auto close = [] { EXPECT_FALSE(ZScreen::instance().close()); };
    chooseInMenu({MultiSelectEntry});
    EXPECT_TRUE(isKeptBy(close));
    EXPECT_EQ(softKeys(), closed);
    EXPECT_TRUE(ZScreen::instance().isVisible());
    pressAll({Key_F1, Key_7});
    EXPECT_TRUE(isKeptBy(close));
    EXPECT_EQ(place(), "main 6");
    EXPECT_TRUE(isKeptBy(close));
    EXPECT_EQ(place(), "none");
    EXPECT_TRUE(isKeptBy([&] {
        QTimer::singleShot(50, qApp, close);
        chooseInMenu({AboutEntry}); // a notice waits
        EXPECT_FALSE(ZPopup::shown());
    }));
    EXPECT_TRUE(isLeftBy(close));
}
