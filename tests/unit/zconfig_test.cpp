#include "ZConfig.h"

#include "Bytes.h"
#include "support.h"

#include <QScopeGuard>

#include <csignal>
#include <filesystem>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

using Edit = std::function<void(ZConfig&)>;

Edit setting(const char* key, const char* value) {
    return [=](ZConfig& file) { file.writeEntry("A", key, value); };
}

Edit removing(const char* group) {
    return [=](ZConfig& file) { file.removeGroup(group); };
}

Edit both(const Edit& first, const Edit& second) {
    return [=](ZConfig& file) { first(file), second(file); };
}

/// The file's bytes behind an edit.
QByteArray edited(const QByteArray& before, const Edit& edit) {
    const Phone phone;
    writeFile(phone.host("/file"), before);
    ZConfig file(phone.host("/file"), false);
    edit(file);
    EXPECT_TRUE(file.flush());
    return readFile(phone.host("/file"));
}

} // namespace

TEST(ZConfig, ReadsWhatCanBeRead) {
    for (const auto& [text, value] : Rows<QByteArray, const char*>{
             {"[A]\nk = v\n", "v"},
             {"[A]\r\nk = v\r\n", "v"},
             {" [ A ] \n\tk\t=  a b \n", "a b"},
             {"[A]\nk = a=b;c#d [e]\n", "a=b;c#d [e]"},
             {"\xEF\xBB\xBF[A]\nk = \xD0\x98\n", "И"},
             {"[A]\nk = 1\nk = 2\n[A]\nk = 3\n", "1"},
             {"[A]\nj = 1\n[B]\nk = 2\n[A]\nk = 3\n", "3"},
             {"[A]\n#k = 1\n;k = 2\n # k = 3\n", "none"},
             {"[A\nk = 1\n[A]x\nk = 2\n", "none"},
             {"k = 1\n[B]\nk = 2\n[a]\nk = 3\n[A]\nK = 4\n", "none"},
             {"\0\xFF[\n=\n]\0\n[A]\n\0\0\nk = v\n"_ba, "v"},
         }) {
        const Phone phone;
        writeFile(phone.host("/file"), text);
        const ZConfig file(phone.host("/file"), true);
        EXPECT_EQ(file.readEntry("A", "k", "none"), value) << text.constData();
        EXPECT_EQ(file.readEntry(" A ", " k ", "none"), value);
    }
}

TEST(ZConfig, AnEditChangesItsOwnLinesOnly) {
    const Edit toFive = setting("k", "5");
    const Edit locking = setting("LockEnabled ", "1");
    for (const auto& [before, edit, after] : Rows<QByteArray, Edit, QByteArray>{
             // a key that is there
             {"[A]\r\nk=1\r\nj=2\r\n", toFive, "[A]\r\nk = 5\r\nj=2\r\n"},
             {"[A]\nj=1\r\nk=2", toFive, "[A]\nj=1\r\nk = 5"},
             {"[A]\nk=1\nk=2\n[A]\nk=3\n", toFive, "[A]\nk = 5\nk=2\n[A]\nk=3\n"},
             {"[A]\n[B]\n[A]\nk=3\n", toFive, "[A]\n[B]\n[A]\nk = 5\n"},
             {"[A]\nLockEnabled=0\n", locking, "[A]\nLockEnabled  = 1\n"},
             {"[A]\nk=1\n", setting("k", "a\nb\r\nc\rd"), "[A]\nk = a b c d\n"},
             {"\0\n[A]\n\xFF\0=\nk=1\n\0"_ba, toFive, "\0\n[A]\n\xFF\0=\nk = 5\n\0"_ba},
             // the same value in another dress
             {"[A]\n  k=5  \n", toFive, "[A]\n  k=5  \n"},
             {"[A]\nLockEnabled=1\n", locking, "[A]\nLockEnabled=1\n"},
             // a new key
             {"[A]\nj=1\n\n# of B\n[B]\n", toFive, "[A]\nj=1\nk = 5\n\n# of B\n[B]\n"},
             {"[A]\r\nj=1", toFive, "[A]\r\nj=1\r\nk = 5\r\n"},
             {"[A]\n#k=1\n", toFive, "[A]\nk = 5\n#k=1\n"},
             {"[A]\n[A]\nj=1\n", toFive, "[A]\nk = 5\n[A]\nj=1\n"},
             {"[A]\n", [](ZConfig& file) { file.writeEntry("A", "k", -7); }, "[A]\nk = -7\n"},
             // a new group
             {"", toFive, "[A]\nk = 5\n"},
             {"[B]\r\nk=1", toFive, "[B]\r\nk=1\r\n[A]\r\nk = 5\r\n"},
             {"k=1\n[a]\n\n# end\n", both(toFive, setting("j", "6")),
              "k=1\n[a]\n\n# end\n[A]\nk = 5\nj = 6\n"},
             // a group that goes
             {"[A]\n\n# of B\n[B]\n# in B\nk=2\n\n# of C\n[C]\n", removing("B"),
              "[A]\n\n# of B\n# of C\n[C]\n"},
             {"[A]\nk=1\n[B]\nk=2", removing("B"), "[A]\nk=1\n"},
             {"[A]\n[B]\nk=1\n[A]\nk=2\n", removing("A"), "[B]\nk=1\n"},
             {"[A]\nk=1\n[B]\n", both(removing("A"), toFive), "[B]\n[A]\nk = 5\n"},
         })
        EXPECT_EQ(edited(before, edit), after) << before.constData();
}

TEST(ZConfig, NameModeOwnerAndLinkAreKept) {
    const Phone phone;
    phone.makeFile("/\xFF/\xFE", "[A]\nk=1\n");
    const QByteArray path = phone.host("/\xFF/\xFE");
    EXPECT_EQ(chown(path.constData(), 1234, 2345) == 0, geteuid() == 0);
    chmod(path.constData(), 04604);
    struct stat before = {};
    struct stat after = {};
    stat(path.constData(), &before);
    ZConfig unchanged(fromBytes(path), false);
    both(setting("k", "1"), removing("B"))(unchanged);
    EXPECT_TRUE(unchanged.flush());
    stat(path.constData(), &after);
    EXPECT_EQ(after.st_ino, before.st_ino); // the same value writes nothing
    EXPECT_EQ(symlink("\xFF/\xFE", phone.host("/link").constData()), 0);
    ZConfig file(phone.host("/link"), false);
    setting("k", "3")(file);
    EXPECT_TRUE(file.flush());
    stat(path.constData(), &after);
    EXPECT_EQ(std::tuple(after.st_mode, after.st_uid, after.st_gid),
              std::tuple(before.st_mode, before.st_uid, before.st_gid));
    EXPECT_TRUE(fs::is_symlink(phone.host("/link").toStdString()));
    EXPECT_EQ(readFile(path), "[A]\nk = 3\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(phone.host("/\xFF").toStdString()), {}), 1);
}

TEST(ZConfig, WhatCannotBeReadOrWrittenIsNeverOverwritten) {
    const Phone phone;
    for (const char* name : {"/unreadable", "/protected", "/readonly"})
        phone.makeFile(name, "[A]\nj=1\n");
    chmod(phone.host("/unreadable").constData(), 0222);
    chmod(phone.host("/protected").constData(), 0444);
    phone.makeFolder("/folder");
    for (const char* name : {"/unreadable", "/protected", "/folder", "/no/file", "/readonly"}) {
        const Unprivileged unprivileged;
        ZConfig file(phone.host(name), QByteArray("/readonly") == name);
        file.writeEntry("A", "k", 1);
        EXPECT_FALSE(file.flush()) << name;
    }
    chmod(phone.host("/unreadable").constData(), 0444);
    for (const char* name : {"/unreadable", "/protected", "/readonly"})
        EXPECT_EQ(readFile(phone.host(name)), "[A]\nj=1\n") << name;
    EXPECT_TRUE(fs::is_directory(phone.host("/folder").toStdString()));
}

TEST(ZConfig, AFileIsMadeByItsFirstChangeAndKeptOnAFullDisk) {
    const Phone phone;
    ZConfig file(phone.host("/file"), false);
    EXPECT_TRUE(file.flush());
    EXPECT_FALSE(exists(phone.host("/file")));
    setting("k", "1")(file);
    const mode_t mask = umask(027);
    EXPECT_TRUE(file.flush());
    umask(mask);
    EXPECT_EQ(modeOf(phone.host("/file")), 0640u);
    file.writeEntry("A", "k", QString(200'000, 'x'));
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_FSIZE, &before); });
    signal(SIGXFSZ, SIG_IGN);
    const rlimit small = {1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_FALSE(file.flush());
    EXPECT_EQ(readFile(phone.host("/file")), "[A]\nk = 1\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(phone.host().toStdString()), {}), 2);
}

TEST(ZConfig, WhatAnotherProgramHasWrittenMeanwhileStays) {
    const Phone phone;
    for (const QByteArray& before : {QByteArray("[a]\nk = 1\n"), QByteArray()}) {
        const QByteArray path = phone.host("/file");
        before.isEmpty() ? std::remove(path.constData()) : (writeFile(path, before), 0);
        ZConfig file(path, false);
        file.writeEntry("a", "k", "2");
        writeFile(path, "[other]\nk = 3\n");
        EXPECT_FALSE(file.flush());
        EXPECT_TRUE(file.isOutdated());
        EXPECT_EQ(readFile(path), "[other]\nk = 3\n");
    }
}
