#include "descriptor.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "support.h"

#include <filesystem>

#include <sys/stat.h>

TEST(Descriptor, AValueIsTheRestOfTheFirstLineWithItsPrefix) {
    const QByteArray x120(120, 'x');
    for (const auto& [text, value] : Rows<QByteArray, QByteArray>{
             {"Name = Game", "Game"},
             {"\n\nAuthor = A\nName = Game\nName = Other\n", "Game"},
             {"Name = Game\r\nAuthor = A\r\n", "Game\r"},
             {"Name =  a = b \n", " a = b "},
             {"Name = \nName = Game\n", ""},
             {"Name=Game\nName =Game\nName  = Game\n Name = Game\nname = Game\nXName = Game\n", ""},
             {"", ""},
             {"Name =", ""},
             {"Name = " + x120 + "1234567\n", x120 + "1234567"},
             {"Name = " + x120 + x120 + x120 + x120 + x120, x120 + "xxxxxxx"},
             {"Name = " + x120 + "123456\xD0\x98", x120 + "123456"},
             {"Name = " + x120 + "12345\xD0\x98.", x120 + "12345\xD0\x98"},
             {"Name = " + x120 + "1234\xF0\x9F\x8E\xAE", x120 + "1234"},
             {"Name = " + x120 + "123\xF0\x9F\x8E\xAE.", x120 + "123\xF0\x9F\x8E\xAE"},
         })
        EXPECT_EQ(findValue(text, "Name = "), value) << text.constData();
    EXPECT_LE(findValue("Name = " + QByteArray(300, '\x80'), "Name = ").size(), 127);
}

TEST(Descriptor, EveryLineThatBeginsWithTheKeyIsReplaced) {
    const QByteArray longLine = "Comment = " + QByteArray(600, 'x') + '\n';
    for (const auto& [before, after] : Rows<QByteArray, QByteArray>{
             {"Exec = x\nName=Old", "Exec = x\nName = New\n"},
             {"\nName = a\n\n\nExec = x\n\nName = b\n", "Name = New\nExec = x\nName = New\n"},
             {"Names of all\n", "Name = New\n"},
             {"name = a\n Name = b\n# c\n", "name = a\n Name = b\n# c\n"},
             {"Name = a\r\nExec = x\r\n", "Name = New\nExec = x\r\n"},
             {longLine + "Name = a", longLine + "Name = New\n"},
             {"\n\n", ""},
         })
        EXPECT_EQ(replaceKeyLine(before, "Name", "New"), after) << before.constData();
}

TEST(Descriptor, TheRecordHoldsWhatTheFileSays) {
    const Phone phone;
    phone.makeFile("/apps/Game/Game.cfg", "Comment = c\xFF\nIcon = icon.png\nExec = run\n"
                                          "Version = 1.0 \nAuthor = A\r\nName = \xD0\x98\n");
    EXPECT_TRUE(enterFolder("/apps"));
    const auto app = readDescriptor("Game");
    ASSERT_TRUE(app);
    const QStringList fields = {app->name, app->author,  app->version, app->exec,
                                app->icon, app->comment, app->path};
    EXPECT_EQ(toBytes(fields.join('|')), "\xD0\x98|A\r|1.0 |run|icon.png|c\xFF|/apps/Game");
    EXPECT_FALSE(app->registeredInMenu || app->uuid || app->uiWord != 0);
    EXPECT_EQ(currentFolder(), "/apps");
    for (const QByteArray& content :
         {QByteArray(), QByteArray(100, '\0'), QByteArray(1'000'000, 'x')}) {
        phone.makeFile("/apps/Game/Game.cfg", content);
        const auto nameless = readDescriptor("Game");
        ASSERT_TRUE(nameless);
        EXPECT_EQ(nameless->name + nameless->path, "/apps/Game");
    }
}

TEST(Descriptor, WithoutAReadableFileThereIsNoRecord) {
    const Phone phone;
    phone.makeFolder("/a/Folder/Folder.cfg");
    phone.makeFolder("/a/Pipe");
    phone.makeFile("/a/Case/case.cfg", "Name = x\n");
    phone.makeFile("/a/Huge/Huge.cfg", "Name = x\n");
    std::filesystem::resize_file(phone.host("/a/Huge/Huge.cfg").toStdString(), 3'000'000'000);
    EXPECT_EQ(mkfifo(phone.host("/a/Pipe/Pipe.cfg").constData(), 0666), 0);
    EXPECT_TRUE(enterFolder("/a"));
    for (const QByteArray name : {"Folder", "Pipe", "Huge", "Case", "Missing"}) {
        EXPECT_EQ(outputOf([&] { EXPECT_FALSE(readDescriptor(name)); }),
                  name == "Huge" ? "DEBUG:: Error while allocating memory for file\n"
                                 : "DEBUG:: Error while opening file (" + name + ".cfg)\n");
        EXPECT_EQ(currentFolder(), "/a") << name.constData();
    }
}
