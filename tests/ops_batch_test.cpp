#include "ops_support.h"

#include "Bytes.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "database.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "operations.h"
#include "paths.h"

#include <QTest>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <numeric>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

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

/// Thousands of batches print more than anyone reads.
class Silence {
public:
    Silence() : m_saved(dup(STDOUT_FILENO)) {
        fflush(stdout);
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDOUT_FILENO);
        close(nothing);
    }

    ~Silence() {
        fflush(stdout);
        dup2(m_saved, STDOUT_FILENO);
        close(m_saved);
    }

private:
    int m_saved;
};

struct View {
    bool card;
    bool phone;
    bool registeredOnly;

    bool shows(int location, bool registered) const {
        return (location == 1 ? card : phone) && (registered || !registeredOnly);
    }
};

struct Kind {
    int location;
    bool registered;
};

/// An application of the catalogue as a batch should leave it alone.
struct Item {
    QByteArray folder;
    Kind kind;
    bool visible;
};

constexpr int visibleRows = 10;

/// Ten applications that the view shows, of every kind, with others in between.
QList<Item> catalogue(const View& view) {
    QList<Kind> shown;
    QList<Kind> hidden;
    for (const Kind kind : {Kind{0, false}, {1, false}, {0, true}, {1, true}}) {
        // The menu files take their time and tell nothing where all are shown.
        if (!kind.registered || view.registeredOnly)
            (view.shows(kind.location, kind.registered) ? shown : hidden).append(kind);
    }
    QList<Item> items;
    for (int i = 0; !shown.isEmpty() && i < visibleRows; ++i) {
        if (!hidden.isEmpty() && i % 3 == 0)
            items.append({"h", hidden.at(i % hidden.size()), false});
        items.append({"v", shown.at(i % shown.size()), true});
    }
    for (int i = 0; i < items.size(); ++i)
        items[i].folder.prepend(char('A' + i));
    return items;
}

class Batches : public Ops {
protected:
    ~Batches() override { runsHere = false; }

    /// By its own menu: the main menu does not lead there while there are no applications.
    void toggleView(int id) {
        window->getViewMenu()->open("Select", "Cancel");
        press(Qt::Key(Qt::Key_1 + id));
    }

    void setView(const View& view) {
        const bool wanted[] = {view.card, view.phone, view.registeredOnly};
        for (int id = 0; id < 3; ++id) {
            if ((window->getViewMenu()->itemState(id) & ZOptionsMenu::CheckedItem) != 0)
                toggleView(id);
        }
        for (int id = 0; id < 3; ++id) {
            if (wanted[id])
                toggleView(id);
        }
    }

    void restore(const QList<Item>& items) {
        const Silence silence;
        for (const Item& item : items) {
            ZPK_App* app = appIn(item.folder);
            if (!app)
                addApp(item.kind.location, item.folder);
            else if (app->location != item.kind.location)
                moveApp(*app, true);
        }
        window->refreshList(true);
        for (const Item& item : items) {
            if (item.kind.registered && !appIn(item.folder)->registeredInMenu)
                registerAppInMenu(*appIn(item.folder));
        }
    }

    void run(void (zBaseGUI::*batch)(), const QList<int>& rows) {
        const Silence silence;
        check(rows);
        QTimer dismissing;
        QObject::connect(&dismissing, &QTimer::timeout, [] {
            if (ZPopup::active())
                ZPopup::active()->done(0);
        });
        dismissing.start(0);
        (window.get()->*batch)();
    }

    /// Puts the batch through with every `step`-th pattern of checked rows.
    void tryPatterns(const View& view, void (zBaseGUI::*batch)(), int step) {
        const QList<Item> items = catalogue(view);
        const bool deletes = batch == &zBaseGUI::cmd_MultiDelete;
        restore(items);
        setView(view);
        for (unsigned pattern = 0; pattern < 1U << visibleRows; pattern += step) {
            SCOPED_TRACE(testing::Message() << "rows checked: " << std::hex << pattern);
            restore(items);
            ASSERT_TRUE(window->getApp(visibleRows - 1) && !window->getApp(visibleRows));
            QList<int> rows;
            for (int row = 0; row < visibleRows; ++row) {
                if ((pattern >> row & 1U) != 0)
                    rows.append(row);
            }
            run(batch, rows);
            int row = 0;
            for (const Item& item : items) {
                const bool taken = item.visible && (pattern >> row++ & 1U) != 0;
                const ZPK_App* app = appIn(item.folder);
                const int location = taken ? 1 - item.kind.location : item.kind.location;
                ASSERT_EQ(app != nullptr, !(taken && deletes)) << item.folder.constData();
                ASSERT_EQ(app ? app->location : location, location) << item.folder.constData();
                ASSERT_EQ(app ? app->registeredInMenu : item.kind.registered, item.kind.registered)
                    << item.folder.constData();
            }
            ASSERT_FALSE(apps().hasCheckBoxes());
            if (pattern % 16 == 0)
                expectAgreement();
            ASSERT_FALSE(HasFailure());
        }
        restore(items);
        setView({true, true, false});
        QList<int> all(apps().count());
        std::iota(all.begin(), all.end(), 0);
        run(&zBaseGUI::cmd_MultiDelete, all);
        ASSERT_TRUE(AppMap.empty());
    }
};

} // namespace

// Every fifth pattern in the plain view, some in the others: the whole product takes minutes.
TEST_F(Batches, TakeExactlyTheCheckedApplicationsInEveryView) {
    // All patterns in each view would take minutes.
#ifdef __SANITIZE_ADDRESS__
    constexpr int every = 7;
    constexpr int some = 61;
#else
    constexpr int every = 1;
    constexpr int some = 7;
#endif
    runsHere = true;
    openFilled();
    sqlite3_exec(AppDb, "PRAGMA journal_mode = MEMORY", nullptr, nullptr, nullptr);
    for (const View view : {View{true, true, false},
                            {true, true, true},
                            {true, false, false},
                            {true, false, true},
                            {false, true, false},
                            {false, true, true}}) {
        for (const auto batch : {&zBaseGUI::cmd_MultiMove, &zBaseGUI::cmd_MultiDelete}) {
            SCOPED_TRACE(testing::Message()
                         << "view " << view.card << view.phone << view.registeredOnly);
            const bool isPlain = view.card && view.phone && !view.registeredOnly;
            ASSERT_NO_FATAL_FAILURE(tryPatterns(view, batch, isPlain ? every : some));
        }
    }
}

TEST_F(Batches, LoseNothingWhereEverySecondCommandFails) {
    const QByteArray odd = "for last; do :; done; case $last in *App[13579]*) echo \"no $last\"; "
                           "exit 1;; esac; exec /bin/";
    const View views[] = {{true, true, false}, {true, false, false}, {false, true, true}};
    openFilled();
    for (const View& view : views) {
        for (const bool deletes : {false, true}) {
            SCOPED_TRACE(testing::Message() << view.card << view.phone << deletes);
            QStringList kept;
            QList<Dialogs::Step> steps = {pleaseWait()};
            for (int i = 0; i < 8; ++i) {
                const QByteArray folder = "App" + QByteArray::number(i);
                const int location = i / 2 % 2;
                addGame(location, folder);
            }
            window->refreshList(true);
            for (const auto& [key, app] : AppMap)
                registerAppInMenu(*app);
            setView(view);
            for (const QString& name : names(apps())) {
                const bool fails = (name.back().digitValue() & 1) != 0;
                if (fails)
                    steps.append(errorNotice(name));
                if (fails || (!deletes && view.card && view.phone))
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
            EXPECT_EQ(AppMap.size(), deletes ? 8 - steps.size() + 1 : 8);
            for (const auto& [key, app] : AppMap)
                EXPECT_EQ(filesOf(toBytes(app->name), app->location).size(), 4);
            expectAgreement();
            while (!AppMap.empty())
                deleteApp(*AppMap.begin()->second, true);
        }
    }
}

TEST_F(Batches, AreChosenAndConfirmedByKeys) {
    for (const char* name : {"Alpha", "Beta", "Gamma"})
        addGame(0, name);
    openFilled();
    const auto checked = [this] {
        QList<bool> states;
        for (int row = 0; row < apps().count(); ++row)
            states.append(apps().item(row)->isChecked());
        return states;
    };
    chooseInMenu({7});
    chooseInMenu({3});
    EXPECT_EQ(checked(), QList<bool>(3, true));
    chooseInMenu({4});
    EXPECT_EQ(checked(), QList<bool>(3, false));
    pressAll({Qt::Key_Return, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(checked(), QList<bool>({true, false, true}));
    const QString move = tr("POP_CONFIRM_MOVE_MULTIPLE_TEXT");
    const QString remove = tr("POP_CONFIRM_DELETE_MULTIPLE_TEXT");
    const auto isOver = [this] { return !apps().hasCheckBoxes(); };
    {
        const Dialogs dialogs({no("POP_CONFIRM_TITLE", move), no("POP_CONFIRM_TITLE", remove)});
        chooseInMenu({0});
        chooseInMenu({1});
        QTest::qWait(50);
        EXPECT_FALSE(isOver());
    }
    {
        const Dialogs dialogs({yes("POP_CONFIRM_TITLE", move), pleaseWait()});
        EXPECT_TRUE(outputOf([] { chooseInMenu({0}); }).endsWith("DEBUG:: Move Multiple APP\n"));
        EXPECT_TRUE(QTest::qWaitFor(isOver, 20000));
    }
    EXPECT_EQ(appIn("Alpha")->location + appIn("Gamma")->location, 2);
    EXPECT_EQ(appIn("Beta")->location, 0);
    expectAgreement();
    chooseInMenu({7});
    press(Qt::Key_Return);
    const Dialogs dialogs({yes("POP_CONFIRM_TITLE", remove), pleaseWait()});
    EXPECT_TRUE(outputOf([] { chooseInMenu({1}); }).endsWith("DEBUG:: Delete Multiple APP\n"));
    EXPECT_TRUE(QTest::qWaitFor(isOver, 20000));
    EXPECT_EQ(names(apps()), QStringList({"Beta", "Gamma"}));
    expectAgreement();
}
