#include "apps_support.h"

#include "ZListBox.h"
#include "ZPK_App.h"
#include "discovery.h"
#include "menu.h"
#include "operations.h"
#include "paths.h"

#include <QRandomGenerator>

#include <filesystem>

#include <sys/mount.h>

/// Storage that fails while the program works. These tests mount, so they need a mount namespace of
/// their own: storage.sh starts them in one.

namespace {

const QByteArray card = "/mmc/mmca1";

class FailingStorage : public Ops {
protected:
    /// A card of its own, with Card on it and Game on the phone, both in the phone's menu.
    void SetUp() override {
        ASSERT_TRUE(qEnvironmentVariableIsSet("QUIVER_PRIVATE_MOUNTS"))
            << "to be started by storage.sh";
        std::filesystem::remove_all(phone.host(card).toStdString());
        phone.makeFolder(card);
        mountAt(card, "none", "tmpfs", 0, "size=256k");
        insertCard();
        addGame(0, "Game");
        addGame(1, "Card");
        openFilled();
        registerAppInMenu(*appIn("Game"));
        registerAppInMenu(*appIn("Card"));
    }

    ~FailingStorage() override {
        while (!m_mounted.isEmpty())
            umount2(m_mounted.takeLast().constData(), MNT_DETACH);
    }

    void mountAt(const QByteArray& path, const QByteArray& source, const char* type,
                 unsigned long flags, const char* options) {
        m_mounted.append(phone.host(path));
        ASSERT_EQ(mount(source.constData(), m_mounted.last().constData(), type, flags, options), 0)
            << strerror(errno);
    }

    void makeReadOnly(const QByteArray& path) {
        mountAt(path, phone.host(path), nullptr, MS_BIND, nullptr);
        mountAt(path, "none", nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr);
        m_mounted.removeLast();
    }

    void fillCard() const {
        for (const qsizetype size : {1 << 16, 1}) {
            QByteArray path;
            for (int i = 0; path.isEmpty() || readFile(path).size() == size; ++i) {
                path = phone.host(card + "/fill" + QByteArray::number(size + i));
                writeFile(path, QByteArray(size, 'x'));
            }
        }
    }

    /// Each of these fails with its reason, and no file is another one afterwards.
    void expectFailures(const QList<std::pair<std::function<void()>, const char*>>& operations,
                        const QByteArrayList& changes = {}) {
        const Snapshot before = snapshot(phone.host());
        for (const auto& [operation, reason] : operations) {
            const Dialogs dialogs({pleaseWait(), errorNotice(reason)});
            operation();
        }
        EXPECT_EQ(differences(snapshot(phone.host()), before), changes);
        EXPECT_EQ(names(apps()), QStringList({"Card", "Game"}));
    }

    std::function<void()> moving(const QByteArray& folder) {
        return [=, this] { window->cmd_Move(appIn(folder), folder == "Game" ? 1 : 0); };
    }

    std::function<void()> deleting(const QByteArray& folder) {
        return [=, this] { window->cmd_Delete(appIn(folder)); };
    }

    std::function<void()> saving(const QByteArray& folder, SAVE_LOCATION where) {
        return [=, this] { window->cmd_SaveAs(appIn(folder), where); };
    }

    QByteArrayList m_mounted;
};

} // namespace

TEST_F(FailingStorage, FullCardTakesNeitherApplicationNorPackage) {
    QByteArray noise(400'000, '\0');
    for (char& byte : noise)
        byte = char(QRandomGenerator::global()->generate());
    phone.makeFile("/ezxlocal/download/mystuff/quiver/Game/big", noise);
    const char* full = "No space left on device";
    expectFailures({{moving("Game"), full}, {saving("Game", SAVE_SD), full}},
                   {card + "/zpk_files"});
    expectAgreement();
}

TEST_F(FailingStorage, FullCardKeepsDescriptorsAndGivesItsApplicationsBack) {
    const QByteArray path = card + "/quiver/Card/Card.cfg";
    const QByteArray descriptor = readFile(phone.host(path));
    fillCard();
    const Dialogs dialogs({errorNotice("Card.cfg: No space left on device")});
    renameApp(*appIn("Card"), "Longer name");
    EXPECT_EQ(readFile(phone.host(path)), descriptor);
    EXPECT_EQ(filesOf("Card", 1).size(), 4);
    EXPECT_TRUE(moveApp(*appIn("Card"), true));
    EXPECT_EQ(filesOf("Card", 0).size(), 4);
    EXPECT_EQ(disagreements() + leftovers(), QStringList());
}

TEST_F(FailingStorage, ReadOnlyFoldersKeepWhatTheyHave) {
    const char* reason = "Read-only file system";
    makeReadOnly(Path::phoneApps.toUtf8());
    expectFailures(
        {{deleting("Game"), reason}, {moving("Game"), reason}, {moving("Card"), reason}});
    makeReadOnly(card);
    expectFailures({{deleting("Card"), reason},
                    {moving("Card"), reason},
                    {moving("Game"), reason},
                    {saving("Game", SAVE_SD), "cannot open file"}});
    expectAgreement();
    const Snapshot before = filesOf("Card", 1);
    const Dialogs dialogs({errorNotice("Card.cfg: Read-only file system")});
    renameApp(*appIn("Card"), "New");
    EXPECT_EQ(differences(filesOf("Card", 1), before), QByteArrayList());
}

TEST_F(FailingStorage, MovedWhereTheSourceCannotBeTakenAwayWhole) {
    makeReadOnly("/ezxlocal/download/mystuff/quiver/Game/levels");
    const Snapshot whole = filesOf("Game", 0);
    {
        const Dialogs dialogs({pleaseWait(), errorNotice("cannot remove")});
        moving("Game")();
    }
    EXPECT_EQ(appIn("Game")->location, 1);
    EXPECT_EQ(differences(filesOf("Game", 1), whole), QByteArrayList());
    expectAgreement();
}
