// The machine that plays the phone: its session's menu, its removable storages.
#include "AM_Files.h"
#include "Bytes.h"
#include "SessionMenu.h"
#include "card.h"
#include "support.h"

#include <QDir>

#include <unistd.h>

namespace {

const QByteArray a = "aaaaaaaa-0000-0000-0000-00000000000a";
const QByteArray b = "bbbbbbbb-0000-0000-0000-00000000000b";
const QByteArray folder = "ffffffff-0000-0000-0000-00000000000f";

QByteArray group(const QByteArray& uuid, const QByteArray& name, const QByteArray& path,
                 const QByteArray& exec) {
    return '[' + uuid + "]\nName = " + name + "\nDirectory = " + path + "\nExec = " + exec +
           "\nIcon = " + path + "/icon.png\n";
}

/// A phone whose menu holds `a` and `b`, and an empty session.
class Session {
public:
    Session() {
        m_phone.makeFile(userMenuTreeFile, '[' + folder + "]\nItems = " + a + ';' + b + ";x;\n");
    }

    void install(const QByteArray& groups) const { m_phone.makeFile(installedDbFile, groups); }

    bool sync() const {
        return syncSessionMenu({root(), folder, root() + "/menu", "quiver", "quiver"});
    }

    /// The values of the entry's key; empty where there is no entry.
    QByteArray value(const QByteArray& uuid, const QByteArray& key) const {
        const QByteArray entry = readFile(path(uuid));
        const qsizetype at = entry.indexOf('\n' + key + '=');
        return at < 0 ? QByteArray() : entry.mid(at + key.size() + 2).split('\n').first();
    }

    QByteArray path(const QByteArray& uuid) const {
        return toBytes(root()) + "/menu/quiver-" + uuid + ".desktop";
    }

    QString root() const { return fromBytes(m_phone.host()); }

    const Phone& phone() const { return m_phone; }

private:
    Phone m_phone;
};

} // namespace

TEST(SessionMenu, AProgramIsOneArgumentWhateverItsNameHolds) {
    const Session session;
    const QByteArray root = toBytes(session.root());
    for (const auto& [exec, argument] : Rows<QByteArray, QByteArray>{
             {"game", "game"},
             {"a b; rm -rf ~ & $(x) `y` 'z'", "a b; rm -rf ~ & \\\\$(x) \\\\`y\\\\` 'z'"},
             {"100% \"sure\" %f", "100%% \\\\\"sure\\\\\" %%f"},
             {"back\\slash", "back\\\\\\\\slash"},
             {"../../bin/sh", ""},
             {"/bin/sh", ""},
             {"a=b", ""},
             {"no\xFFutf", ""},
             {"two\x01", ""},
             {"", ""},
         }) {
        session.install(group(a, "N", "/apps/G", exec));
        EXPECT_TRUE(session.sync());
        EXPECT_EQ(session.value(a, "Exec"),
                  argument.isEmpty() ? "" : '"' + root + "/apps/G/" + argument + '"')
            << exec.constData();
    }
    session.install(group(a, " Say \\n\tit\xFF ", "/apps/G", "g"));
    EXPECT_TRUE(session.sync());
    EXPECT_EQ(session.value(a, "Name"), "Say \\\\n it?");
    EXPECT_EQ(session.value(a, "Icon"), "quiver");
}

TEST(SessionMenu, EntriesComeAndGoWithTheMenuAndOnlyItsOwn) {
    const Session session;
    const QByteArray foreign = "[Desktop Entry]\nX-quiver-Phone=/other\n";
    session.phone().makeFile("/apps/A/icon.png", "x");
    session.install(group(a, "A", "/apps/A", "a") + group(b, "B", "/apps/B", "b"));
    EXPECT_TRUE(session.sync());
    EXPECT_EQ(session.value(a, "Icon"), toBytes(session.root()) + "/apps/A/icon.png");
    EXPECT_EQ(session.value(b, "TryExec"), toBytes(session.root()) + "/apps/B/b");
    session.install(group(a, "New", "/mmc/A", "a"));
    EXPECT_TRUE(session.sync());
    EXPECT_EQ(session.value(a, "Name"), "New");
    EXPECT_FALSE(exists(session.path(b)));
    writeFile(session.path(b), foreign);
    session.install(group(b, "B", "/apps/B", "b"));
    EXPECT_TRUE(session.sync());
    EXPECT_EQ(readFile(session.path(b)), foreign);
    EXPECT_FALSE(exists(session.path(a)));
    session.install(group(a, "A", "/apps/A", "a"));
    const Unprivileged user;
    chmod((toBytes(session.root()) + "/menu").constData(), 0555);
    EXPECT_FALSE(session.sync());
    chmod((toBytes(session.root()) + "/menu").constData(), 0755);
}

TEST(Card, StoragesThatCanBeTakenOutCountWhereSessionsMount) {
    const Phone phone;
    const auto disk = [&](const QByteArray& name, const QByteArray& file, const QByteArray& says) {
        phone.makeFile("/sys/" + name + '/' + file, says);
    };
    disk("sda", "removable", "0\n");
    disk("sdb", "removable", "1\n");
    disk("sdb/sdb1", "partition", "1\n");
    disk("sdb/sdb2", "partition", "2\n");
    disk("mmcblk0", "device/type", "SD\n");
    disk("mmcblk1", "device/type", "MMC\n");
    for (const auto& [numbers, device] : Rows<QByteArray, QByteArray>{{"8:0", "sda"},
                                                                      {"8:17", "sdb/sdb1"},
                                                                      {"8:18", "sdb/sdb2"},
                                                                      {"179:0", "mmcblk0"},
                                                                      {"179:8", "mmcblk1"}})
        ASSERT_EQ(
            symlink(("sys/" + device).constData(), (phone.host() + '/' + numbers).constData()), 0);
    QByteArray table = "rubbish\n1 2 9:9 / /media/gone rw\n";
    for (const char* line :
         {"8:0 / /media/a/fixed", "8:18 / /run/media/a/two", "8:17 / /media/a/my\\040one",
          "179:0 / /mnt/sd", "179:8 / /media/a/inside", "8:17 / /home/a"})
        table += QByteArray("30 1 ") + line + " rw - vfat x rw\n";
    QByteArrayList found;
    for (const Storage& storage : removableStorages(table, phone.host()))
        found += storage.folder + '=' + storage.disk.mid(storage.disk.lastIndexOf('/') + 1);
    EXPECT_EQ(found,
              (QByteArrayList{"/media/a/my one=sdb", "/mnt/sd=mmcblk0", "/run/media/a/two=sdb"}));
}

TEST(Card, ALinkAndALineComeAndGoAndAFolderWithSomethingInItStays) {
    const Phone phone;
    const QString root = fromBytes(phone.host());
    const QByteArray mount = phone.host() + "/mmc/mmca1";
    QDir(root + "/mmc").removeRecursively();
    phone.makeFile("/etc/mtab", "rootfs / rootfs rw 0 0");
    phone.makeFile("/storage/x", "");
    EXPECT_TRUE(insertCard(root, root + "/storage", QString()));
    EXPECT_TRUE(exists(mount + "/x"));
    EXPECT_EQ(readFile(phone.host() + "/etc/mtab"),
              "rootfs / rootfs rw 0 0\n/dev/mmca1 /mmc/mmca1 vfat rw 0 0\n");
    EXPECT_TRUE(insertCard(root, QString(), QString()));
    EXPECT_FALSE(exists(mount));
    EXPECT_EQ(readFile(phone.host() + "/etc/mtab"), "rootfs / rootfs rw 0 0\n");
    phone.makeFile("/mmc/mmca1/quiver/old", "");
    EXPECT_TRUE(insertCard(root, QString(), QString()));
    EXPECT_FALSE(insertCard(root, root + "/storage", QString()));
    EXPECT_TRUE(exists(mount + "/quiver/old"));
}
