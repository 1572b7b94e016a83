#include "storage.h"

#include "Bytes.h"
#include "support.h"
#include "upgrade.h"

#include <QDir>

#include <sys/stat.h>

namespace {

const QByteArray card = "DEBUG:: SD exists\n";
const QByteArray ext = "DEBUG:: SD extended partition exists\n";
const QByteArray noCard = "DEBUG:: SD doesn't exist\n";

const QList<QByteArray> phoneFolders = {"/ezxlocal/download/mystuff/quiver",
                                        "/ezxlocal/download/mystuff/skins", "/ezxlocal/quiver"};
const QList<QByteArray> cardFolders = {"/mmc/mmca1/quiver", "/mmc/mmca1/skins", "/mmc/mmcb1/skins"};

QByteArray trying(const QByteArray& folder) {
    return "DEBUG:: Dir '" + folder + "' doesn't exist. Try to create it\n";
}

} // namespace

TEST(Storage, TheCardIsFoundInTheMountTable) {
    for (const auto& [table, output] : Rows<const char*, QByteArray>{
             {nullptr, "DEBUG:: Cannot determine if SD is exists. Disabled by default\n"},
             {"/dev/a /mmc/mmca1 vfat rw 0 0\n", card},
             {"/dev/a /mmc/mmca1/sub vfat rw 0 0\n", card},
             {"/dev/a /media\\040x/mmc/mmca1 vfat\n", card},
             {"/dev/b /mmc/mmcb1 ext3\n", ext + noCard},
             {"/dev/a /mmc/mmca1 vfat\n/dev/b /mmc/mmcb1 ext3\n", card + ext},
             {"/mmc/mmca1 /mnt vfat rw 0 0\n", noCard},
             {"#/dev/a /mmc/mmca1 vfat\n # /dev/a /mmc/mmca1 vfat\n", noCard},
             {"\n  \nshort\n/dev/a\n/dev/a /MMC/MMCA1 vfat\n", noCard},
         }) {
        const Phone phone;
        for (const QByteArray& folder : phoneFolders + cardFolders)
            phone.makeFolder(folder);
        if (table)
            phone.makeFile("/etc/mtab", table);
        EXPECT_EQ(outputOf(prepareStorage), output) << table;
        EXPECT_EQ(SdPresent, output.contains(card)) << table;
        EXPECT_EQ(SdExtPresent, output.contains(ext)) << table;
    }
}

TEST(Storage, EachFolderIsMadeWithTheModeOfThePhonesInUse) {
    for (const bool hasCard : {false, true}) {
        const Phone phone;
        for (const char* parent : {"/ezxlocal/download/mystuff", "/mmc/mmca1", "/mmc/mmcb1"})
            phone.makeFolder(parent);
        phone.makeFile("/etc/mtab", hasCard ? "/dev/a /mmc/mmca1 vfat\n" : "");
        QByteArray expected = hasCard ? card : noCard;
        for (const QByteArray& folder :
             (hasCard ? cardFolders : QList<QByteArray>()) + phoneFolders)
            expected += trying(folder);
        const mode_t before = umask(hasCard ? 0 : 022);
        EXPECT_EQ(outputOf(prepareStorage), expected);
        umask(before);
        for (const QByteArray& folder : phoneFolders)
            EXPECT_EQ(modeOf(phone.host(folder)), 01411u) << folder.constData();
        for (const QByteArray& folder : cardFolders)
            EXPECT_EQ(modeOf(phone.host(folder)), hasCard ? 01411u : 0u) << folder.constData();
    }
}

TEST(PowerCut, WhatWasOnItsWayIsThereOnceAndWhole) {
    const QByteArray onPhone = "/ezxlocal/download/mystuff/quiver/";
    const QByteArray onCard = "/mmc/mmca1/quiver/";
    const Phone phone;
    const auto makeApp = [&](const QByteArray& folder, int files) {
        for (int i = 0; i < files; ++i)
            phone.makeFile(folder + "/file" + QByteArray::number(i), "x");
    };
    phone.makeFolder(onCard + ".First.none");
    makeApp(onCard + "First", 2);
    phone.makeFolder(onCard + ".Never.none");
    phone.makeFolder(onPhone + ".Half.copy");
    makeApp(onPhone + "Half", 1);
    makeApp(onCard + "Half", 2);
    phone.makeFolder(onCard + ".Whole.copy");
    makeApp(onCard + "Whole", 2);
    makeApp(onPhone + "Whole", 1);
    phone.makeFolder(onPhone + ".Gone.copy");
    makeApp(onPhone + "Gone", 2);
    mendUpgrades();
    const auto namesIn = [&](const QByteArray& folder) {
        return QDir(fromBytes(phone.host(folder)))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name)
            .join(' ');
    };
    EXPECT_EQ(namesIn(onPhone), "Gone");
    EXPECT_EQ(namesIn(onCard), "Half Whole");
    EXPECT_EQ(namesIn(onCard + "Half"), "file0 file1");
    QDir(fromBytes(phone.host("/mmc/mmca1"))).removeRecursively();
    phone.makeFolder(onPhone + ".Gone.copy");
    mendUpgrades();
    EXPECT_EQ(namesIn(onPhone), ".Gone.copy Gone") << "the card is out";
}
