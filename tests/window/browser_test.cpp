#include "window_support.h"

#include "ListHeader.h"
#include "PhoneRoot.h"
#include "RES_ICON_Reader.h"
#include "ZLabel.h"
#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "ZPK_App.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "discovery.h"
#include "packageinfo.h"
#include "paths.h"
#include "question.h"
#include "settings.h"

#include <QTest>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt;

namespace {

const QByteArray memory = "/ezxlocal/download/mystuff";

QByteArray chosen(int row) {
    return "DEBUG:: ZPK selected index : " + QByteArray::number(row) + '\n';
}

/// The step that takes the dialog's title and text and presses `key`.
Dialogs::Step reading(QStringList& shown, int key) {
    return [&shown, key](ZPopup& popup) {
        shown += {popup.title(), messageOf(popup)};
        press(key);
    };
}

/// The please-wait notice is on the screen; nothing answers it but time.
Dialogs::Step waiting() {
    return [](ZPopup& popup) {
        EXPECT_EQ(messageOf(popup), "Please wait…");
        for (const int key : {Key_Return, Key_Escape, Key_F1, Key_F2, Key_Down})
            hold(key, 0); // nothing for the list below
        touch(popup);
        popup.done(0); // time passes
    };
}

class UiBrowser : public Ui {
protected:
    /// Opens the window with the browser in front.
    void openBrowser() {
        openFilled();
        press(Key_Right);
    }

    void enter(const QString& folder) {
        window->loadFolder(folder);
        ASSERT_EQ(names(files()).value(0), folder);
    }

    int rowNamed(const QString& name) { return int(names(files()).indexOf(name)); }

    void highlight(const QString& name) {
        ASSERT_GE(rowNamed(name), 0) << qPrintable(name);
        files().setCurrentItem(rowNamed(name));
    }

    QString iconOf(int row) {
        const QImage image = files().item(row)->pixmap(0, Measure::compactIcon).toImage();
        for (const char* name : {"gen_back_to_arrw_small.bmp", "fm_folder_thb.bmp", "Mpkgbox_Big.g",
                                 "fm_unknown_thb.bmp"}) {
            if (image == RES_ICON_Reader().getIcon(name, Measure::compactIcon).toImage())
                return name;
        }
        return image.isNull() ? "none" : "another";
    }

    QString sizeOf(int row) {
        const QList<ZListItem> lines = files().item(row)->subItems(1);
        return lines.size() > 1 ? lines.at(1).text : "none";
    }

    /// A package as the packager makes it, with one application of that name in it.
    void addPackage(const QByteArray& path, const QByteArray& app,
                    const QByteArray& version = "1.0") {
        const QByteArray folder = "/pack/" + app;
        phone.makeFile(folder + '/' + app + ".cfg",
                       "Name = " + app + "\nAuthor = Packed\nVersion = " + version + '\n');
        phone.makeFile(folder + '/' + app, "#!/bin/sh\n");
        chmod(phone.host(folder + '/' + app), 0600);
        const QByteArray command = "cd " + phone.host("/pack") + " && " SEVEN_ZIP " a '" +
                                   phone.host(path) + "' " + app + " >/dev/null";
        ASSERT_EQ(system(command.constData()), 0);
    }

    /// Installing has left the screen as it was: the list in front takes the keys.
    void expectUsable() {
        EXPECT_EQ(ZPopup::active(), nullptr);
        EXPECT_TRUE(files().hasFocus());
        EXPECT_EQ(window->mainWidgetTitle(), "Quiver");
        for (const ZPopup* popup : ZScreen::instance().findChildren<ZPopup*>())
            EXPECT_FALSE(popup->isVisible());
    }

    /// Until the timers of a confirmed question have run.
    static void settle() { QTest::qWait(40); }
};

} // namespace

TEST_F(UiBrowser, RowsShowFoldersThenFilesWithSizes) {
    const QByteArray zoo = memory + "/zoo/";
    for (const char* name : {"Zebra", "ant", "\xff\xfe"})
        phone.makeFolder(zoo + name);
    for (const auto& [name, size] : Rows<QByteArray, qint64>{{"0.zpk", 1023},
                                                             {"1.zpk", 1024},
                                                             {"2.zpk", 3221225472},
                                                             {"A.ZPK", 7},
                                                             {"a.zpk.txt", 7},
                                                             {"notes.txt", 7},
                                                             {"\xc3\x28.zpk", 7}}) {
        phone.makeFile(zoo + name, "");
        ASSERT_EQ(truncate(phone.host(zoo + name), size), 0);
    }
    std::filesystem::create_symlink("nowhere", phone.host(zoo + "gone.zpk").toStdString());
    openBrowser();
    EXPECT_EQ(names(files()), QStringList({memory, "..", "quiver", "skins", "zoo"}));
    enter(memory + "/zoo");
    const QString folder = "fm_folder_thb.bmp", package = "Mpkgbox_Big.g",
                  unknown = "fm_unknown_thb.bmp", broken = QChar(0xDCC3) + QString("(.zpk");
    using Row = std::tuple<QString, QString, QString, bool>; // the last: can be installed
    const QList<Row> packages = {{memory + "/zoo", "none", "none", false},
                                 {"..", "gen_back_to_arrw_small.bmp", "none", false},
                                 {"Zebra", folder, "none", false},
                                 {"ant", folder, "none", false},
                                 {QString(QChar(0xDCFF)) + QChar(0xDCFE), folder, "none", false},
                                 {"0.zpk", package, "1023 bytes", true},
                                 {"1.zpk", package, "1.00 Kbytes", true},
                                 {"2.zpk", package, "3145728.00 Kbytes", true},
                                 {"a.zpk.txt", package, "7 bytes", false},
                                 {"gone.zpk", package, "", true},
                                 {broken, package, "7 bytes", true}};
    const auto expectRows = [&](const QList<Row>& rows) {
        ASSERT_EQ(files().count(), rows.size());
        for (int i = 0; i < rows.size(); ++i) {
            files().setCurrentItem(i);
            EXPECT_EQ(rows.at(i), Row(names(files()).at(i), iconOf(i), sizeOf(i),
                                      window->getPackageMenu()->isItemEnabled(InstallEntry)));
            EXPECT_EQ(files().item(i)->isEnabled(), i > 0);
        }
    };
    expectRows(packages);
    QList<Row> all = packages;
    all.insert(8, {"A.ZPK", unknown, "7 bytes", true});
    all.insert(11, {"notes.txt", unknown, "7 bytes", false});
    EXPECT_EQ(outputOf([] { chooseInMenu({ShowAllEntry}); }), "DEBUG:: Show All Files\n");
    expectRows(all);
    // Every folder can be entered, whatever the bytes of its name.
    files().setCurrentItem(4);
    EXPECT_EQ(outputOf([] { press(Key_Return); }), "");
    EXPECT_EQ(names(files()),
              QStringList({QString(memory) + "/zoo/" + QChar(0xDCFF) + QChar(0xDCFE), ".."}));
}

TEST_F(UiBrowser, FoldersAreWalkedByKeysAndFingers) {
    insertCard();
    phone.makeFolder("/mmc/mmca1/deep/er/est");
    phone.makeFile("/mmc/mmca1/plain.zpk.txt", "");
    openBrowser();
    const auto shown = [this] { return names(files()).value(0); };
    EXPECT_EQ(shown(), "/mmc/mmca1");
    pressAll({Key_Down, Key_Return});
    EXPECT_EQ(shown(), "/mmc/mmca1/deep");
    touchRow(files(), 2);
    EXPECT_EQ(shown(), "/mmc/mmca1/deep/er");
    hold(Key_Return, 20); // held, it goes up once
    EXPECT_EQ(shown(), "/mmc/mmca1/deep");
    EXPECT_EQ(outputOf([this] { touch(*files().findChild<ListHeader*>()); }), "");
    for (int i = 0; i < 5; ++i)
        press(Key_Return);
    EXPECT_EQ(names(files()).mid(0, 3), QStringList({"/", "..", "etc"}));
    EXPECT_EQ(outputOf([] { chooseInMenu({GoToCardEntry}); }), "DEBUG:: Go to Memory Card\n");
    EXPECT_EQ(shown(), "/mmc/mmca1");
    press(Key_End);
    EXPECT_EQ(outputOf([] { press(Key_Return); }), chosen(files().count() - 1));
    EXPECT_EQ(outputOf([] { chooseInMenu({GoToPhoneEntry}); }), "DEBUG:: Go to Phone Memory\n");
    EXPECT_EQ(currentFolder(), QString(memory));
    // The path row is stepped over in both directions.
    press(Key_Up);
    EXPECT_EQ(files().currentItem(), files().count() - 1);
    press(Key_Down);
    EXPECT_EQ(files().currentItem(), 1);
    press(Key_Down);
    hold(Key_Up, 30); // held, it stops below it
    EXPECT_EQ(files().currentItem(), 1);
    // The second touch of a double one is not meant for what has come under the finger.
    window->loadFolder("/mmc/mmca1");
    touchTwice(*files().viewport(), middleOf(files(), 2));
    EXPECT_EQ(shown(), "/mmc/mmca1/deep");
}

TEST_F(UiBrowser, WhatCannotBeOpenedLeavesTheBrowserWhereItWas) {
    phone.makeFile(memory + "/locked/secret.zpk", "");
    phone.makeFolder(memory + "/late/later");
    phone.makeFile(memory + "/vanishing.zpk", "");
    chmod(phone.host(memory + "/locked"), 0);
    openBrowser();
    const QStringList before = names(files());
    {
        const Unprivileged user;
        highlight("locked");
        press(Key_Return);
        EXPECT_EQ(names(files()), before);
        EXPECT_EQ(files().currentItem(), 1);
    }
    std::filesystem::remove_all(phone.host(memory + "/vanishing.zpk").toStdString());
    highlight("vanishing.zpk");
    QStringList shown;
    {
        Dialogs dialogs({pressing(Key_F1), pressing(Key_F1), waiting(), reading(shown, Key_F1)});
        press(Key_Return);
        settle();
    }
    EXPECT_EQ(shown.value(0), "Error");
    EXPECT_TRUE(shown.value(1).contains("vanishing.zpk")) << qPrintable(shown.value(1));
    expectUsable();
    // The folder on the screen goes away.
    enter(memory + "/late/later");
    std::filesystem::remove_all(phone.host(memory + "/late").toStdString());
    chooseInMenu({ShowAllEntry});
    EXPECT_EQ(names(files()).value(0), QString(memory));
    EXPECT_EQ(currentFolder(), QString(memory));
}

TEST_F(UiBrowser, MarksTellTheVersionBesideTheName) {
    insertCard();
    addApp(0, "Game", "Ann\nVersion = 2.0");
    const QByteArray name(60, 'W');
    for (const char* version : {"1.0", "2.0", "3.0"})
        addPackage("/mmc/mmca1/" + name + version + ".zpk", "Game", version);
    addPackage("/mmc/mmca1/other.zpk", "Other");
    openBrowser();
    const auto marks = [this] {
        QStringList texts;
        for (int row = files().count() - 4; row < files().count(); ++row) // behind the folders
            texts.append(files().item(row)->subItems(1).first().badge);
        return texts;
    };
    const QStringList expected = {"older", "installed", "newer", ""};
    EXPECT_TRUE(QTest::qWaitFor([&] { return marks() == expected; }, 20000))
        << qPrintable(marks().join(','));
    const QList<DrawnText> texts = drawnTexts(*files().viewport());
    int found = 0;
    for (const DrawnText& mark : texts) {
        if (mark.text.isEmpty() || !expected.contains(mark.text))
            continue;
        ++found;
        for (const DrawnText& other : texts)
            EXPECT_FALSE(&other != &mark && other.place.intersects(mark.place))
                << qPrintable(other.text) << " and " << qPrintable(mark.text);
    }
    EXPECT_EQ(found, 3);
}

TEST_F(UiBrowser, AMarkOfTheFolderBeforeDoesNotComeUp) {
    insertCard();
    addApp(0, "Game", "Ann\nVersion = 2.0");
    phone.makeFolder("/mmc/mmca1/before");
    addPackage("/mmc/mmca1/before/game.zpk", "Game");
    phone.makeFile("/mmc/mmca1/now/game.zpk", "no archive");
    phone.makeFile("/slow", "#!/bin/sh\n: > \"$0.runs\"; sleep 0.2; exec " SEVEN_ZIP " \"$@\"\n");
    chmod(phone.host("/slow"), 0755);
    openBrowser();
    ArchiverPath = phone.host("/slow");
    enter("/mmc/mmca1/before");
    EXPECT_TRUE(QTest::qWaitFor([this] { return exists(phone.host("/slow.runs")); }));
    enter("/mmc/mmca1/now");
    QTest::qWait(1000); // it is read by now
    EXPECT_EQ(files().item(rowNamed("game.zpk"))->subItems(1).first().badge, "");
}

TEST_F(UiBrowser, APackageThatChangesMeanwhileIsNotInstalled) {
    insertCard();
    addPackage("/mmc/mmca1/game.zpk", "Game");
    openBrowser();
    highlight("game.zpk");
    const auto change = [this](ZPopup&) {
        const QByteArray path = phone.host("/mmc/mmca1/game.zpk");
        writeFile(path, QByteArray(readFile(path).size(), 'x')); // in place, of the same size
        press(Key_F1);
    };
    QStringList shown;
    {
        Dialogs dialogs({pressing(Key_F1), change, reading(shown, Key_F1)});
        press(Key_Return);
        settle();
    }
    EXPECT_TRUE(shown.value(1).contains("has changed meanwhile")) << qPrintable(shown.value(1));
    EXPECT_TRUE(AppMap.empty());
}

TEST_F(UiBrowser, OnlyWhatWasConfirmedIsInstalled) {
    addPackage(memory + "/a.zpk", "First");
    addPackage(memory + "/b.zpk", "Second");
    openBrowser();
    highlight("a.zpk");
    {
        // Keys that wait behind the answer come before the installation begins.
        Dialogs dialogs(
            {[](ZPopup&) { hold(Key_F1, 0); }, pressing(Key_F1), waiting(), pressing(Key_F1)});
        for (const int key : {Key_Return, Key_Return, Key_Down})
            hold(key, 0);
        settle();
    }
    EXPECT_EQ(names(apps()), QStringList("First"));
    highlight("b.zpk");
    // A key that is held since the row was chosen does not answer the question.
    Dialogs dialogs({[](ZPopup&) { repeat(Key_Return, 20); }, pressing(Key_F2)});
    hold(Key_Return, 0);
    settle();
    EXPECT_EQ(names(apps()), QStringList("First"));
}

TEST_F(UiBrowser, TheQuestionTellsWhatThePackageReplaces) {
    addApp(0, "Game", "Ann\nVersion = 1.10");
    openBrowser();
    auto app = std::make_shared<ZPK_App>();
    PackageInfo info;
    info.isSafe = true;
    info.folder = "Game";
    info.app = app;
    for (const auto& [version, text] :
         Rows<QString, QString>{{"1.9", "1.9, older than the installed 1.10"},
                                {"1.10", "1.10, the same as installed"},
                                {"1.11", "1.11, replaces 1.10"}}) {
        app->version = version;
        QStringList texts;
        Dialogs dialogs({[&texts](ZPopup& popup) {
            for (const auto* label : popup.findChildren<ZLabel*>())
                texts.append(label->accessibleName());
            press(Key_F2);
        }});
        askToInstall("T", "T", {"a.zpk", "", info});
        EXPECT_TRUE(texts.contains(text)) << qPrintable(texts.join(" | "));
    }
}
