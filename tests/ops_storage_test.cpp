#include "ops_support.h"

#include "Bytes.h"
#include "ZListBox.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "discovery.h"
#include "language.h"
#include "menu.h"
#include "operations.h"
#include "paths.h"

#include <QRandomGenerator>

#include <filesystem>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

/// Storage that fails while the program works. These tests mount, so they need a mount namespace of
/// their own: ops_storage.sh starts them in one.

namespace {

const QByteArray folder = "/ezxlocal/download/mystuff/quiver/Game";
const QByteArray cardGame = "/mmc/mmca1/quiver/Card";

class Storage : public Ops {
protected:
    /// A card of its own, with Card on it and Game on the phone, both in the phone's menu.
    void start(const QByteArray& cardSize) {
        ASSERT_TRUE(qEnvironmentVariableIsSet("QUIVER_PRIVATE_MOUNTS"))
            << "to be started by ops_storage.sh";
        fs::remove_all(phone.host("/mmc/mmca1").toStdString());
        mountHere("/mmc/mmca1", "size=" + cardSize);
        insertCard();
        addGame(0, "Game");
        addGame(1, "Card");
        openFilled();
        registerAppInMenu(*appIn("Game"));
        registerAppInMenu(*appIn("Card"));
        ASSERT_EQ(disagreements() + leftovers(), QStringList());
    }

    ~Storage() override {
        while (!m_mounted.isEmpty())
            umount2(m_mounted.takeLast().constData(), MNT_DETACH);
    }

    void mountHere(const QByteArray& path, const QByteArray& options) {
        phone.makeFolder(path);
        m_mounted.append(phone.host(path));
        ASSERT_EQ(mount("none", m_mounted.last().constData(), "tmpfs", 0, options.constData()), 0)
            << strerror(errno);
    }

    void makeReadOnly(const QByteArray& path) {
        const QByteArray host = phone.host(path);
        m_mounted.append(host);
        ASSERT_EQ(mount(host.constData(), host.constData(), nullptr, MS_BIND, nullptr), 0);
        ASSERT_EQ(
            mount(nullptr, host.constData(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr),
            0);
    }

    /// So large that no archiver makes it small.
    void addNoise(const QByteArray& path, qsizetype size) const {
        QByteArray noise(size, '\0');
        for (char& byte : noise)
            byte = char(QRandomGenerator::global()->generate());
        phone.makeFile(path, noise);
    }

    void fill(const QByteArray& path) const {
        for (qsizetype size : {1 << 16, 1})
            for (int i = 0; writeWhole(path + "/fill" + QByteArray::number(i), size); ++i)
                ;
    }

    bool writeWhole(const QByteArray& path, qsizetype size) const {
        writeFile(phone.host(path), QByteArray(size, 'x'));
        return readFile(phone.host(path)).size() == size;
    }

    void fails(const std::function<void()>& operation, const QString& reason) {
        const Dialogs dialogs({pleaseWait(), errorNotice(reason)});
        operation();
    }

    QByteArrayList m_mounted;
};

} // namespace

TEST_F(Storage, FullCardTakesNeitherApplicationNorPackage) {
    ASSERT_NO_FATAL_FAILURE(start("256k"));
    addNoise(folder + "/big", 400'000);
    addNoise(folder + "/levels/0", 100'000);
    const auto phoneBefore = snapshot(phone.host("/ezxlocal/download"));
    const auto cardBefore = snapshot(phone.host("/mmc/mmca1"));
    fails([&] { window->cmd_Move(appIn("Game"), -1); }, "No space left on device");
    fails([&] { window->cmd_SaveAs(appIn("Game"), SAVE_SD); }, "No space left on device");
    EXPECT_EQ(differences(snapshot(phone.host("/ezxlocal/download")), phoneBefore),
              QByteArrayList());
    EXPECT_EQ(differences(snapshot(phone.host("/mmc/mmca1")), cardBefore),
              QByteArrayList{"/zpk_files"});
    EXPECT_EQ(names(apps()), QStringList({"Card", "Game"}));
    expectAgreement();
}

TEST_F(Storage, FullCardKeepsDescriptorsAndGivesItsApplicationsBack) {
    ASSERT_NO_FATAL_FAILURE(start("256k"));
    const QByteArray descriptor = readFile(phone.host(cardGame + "/Card.cfg"));
    fill("/mmc/mmca1");
    EXPECT_TRUE(outputOf([&] {
                    renameApp(*appIn("Card"), "Longer name");
                }).contains("DEBUG:: Error writing cfg file (" + cardGame + "/Card.cfg)\n"));
    EXPECT_EQ(readFile(phone.host(cardGame + "/Card.cfg")), descriptor);
    EXPECT_EQ(filesOf("Card", 1).size(), 4);
    EXPECT_EQ(disagreements() + leftovers(), QStringList());
    EXPECT_TRUE(moveApp(*appIn("Card"), true));
    EXPECT_EQ(readFile(phone.host("/ezxlocal/download/mystuff/quiver/Card/Card.cfg")), descriptor);
    EXPECT_EQ(disagreements() + leftovers(), QStringList());
    EXPECT_TRUE(deleteApp(*appIn("Card"), true));
    window->refreshList(false);
    expectAgreement();
}

TEST_F(Storage, ReadOnlyCardKeepsWhatItHas) {
    ASSERT_NO_FATAL_FAILURE(start("1m"));
    makeReadOnly("/mmc/mmca1");
    const auto before = snapshot(phone.host());
    const QString reason = "Read-only file system";
    fails([&] { window->cmd_Move(appIn("Card"), -1); }, reason);
    fails([&] { window->cmd_Move(appIn("Game"), -1); }, reason);
    fails([&] { window->cmd_Delete(appIn("Card")); }, reason);
    fails([&] { window->cmd_SaveAs(appIn("Game"), SAVE_SD); }, "cannot open file");
    EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList());
    EXPECT_EQ(names(apps()), QStringList({"Card", "Game"}));
    expectAgreement();
    outputOf([&] { renameApp(*appIn("Card"), "New"); });
    EXPECT_EQ(filesOf("Card", 1).value("/Card.cfg"), before.value(cardGame + "/Card.cfg"));
}

TEST_F(Storage, ReadOnlyApplicationFolderRefusesDeletionAndMove) {
    ASSERT_NO_FATAL_FAILURE(start("1m"));
    makeReadOnly(Path::phoneApps.toUtf8());
    const auto before = snapshot(phone.host());
    fails([&] { window->cmd_Delete(appIn("Game")); }, "Read-only file system");
    fails([&] { window->cmd_Move(appIn("Game"), -1); }, "Read-only file system");
    fails([&] { window->cmd_Move(appIn("Card"), -1); }, "Read-only file system");
    EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList());
    expectAgreement();
}

TEST_F(Storage, CardThatWasTakenOutLosesNothing) {
    ASSERT_NO_FATAL_FAILURE(start("1m"));
    const QByteArray card = phone.host("/mmc/mmca1");
    const QByteArray aside = phone.host("/aside");
    phone.makeFile("/ezxlocal/download/mystuff/zpk_files/Card.zpk", "older");
    // What the program would pack if it took its working directory for the card.
    phone.makeFile("/ezxlocal/Card/decoy", "");
    window->loadFolder("/ezxlocal");
    phone.makeFolder("/aside");
    ASSERT_EQ(mount(card.constData(), aside.constData(), nullptr, MS_MOVE, nullptr), 0);
    m_mounted.append(aside);
    const auto before = snapshot(phone.host());
    fails([&] { window->cmd_Move(appIn("Card"), -1); }, "No such file or directory");
    fails([&] { window->cmd_Move(appIn("Game"), -1); }, "No such file or directory");
    fails([&] { window->cmd_SaveAs(appIn("Card"), SAVE_PH); }, "No such file or directory");
    EXPECT_EQ(differences(snapshot(phone.host()), before), QByteArrayList());
    ASSERT_EQ(mount(aside.constData(), card.constData(), nullptr, MS_MOVE, nullptr), 0);
    EXPECT_EQ(names(apps()), QStringList({"Card", "Game"}));
    expectAgreement();
}

TEST_F(Storage, MovedWhereTheSourceCannotBeTakenAwayWhole) {
    ASSERT_NO_FATAL_FAILURE(start("1m"));
    makeReadOnly(folder + "/levels");
    const auto whole = filesOf("Game", 0);
    apps().setCurrentItem(1);
    fails([&] { window->cmd_Move(appIn("Game"), -1); }, "cannot remove");
    EXPECT_EQ(appIn("Game")->location, 1);
    EXPECT_EQ(differences(filesOf("Game", 1), whole), QByteArrayList());
    expectAgreement();
}

TEST_F(Storage, FullPhoneKeepsItsMenuFilesWhole) {
    ASSERT_NO_FATAL_FAILURE(start("1m"));
    const QByteArray am = "/ezxlocal/download/appwrite/am";
    const auto whole = snapshot(phone.host(am));
    mountHere(am, "size=64k");
    for (const QByteArray& path : whole.keys())
        phone.makeFile(am + path, whole[path]);
    fill(am);
    const auto full = snapshot(phone.host(am));
    updateAppInMenu(*appIn("Game"));
    unregisterAppFromMenu(*appIn("Game"));
    registerAppInMenu(*appIn("Game"));
    EXPECT_EQ(differences(snapshot(phone.host(am)), full), QByteArrayList());
}
