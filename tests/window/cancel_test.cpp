#include "apps_support.h"

#include "Bytes.h"
#include "Waiting.h"
#include "ZListBox.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "discovery.h"
#include "install.h"
#include "language.h"
#include "packageinfo.h"
#include "paths.h"
#include "settings.h"
#include "shell.h"

#include <filesystem>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// "Game" is on the phone. Commands stop half-way, and wait there until they are ended.
class Cancelling : public Ops {
protected:
    Cancelling() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { cancelAtMark(); });
        m_timer.start(10);
    }

    /// What `share` quarters of the files leave of a folder, once `command` has done its work.
    QByteArray halfWay(const QByteArray& command, const QByteArray& where, int share) const {
        return command + " > /dev/null; cd '" + where + "'; ls | tail -n +" +
               QByteArray::number(10 * share + 1) + " | xargs rm; " + stop();
    }

    QByteArray stop() const { return ": > " + m_mark + "; sleep 600"; }

    void useArchiver(const QByteArray& operation, const QByteArray& script) const {
        phone.makeFile("/archiver", "#!/bin/sh\nif [ \"$1 $2\" = '" + operation + " -y' ]; then\n" +
                                        script + "\nfi\nexec " SEVEN_ZIP " \"$@\"\n");
        chmod(phone.host("/archiver").constData(), 0755);
        ArchiverPath = fromBytes(phone.host("/archiver"));
    }

    void addBigGame() const {
        addGame(0, "Game");
        for (int i = 10; i < 50; ++i)
            phone.makeFile(appsFolder(0).toUtf8() + "/Game/data/" + QByteArray::number(i),
                           QByteArray(5000, char(i)));
    }

    Dialogs::Step notice(const QString& text) {
        return [this, text](ZPopup& popup) {
            EXPECT_EQ(popup.title(), tr("POP_CANCELLED_TITLE"));
            EXPECT_EQ(messageOf(popup), text);
            EXPECT_TRUE(m_wasCancelled);
            m_wasCancelled = false;
            press(Qt::Key_F1);
        };
    }

    Dialogs::Step nothingLeft() { return notice(tr("POP_CANCELLED_TEXT")); }

    bool m_closes = false; ///< by the window's own button instead of a key

private:
    void cancelAtMark() {
        if (!exists(m_mark) || !canCancelWork())
            return;
        fs::remove(m_mark.toStdString());
        m_wasCancelled = true;
        EXPECT_TRUE(isWorking());
        m_closes ? void(ZScreen::instance().close()) : press(Qt::Key_F2);
    }

    QByteArray m_mark = phone.host("/mark");
    bool m_wasCancelled = false;
    QTimer m_timer;
};

} // namespace

TEST_F(Cancelling, LeavesEveryByteAsItWas) {
    addBigGame();
    phone.makeFolder(Path::phonePackages.toUtf8());
    openFilled();
    ASSERT_TRUE(appIn("Game"));
    const QByteArray package = phone.host("/Game.zpk");
    const QByteArray apps = phone.host(appsFolder(0).toUtf8());
    ASSERT_EQ(system(("cd " + apps + "; " SEVEN_ZIP " a " + package + " Game > /dev/null").data()),
              0);
    const auto install = [&] {
        const Dialogs dialogs({pressing(Qt::Key_Return), pleaseWait(), nothingLeft()});
        installZpk(packageAt(fromBytes(package)), false);
    };
    for (const int share : {1, 2, 3}) {
        SCOPED_TRACE(share);
        m_closes = share == 3;
        const QByteArray data = apps + "/Game/data";
        phone.makeFile(appsFolder(0).toUtf8() + "/Game/settings", "its own");
        const Snapshot before = snapshot(phone.host());
        const auto expectAsBefore = [&](const char* what) {
            fs::remove(phone.host("/archiver").toStdString());
            EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList()) << what;
        };
        useArchiver("x", halfWay(SEVEN_ZIP " \"$@\"", data, share));
        install();
        expectAsBefore("upgrade");
        useArchiver("a", "head -c 9999 /dev/zero > \"$3.tmp\"; " + stop());
        choose("Game", {SaveAsEntry, SaveOnPhoneEntry}, {pleaseWait(), nothingLeft()});
        expectAsBefore("save");
        {
            const QByteArray target = phone.host(appsFolder(1).toUtf8()) + "/Game";
            const FakeCommand mv(phone, "mv", halfWay("cp -a \"$@\"", target + "/data", share));
            choose("Game", {MoveEntry},
                   {yes(tr("POP_CONFIRM_MOVE_TEXT") + "\nGame"), pleaseWait(), nothingLeft()});
        }
        fs::remove_all(phone.host("/fake").toStdString());
        expectAsBefore("move");
        fs::rename((apps + "/Game").toStdString(), phone.host("/away").toStdString());
        useArchiver("x", halfWay(SEVEN_ZIP " \"$@\"", data, share));
        install();
        fs::rename(phone.host("/away").toStdString(), (apps + "/Game").toStdString());
        expectAsBefore("installation");
    }
    expectAgreement();
}

TEST_F(Cancelling, AMoveThatHasCopiedEverythingIsFinished) {
    addBigGame();
    openFilled();
    const Snapshot game = filesOf("Game", 0);
    const FakeCommand mv(
        phone, "mv",
        halfWay("cp -a \"$@\"; cd / ", phone.host(appsFolder(0).toUtf8()) + "/Game/data", 2));
    choose("Game", {MoveEntry},
           {yes(tr("POP_CONFIRM_MOVE_TEXT") + "\nGame"), pleaseWait(), okNotice()});
    EXPECT_EQ(differences(filesOf("Game", 1), game), QByteArrayList());
    EXPECT_TRUE(filesOf("Game", 0).isEmpty());
    expectAgreement();
}

TEST_F(Cancelling, ABatchStopsAfterTheItemAtWork) {
    for (const char* name : {"Alpha", "Beta", "Gamma"})
        addGame(0, name);
    openFilled();
    const FakeCommand mv(phone, "mv",
                         "case $1 in *Beta) : > " + phone.host("/mark") +
                             "; sleep 0.3;; esac; exec /bin/mv \"$@\"");
    const Dialogs dialogs({pleaseWait(), notice("Stopped after 2 of 3.")});
    window->mainOptM_MultiSelect();
    window->mainOptMMS_SelectAll();
    window->cmd_MultiMove();
    EXPECT_EQ(filesOf("Alpha", 1).size() + filesOf("Beta", 1).size(), 8);
    EXPECT_EQ(filesOf("Gamma", 0).size(), 4);
    expectAgreement();
}
