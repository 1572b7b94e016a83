#include "apps_support.h"

#include "Bytes.h"
#include "Waiting.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "discovery.h"
#include "language.h"
#include "lock.h"
#include "menu.h"
#include "operations.h"

#include <QTest>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

struct Filter {
    bool card;
    bool phone;
    bool registeredOnly;
};

class Batches : public Ops {
protected:
    void setFilter(const Filter& filter) {
        const bool wanted[] = {filter.card, filter.phone, filter.registeredOnly};
        for (int id = OnCardEntry; id <= OnlyRegisteredEntry; ++id) {
            if (window->getViewMenu()->isItemChecked(id) != wanted[id])
                chooseInMenu({ViewEntry, id});
        }
    }

    bool isOver() {
        return QTest::qWaitFor([this] { return !apps().hasCheckBoxes(); }, 20000);
    }

    /// The step that reads which application an error was about.
    static Dialogs::Step failureOf(const QString& name) {
        return [name](ZPopup& popup) {
            EXPECT_EQ(popup.title(), tr("POP_ERROR_TITLE") + ": " + name);
            EXPECT_TRUE(messageOf(popup).contains(name));
            press(Qt::Key_F1);
        };
    }
};

} // namespace

/// Every command on an application with an odd number fails.
TEST_F(Batches, TakeTheCheckedApplicationsAndLoseNothing) {
    const QByteArray odd = "for last; do :; done; case $last in *App[1357]*) echo \"no $last\"; "
                           "exit 1;; esac; exec /bin/";
    openFilled();
    for (const auto& [filter, deletes, pattern] :
         Rows<Filter, bool, int>{{{true, true, false}, false, 0xFF},
                                 {{true, true, false}, true, 0xFF},
                                 {{true, false, false}, false, 0xB},
                                 {{true, false, false}, true, 0xD},
                                 {{false, true, true}, false, 0x6},
                                 {{false, true, true}, true, 0x7},
                                 {{true, true, true}, false, 0x2D},
                                 {{true, true, true}, true, 0x33}}) {
        SCOPED_TRACE(testing::Message() << filter.card << filter.phone << deletes << pattern);
        for (int i = 0; i < 8; ++i)
            addGame(i / 2 % 2, "App" + QByteArray::number(i));
        window->refreshList(true);
        for (const auto& [key, app] : AppMap) {
            if (app->name != u"App4")
                registerAppInMenu(*app);
        }
        setFilter(filter);
        window->refreshList(false);
        QStringList kept;
        QList<Dialogs::Step> steps = {pleaseWait()};
        const QStringList shown = names(apps());
        for (int row = 0; row < shown.size(); ++row) {
            const QString name = shown.at(row);
            const bool isChecked = (pattern >> row & 1) != 0;
            const bool fails = isChecked && name.back().digitValue() % 2 == 1;
            if (fails)
                steps.append(failureOf(name));
            if (!isChecked || fails || (!deletes && filter.card && filter.phone))
                kept.append(name);
        }
        {
            const FakeCommand rm(phone, "rm", odd + "rm \"$@\"");
            const FakeCommand mv(phone, "mv", odd + "mv \"$@\"");
            const Dialogs dialogs(steps);
            window->mainOptM_MultiSelect();
            for (int row = 0; row < shown.size(); ++row)
                apps().item(row)->setChecked((pattern >> row & 1) != 0);
            deletes ? window->cmd_MultiDelete() : window->cmd_MultiMove();
        }
        EXPECT_EQ(names(apps()), kept);
        EXPECT_EQ(AppMap.size(), deletes ? 8 - shown.size() + kept.size() : 8);
        for (const auto& [key, app] : AppMap)
            EXPECT_EQ(filesOf(toBytes(app->name), app->location).size(), 4);
        expectAgreement();
        while (!AppMap.empty())
            deleteApp(*AppMap.begin()->second, true);
    }
}

TEST_F(Batches, TellTheirProgressAndLetNothingComeBetween) {
    for (const char* name : {"Alpha", "Beta", "Gamma"})
        addGame(0, name);
    openFilled();
    chooseInMenu({MultiSelectEntry});
    chooseInMenu({SelectAllEntry});
    press(Qt::Key_Return);
    QStringList progress;
    const FakeCommand rm(phone, "rm", "sleep 0.1; exec /bin/rm \"$@\"");
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        const WorkProgress now = workProgress();
        const QString text = QString("%1/%2").arg(now.number).arg(now.total);
        if (now.total > 0 && !progress.contains(text))
            progress.append(text);
    });
    watch.start(5);
    const QString remove = tr("POP_CONFIRM_DELETE_MULTIPLE_TEXT");
    const Dialogs dialogs({no(remove), yes(remove), pleaseWait()});
    chooseInMenu({DeleteCheckedEntry});
    EXPECT_TRUE(apps().hasCheckBoxes());
    chooseInMenu({DeleteCheckedEntry});
    // Nothing else is done between the answer and its work.
    for (const int key : {Qt::Key_F2, Qt::Key_Up, Qt::Key_Return, Qt::Key_F1, Qt::Key_1})
        press(key);
    touchRow(apps(), 0);
    ZScreen::instance().close();
    EXPECT_TRUE(isOver());
    EXPECT_EQ(progress, QStringList({"1/2", "2/2"}));
    EXPECT_EQ(names(apps()), QStringList({"Alpha"}));
    EXPECT_TRUE(ZScreen::instance().isVisible());
    expectAgreement();
}

/// With the card out of view, in the mode for several, behind a change of tabs.
TEST_F(Batches, TheNeighbourOfAMovedApplicationIsSafe) {
    for (const char* name : {"Alpha", "Beta", "Gamma"})
        addGame(0, name);
    openFilled();
    chooseInMenu({ViewEntry, OnCardEntry});
    chooseInMenu({MultiSelectEntry});
    pressAll({Qt::Key_Right, Qt::Key_Left});
    choose("Alpha", {MoveEntry}, {yes(tr("POP_CONFIRM_MOVE_TEXT") + "\nAlpha")});
    EXPECT_EQ(names(apps()), QStringList({"Beta", "Gamma"}));
    choose("Gamma", {DeleteEntry}, {yes(tr("POP_CONFIRM_DELETE_TEXT") + "\nGamma")});
    EXPECT_EQ(appIn("Gamma"), nullptr);
    EXPECT_EQ(names(apps()), QStringList({"Beta"}));
    EXPECT_EQ(apps().currentItem(), 0); // the last row is gone, and the one above it highlighted
    expectAgreement();
}

/// Two programs on one phone: the window sees what the other one does by the database and the
/// folders, as it would between processes.
class UiSharing : public Ops {
protected:
    /// As another program has the phone and renames the application.
    void renameElsewhere(const QByteArray& folder, const QByteArray& name) {
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open(phone.host("/ezxlocal/quiver/AppMan.db").constData(), &other),
                  SQLITE_OK);
        const QByteArray sql = "UPDATE AppReg SET Name = '" + name + "'";
        EXPECT_EQ(sqlite3_exec(other, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(other);
        phone.makeFile("/ezxlocal/download/mystuff/quiver/" + folder + '/' + folder + ".cfg",
                       "Name = " + name + "\nExec = game\n");
    }

    /// False while the window has the phone.
    bool isFree() const {
        const int folder =
            ::open(phone.host("/ezxlocal/quiver").constData(), O_RDONLY | O_DIRECTORY);
        const bool isFree = flock(folder, LOCK_EX | LOCK_NB) == 0;
        close(folder);
        return isFree;
    }
};

TEST_F(UiSharing, AnIdleWindowLeavesThePhoneToOthersAndShowsWhatTheyDidBeforeItActs) {
    addGame(phoneMemory, "Game");
    ASSERT_TRUE(lockPhone(0));
    openFilled();
    EXPECT_FALSE(isFree());
    EXPECT_TRUE(QTest::qWaitFor([&] { return isFree(); }));
    renameElsewhere("Game", "Other");
    press(Qt::Key_F1);
    EXPECT_FALSE(ZScreen::instance().isCovered()) << "a key for a row that is no longer true";
    EXPECT_EQ(names(apps()), QStringList{"Other"});
    press(Qt::Key_F1);
    EXPECT_TRUE(ZScreen::instance().isCovered());
    QTest::qWait(800);
    EXPECT_FALSE(isFree()) << "the options menu is open";
    press(Qt::Key_F2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isFree(); }));
    const int holder = ::open(phone.host("/ezxlocal/quiver").constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(holder, LOCK_EX), 0);
    const Dialogs dialogs({[](const ZPopup& popup) {
        EXPECT_EQ(messageOf(popup), tr("TXT_PHONE_BUSY"));
        press(Qt::Key_F1);
    }});
    press(Qt::Key_F1);
    EXPECT_FALSE(ZScreen::instance().isCovered());
    close(holder);
}
