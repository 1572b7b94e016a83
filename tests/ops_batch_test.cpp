#include "ops_support.h"

#include "Bytes.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "database.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "operations.h"

#include <QTest>

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>

#include <dlfcn.h>

namespace fs = std::filesystem;

namespace {

bool runsHere = false;

/// The two commands of a batch, without the cost of a shell and a program for each.
int runHere(const QByteArray& command) {
    const QList<QByteArray> parts = command.split('\'');
    if (command.startsWith("mv '"))
        return rename(parts.at(1).constData(), parts.at(3).constData()) == 0 ? 0 : 0x100;
    EXPECT_TRUE(command.startsWith("rm -rf '")) << command.constData();
    return fs::remove_all(parts.at(1).toStdString()) > 0 ? 0 : 0x100;
}

} // namespace

extern "C" {

// In the place of the C library's.
int system(const char* command) {
    static const auto real = reinterpret_cast<int (*)(const char*)>(dlsym(RTLD_NEXT, "system"));
    return runsHere ? runHere(command) : real(command);
}

// Nothing here has to outlive a power cut.
int fsync(int) {
    return 0;
}

int fdatasync(int) {
    return 0;
}
}

namespace {

struct Filter {
    bool card;
    bool phone;
    bool registeredOnly;
};

/// The name of the test.
void PrintTo(const std::tuple<Filter, bool>& parameters, std::ostream* stream) {
    const auto& [filter, deletes] = parameters;
    *stream << (deletes ? "Delete" : "Move") << (filter.card ? "Card" : "")
            << (filter.phone ? "Phone" : "") << (filter.registeredOnly ? "Registered" : "");
}

struct Item {
    QByteArray folder;
    int location;
    bool registered;
    bool visible;
};

constexpr int visibleRows = 10;

/// Ten applications that the view shows, of every kind, with hidden ones in between.
QList<Item> catalogue(const Filter& filter) {
    QList<Item> shown;
    QList<Item> hidden;
    for (const bool registered : {false, true}) {
        for (const int location : {0, 1}) {
            const bool visible = (location == 1 ? filter.card : filter.phone) &&
                                 (registered || !filter.registeredOnly);
            // The menu files take their time, and tell nothing where they do not count.
            if (!registered || filter.registeredOnly)
                (visible ? shown : hidden).append({"", location, registered, visible});
        }
    }
    QList<Item> items;
    for (int i = 0; i < visibleRows; ++i) {
        if (!hidden.isEmpty() && i % 3 == 0)
            items.append(hidden.at(i % hidden.size()));
        items.append(shown.at(i % shown.size()));
    }
    for (int i = 0; i < items.size(); ++i)
        items[i].folder = QByteArray(1, char('A' + i));
    return items;
}

class Batches : public Ops {
protected:
    ~Batches() override { runsHere = false; }

    /// By its own menu: the main menu does not lead there while there are no applications.
    void setFilter(const Filter& filter) {
        const bool wanted[] = {filter.card, filter.phone, filter.registeredOnly};
        for (int id = 0; id < 3; ++id) {
            ZOptionsMenu* menu = window->getViewMenu();
            if (((menu->itemState(id) & ZOptionsMenu::CheckedItem) != 0) == wanted[id])
                continue;
            menu->open("Select", "Cancel");
            press(Qt::Key_1 + id);
        }
    }

    void restore(const QList<Item>& items) {
        for (const Item& item : items) {
            ZPK_App* app = appIn(item.folder);
            if (!app)
                addApp(item.location, item.folder);
            else if (app->location != item.location)
                moveApp(*app, true);
        }
        window->refreshList(true);
        for (const Item& item : items) {
            if (item.registered && !appIn(item.folder)->registeredInMenu)
                registerAppInMenu(*appIn(item.folder));
        }
    }

    /// The batch with the rows checked that `pattern` has a bit for.
    void run(bool deletes, unsigned pattern) {
        window->mainOptM_MultiSelect();
        ASSERT_EQ(apps().count(), visibleRows);
        for (int row = 0; row < visibleRows; ++row)
            apps().item(row)->setChecked((pattern >> row & 1U) != 0);
        QTimer dismissing;
        QObject::connect(&dismissing, &QTimer::timeout, [] {
            if (ZPopup::active())
                ZPopup::active()->done(0);
        });
        dismissing.start(0);
        deletes ? window->cmd_MultiDelete() : window->cmd_MultiMove();
        ASSERT_FALSE(apps().hasCheckBoxes());
    }
};

class BatchesInEveryView : public Batches,
                           public testing::WithParamInterface<std::tuple<Filter, bool>> {};

} // namespace

TEST_P(BatchesInEveryView, TakeExactlyTheCheckedApplications) {
    const auto [filter, deletes] = GetParam();
    const QList<Item> items = catalogue(filter);
    runsHere = true;
    openFilled();
    sqlite3_exec(AppDb, "PRAGMA journal_mode = MEMORY", nullptr, nullptr, nullptr);
    setFilter(filter);
#ifdef __SANITIZE_ADDRESS__
    const unsigned step = 61;
#else
    const unsigned step = 1;
#endif
    for (unsigned pattern = 0; pattern < 1U << visibleRows; pattern += step) {
        SCOPED_TRACE(testing::Message() << "rows checked: " << std::hex << pattern);
        outputOf([&, deletes = deletes] {
            restore(items);
            run(deletes, pattern);
        });
        int row = 0;
        for (const Item& item : items) {
            const bool taken = item.visible && (pattern >> row++ & 1U) != 0;
            const ZPK_App* app = appIn(item.folder);
            ASSERT_EQ(app != nullptr, !taken || !deletes) << item.folder.constData();
            ASSERT_TRUE(!app || app->registeredInMenu == item.registered);
            ASSERT_TRUE(!app || (app->location != item.location) == taken);
        }
        if (pattern % 16 == 0)
            outputOf([&] { expectAgreement(); });
        ASSERT_FALSE(HasFailure());
    }
}

const Filter filters[] = {{true, true, false}, {true, true, true},   {true, false, false},
                          {true, false, true}, {false, true, false}, {false, true, true}};

INSTANTIATE_TEST_SUITE_P(All, BatchesInEveryView,
                         testing::Combine(testing::ValuesIn(filters), testing::Bool()),
                         testing::PrintToStringParamName());

TEST_F(Batches, LoseNothingWhereEverySecondCommandFails) {
    const QByteArray odd = "for last; do :; done; case $last in *App[1357]*) echo \"no $last\"; "
                           "exit 1;; esac; exec /bin/";
    openFilled();
    for (const Filter filter :
         {Filter{true, true, false}, {true, false, false}, {false, true, true}}) {
        for (const bool deletes : {false, true}) {
            SCOPED_TRACE(testing::Message() << filter.card << filter.phone << deletes);
            for (int i = 0; i < 8; ++i)
                addGame(i / 2 % 2, "App" + QByteArray::number(i));
            window->refreshList(true);
            for (const auto& [key, app] : AppMap)
                registerAppInMenu(*app);
            setFilter(filter);
            window->refreshList(false);
            QStringList kept;
            QList<Dialogs::Step> steps = {pleaseWait()};
            for (const QString& name : names(apps())) {
                const bool fails = name.back().digitValue() % 2 == 1;
                if (fails)
                    steps.append([name](ZPopup& popup) {
                        EXPECT_EQ(popup.title(), tr("POP_ERROR_TITLE") + ": " + name);
                        EXPECT_TRUE(messageOf(popup).contains(name));
                        press(Qt::Key_F1);
                    });
                if (fails || (!deletes && filter.card && filter.phone))
                    kept.append(name);
            }
            {
                const FakeCommand rm(phone, "rm", odd + "rm \"$@\"");
                const FakeCommand mv(phone, "mv", odd + "mv \"$@\"");
                const Dialogs dialogs(steps);
                window->mainOptM_MultiSelect();
                window->mainOptMMS_SelectAll();
                deletes ? window->cmd_MultiDelete() : window->cmd_MultiMove();
            }
            EXPECT_EQ(names(apps()), kept);
            EXPECT_EQ(AppMap.size(), deletes ? 9 - steps.size() : 8);
            for (const auto& [key, app] : AppMap)
                EXPECT_EQ(filesOf(toBytes(app->name), app->location).size(), 4);
            expectAgreement();
            while (!AppMap.empty())
                deleteApp(*AppMap.begin()->second, true);
        }
    }
}

TEST_F(Batches, AreChosenAndConfirmedByKeys) {
    constexpr int multiSelect = 7;
    for (const char* name : {"Alpha", "Beta", "Gamma"})
        addGame(0, name);
    openFilled();
    const auto checks = [this] {
        QList<bool> states;
        for (int row = 0; row < apps().count(); ++row)
            states.append(apps().item(row)->isChecked());
        return states;
    };
    const auto isOver = [this] { return !apps().hasCheckBoxes(); };
    const QString move = tr("POP_CONFIRM_MOVE_MULTIPLE_TEXT");
    const QString remove = tr("POP_CONFIRM_DELETE_MULTIPLE_TEXT");
    chooseInMenu({multiSelect});
    chooseInMenu({3});
    EXPECT_EQ(checks(), QList<bool>(3, true));
    chooseInMenu({4});
    EXPECT_EQ(checks(), QList<bool>(3, false));
    pressAll({Qt::Key_Return, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(checks(), QList<bool>({true, false, true}));
    {
        const Dialogs dialogs({no(move), no(remove), yes(move), pleaseWait()});
        chooseInMenu({0});
        chooseInMenu({1});
        QTest::qWait(50);
        EXPECT_FALSE(isOver());
        EXPECT_TRUE(outputOf([] { chooseInMenu({0}); }).endsWith("DEBUG:: Move Multiple APP\n"));
        EXPECT_TRUE(QTest::qWaitFor(isOver, 20000));
    }
    EXPECT_EQ(appIn("Alpha")->location + appIn("Gamma")->location, 2);
    EXPECT_EQ(appIn("Beta")->location, 0);
    expectAgreement();
    chooseInMenu({multiSelect});
    press(Qt::Key_Return);
    const Dialogs dialogs({yes(remove), pleaseWait()});
    EXPECT_TRUE(outputOf([] { chooseInMenu({1}); }).endsWith("DEBUG:: Delete Multiple APP\n"));
    EXPECT_TRUE(QTest::qWaitFor(isOver, 20000));
    EXPECT_EQ(names(apps()), QStringList({"Beta", "Gamma"}));
    expectAgreement();
}

/// With the card out of view, in the mode for several, behind a change of tabs.
TEST_F(Batches, TheNeighbourOfAMovedApplicationIsSafe) {
    for (const char* name : {"Alpha", "Beta", "Gamma"})
        addGame(0, name);
    openFilled();
    chooseInMenu({View, 0});
    chooseInMenu({7});
    pressAll({Qt::Key_Right, Qt::Key_Left});
    choose("Alpha", {Move}, {yes(tr("POP_CONFIRM_MOVE_TEXT") + "\nAlpha")});
    EXPECT_EQ(names(apps()), QStringList({"Beta", "Gamma"}));
    choose("Beta", {Delete}, {yes(tr("POP_CONFIRM_DELETE_TEXT") + "\nBeta")});
    EXPECT_EQ(appIn("Beta"), nullptr);
    EXPECT_EQ(appIn("Alpha")->location, 1);
    EXPECT_EQ(names(apps()), QStringList({"Gamma"}));
    expectAgreement();
}

TEST_F(Batches, NothingElseIsDoneBetweenAnAnswerAndItsWork) {
    for (const char* name : {"Alpha", "Beta"})
        addGame(0, name);
    openFilled();
    chooseInMenu({7});
    pressAll({Qt::Key_Down, Qt::Key_Return});
    const Dialogs dialogs({yes(tr("POP_CONFIRM_DELETE_MULTIPLE_TEXT")), pleaseWait()});
    chooseInMenu({1});
    for (const int key : {Qt::Key_F2, Qt::Key_Up, Qt::Key_Return, Qt::Key_F1, Qt::Key_1})
        press(key);
    touchRow(apps(), 0);
    ZScreen::instance().close();
    EXPECT_TRUE(ZScreen::instance().isVisible());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !apps().hasCheckBoxes(); }, 20000));
    EXPECT_EQ(names(apps()), QStringList({"Alpha"}));
    expectAgreement();
}
