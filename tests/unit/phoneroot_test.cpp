#include "PhoneRoot.h"

#include "Bytes.h"
#include "support.h"

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void makeLink(const QByteArray& target, const QByteArray& place) {
    EXPECT_EQ(symlink(target.constData(), place.constData()), 0);
}

} // namespace

TEST(PhoneRoot, APhonePathLiesBelowTheRoot) {
    for (const auto& [asked, host, back] : Rows<QByteArray, QByteArray, QByteArray>{
             {"/", "", "/"},
             {"/mmc/mmca1", "/mmc/mmca1", "/mmc/mmca1"},
             {"//mmc//./x/.", "/mmc/x", "/mmc/x"},
             {"/../../etc/mtab", "/etc/mtab", "/etc/mtab"},
             {"/a/../../...", "/...", "/..."},
             {"/\xD0\x98/\xFF", "/\xD0\x98/\xFF", "/\xD0\x98/\xFF"},
         }) {
        const Phone phone;
        for (const char* end : {"", "/", "//"}) {
            qputenv("QUIVER_ROOT", phone.host() + end);
            EXPECT_EQ(toBytes(hostPath(fromBytes(asked))), phone.host(host));
            EXPECT_EQ(toBytes(phonePath(fromBytes(phone.host(host)))), back);
        }
        const QString beside = fromBytes(phone.host("2") + asked);
        EXPECT_EQ(phonePath(beside), beside);
        qunsetenv("QUIVER_ROOT");
        EXPECT_EQ(toBytes(hostPath(fromBytes(asked))), asked);
        EXPECT_EQ(toBytes(phonePath(fromBytes(asked))), asked);
    }
}

TEST(PhoneRoot, TheCurrentFolderIsThePhonesAlsoBehindLinks) {
    const Phone phone;
    phone.makeFolder("/outside/quiver/First");
    phone.makeFolder("/outside/quiver/Second");
    phone.makeFolder("/real/mmc");
    makeLink("real", phone.host("/root"));
    makeLink(phone.host("/outside"), phone.host("/root/mmc/mmca1"));
    qputenv("QUIVER_ROOT", phone.host("/root"));
    EXPECT_TRUE(enterFolder("/mmc"));
    EXPECT_EQ(currentFolder(), "/mmc");
    EXPECT_EQ(phonePath(phone.host("/real/mmc")), "/mmc");
    EXPECT_TRUE(enterFolder("/mmc/mmca1/quiver"));
    for (const char* name : {"First", "Second"}) {
        EXPECT_EQ(currentFolder(), "/mmc/mmca1/quiver");
        const FolderGuard guard;
        EXPECT_TRUE(enterFolder(name));
        EXPECT_EQ(currentFolder(), QString("/mmc/mmca1/quiver/") + name);
    }
    EXPECT_TRUE(enterFolder(".."));
    EXPECT_EQ(currentFolder(), "/mmc/mmca1");
    EXPECT_FALSE(enterFolder("missing"));
    EXPECT_EQ(currentFolder(), "/mmc/mmca1");
    EXPECT_TRUE(enterFolder("../../../.."));
    EXPECT_EQ(currentFolder(), "/");
    EXPECT_EQ(fs::current_path(), phone.host("/real").toStdString());
}

TEST(PhoneRoot, ARootThatIsNoFolderOrThatTheShellWouldTakeApartIsRefused) {
    const Phone phone;
    phone.makeFile("/file", "");
    for (const QByteArray name : {"/a b", "/it's", "/a$HOME", "/a;b", "/a\\b", "/a*", "/a<b", "/~",
                                  "/{a,b}", "/a\nb", "/file", "/missing"}) {
        if (name != "/file" && name != "/missing")
            phone.makeFolder(name);
        const QByteArray root = phone.host(name);
        qputenv("QUIVER_ROOT", root);
        QString error;
        EXPECT_FALSE(preparePhoneRoot(error)) << root.constData();
        EXPECT_TRUE(toBytes(error).contains(root)) << qPrintable(error);
        EXPECT_FALSE(exists(root + "/tmp"));
    }
}

TEST(PhoneRoot, TheGuardGoesBackToAFolderThatWasRenamedOrCannotBeRead) {
    const Phone phone;
    phone.makeFolder("/before");
    chmod(phone.host("/before").constData(), 0111);
    EXPECT_TRUE(enterFolder("/before"));
    {
        const Unprivileged unprivileged;
        const FolderGuard guard;
        EXPECT_TRUE(enterFolder("/tmp"));
        rename(phone.host("/before").constData(), phone.host("/after").constData());
    }
    EXPECT_EQ(currentFolder(), "/after");
}
