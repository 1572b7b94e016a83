#include "archive.h"
#include "archiver.h"
#include "support.h"
#include "version.h"

#include <QProcess>

namespace {

/// "name" is a file, "name/" a folder, "name -> target" a link.
bool stays(const QStringList& texts) {
    QList<ArchiveEntry> entries;
    QStringList targets;
    for (const QString& text : texts) {
        const QStringList parts = text.split(" -> ");
        const bool isFolder = text.endsWith('/');
        entries.append({isFolder ? text.chopped(1) : parts.first(), 0, isFolder, parts.size() > 1});
        targets += parts.mid(1);
    }
    return staysInside(entries, targets);
}

} // namespace

TEST(Packages, VersionsCompareAsTheSystemComparesThem) {
    const QStringList versions = {"0",   "0.9",  "1",      "1.0",   "1.00", "1.0~rc1", "1.0-1",
                                  "1.1", "1.10", "1.2a",   "1.2+b", "1:0",  "2-1-1",   "2-1.1",
                                  "2~",  "2",    "007.10", "10^",   "1..2", "1.0a~"};
    for (qsizetype i = 0; i < versions.size(); ++i) {
        for (qsizetype j = i; j < versions.size(); ++j) {
            const QString& a = versions.at(i);
            const QString& b = versions.at(j);
            const auto is = [&](const char* relation) {
                return QProcess::execute("dpkg", {"--compare-versions", a, relation, b}) == 0;
            };
            const int expected = is("lt") ? -1 : is("gt") ? 1 : 0;
            const auto sign = [](int value) { return (value > 0) - (value < 0); };
            EXPECT_EQ(sign(compareVersions(a, b)), expected) << qPrintable(a + " and " + b);
            EXPECT_EQ(sign(compareVersions(b, a)), -expected) << qPrintable(b + " and " + a);
        }
    }
    EXPECT_EQ(compareVersions(" 1.0\r", "1.0"), 0);
}

TEST(Packages, NothingMayLeadOutOfItsFolder) {
    for (const QStringList& inside : QList<QStringList>{
             {},
             {"Game/", "Game/Game.cfg", "Game/..a/b..", "Game/..."},
             {"Game/a -> Game.cfg", "Game/b -> ./a", "Game/lib/c -> ../a", "Game/lib/d/e -> ../.."},
             {"Game/loop -> loop", "Game/nowhere -> nothing/there"},
             {"Game/a -> lib", "Game/a.b/x", "Game/a-b", "Game/ab/"}})
        EXPECT_TRUE(stays(inside)) << qPrintable(inside.join(", "));
    for (const QStringList& outside : QList<QStringList>{
             {"/etc/passwd"},
             {"Game/", "Game/../x"},
             {".."},
             {""},
             {"Game/a -> /etc"},
             {"Game/a -> .."},
             {"Game/lib/a -> ../.."},
             {"Game/lib/a -> ../../Game"},
             {"Game -> elsewhere"},
             {"Game/a -> "},
             {"Game/a/b/c -> ../..", "Game/d -> a/b/c/../.."}, // through a link it climbs further
             {"Game/a -> lib", "Game/a/x"},
             {"Game/a/x", "Game/a -> lib"},
             {"Game/a/x/y/z", "Game/A -> lib"}, // a memory card takes them for the same
             {"Game/a", "Game/a -> lib"},
             {"Game/a/b/", "Game/a -> lib"},
             {"Game/a/x -> y", "Game/a -> lib"}})
        EXPECT_FALSE(stays(outside)) << qPrintable(outside.join(", "));
    EXPECT_FALSE(staysInside({{"Game/a", 1, false, true}}, {})); // a target that cannot be read
}

TEST(Packages, WhereThereIsLittleMemoryLessIsPackedAtATime) {
    constexpr qint64 mega = 1024 * 1024;
    for (const auto& [bytes, memory, end] :
         Rows<qint64, qint64, QString>{{1 * mega, 46 * mega, ""}, // all of it fits
                                       {2 * mega, 46 * mega, " -md1m"},
                                       {9999 * mega, 46 * mega, " -md1m"},
                                       {9 * mega, 256 * mega, ""},
                                       {11 * mega, 256 * mega, " -md8m"},
                                       {9999 * mega, 1024 * mega, ""},
                                       {9999 * mega, -1, ""}}) // not known
        EXPECT_EQ(smallMemorySwitch(bytes, memory), end) << bytes << ' ' << memory;
}
