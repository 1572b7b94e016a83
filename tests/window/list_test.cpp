#include "window_support.h"

#include "RES_ICON_Reader.h"
#include "ZListBox.h"
#include "ZOptionsMenu.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "database.h"
#include "discovery.h"

#include <QImage>
#include <QTest>

#include <filesystem>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

using namespace Qt;

namespace {

const QByteArray phoneApps = "/ezxlocal/download/mystuff/quiver/";

void writePicture(const QByteArray& path, const QSize& size, const QColor& colour) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    ASSERT_TRUE(image.save(path, "PNG"));
}

QString nameOf(const QPixmap& icon, int size) {
    if (icon.isNull())
        return "none";
    for (const char* name : {"ctact_mobile_tab.bmp", "fm_memory_card_tab.bmp",
                             "cli_ptt_favorite_small.bmp", "yes_no_pop.bmp"}) {
        if (icon.toImage() == RES_ICON_Reader().getIcon(name, size).toImage())
            return name;
    }
    return icon.toImage().pixelColor(icon.width() / 2, icon.height() / 2).name();
}

class UiList : public Ui {
protected:
    /// A row as it can be seen: name, marker, author, marker.
    QStringList row(int index) {
        const ZListBoxItem& item = *apps().item(index);
        QStringList parts;
        for (const ZListItem& line : item.subItems(apps().textColumn())) {
            parts += line.text.isEmpty() ? line.secondText : line.text;
            parts += nameOf(line.icon, Measure::markerIcon);
        }
        return parts;
    }

    QString iconOf(int index) {
        return nameOf(apps().item(index)->pixmap(apps().iconColumn(), Measure::rowIcon),
                      Measure::rowIcon);
    }

    void addProgram(int location, const QByteArray& name, const QByteArray& script,
                    mode_t mode = 0755, const QByteArray& exec = "run.sh") {
        const QByteArray folder = appsFolder(location).toUtf8() + '/' + name + '/';
        phone.makeFile(folder + name + ".cfg", "Name = " + name + "\nExec = " + exec + '\n');
        phone.makeFile(folder + "run.sh", "#!/bin/sh\n" + script);
        chmod(phone.host(folder + "run.sh"), mode);
    }

    /// Lookup and list agree, row for row.
    void expectLookup() {
        for (int index = 0; index < apps().count(); ++index) {
            ASSERT_NE(window->getApp(index), nullptr);
            EXPECT_EQ(window->getApp(index)->name, names(apps()).at(index));
        }
        EXPECT_EQ(window->getApp(-1), nullptr);
        EXPECT_EQ(window->getApp(apps().count()), nullptr);
        EXPECT_EQ(window->currentApp(), window->getApp(0));
        EXPECT_EQ(apps().currentItem(), apps().count() > 0 ? 0 : -1);
    }
};

} // namespace

TEST_F(UiList, RowsTellNamePlaceAuthorAndMenu) {
    insertCard();
    addApp(0, "Zeta", "Zoë");
    addApp(0, "alpha", "A. Author");
    addApp(1, "Beta", "Карта");
    openFilled();
    addAppToMenu("/mmc/mmca1/quiver/Beta", nullptr);
    chooseInMenu({RefreshEntry});
    const QString onPhone = "ctact_mobile_tab.bmp";
    EXPECT_EQ(row(0), QStringList({"Beta", "fm_memory_card_tab.bmp", "Карта",
                                   "cli_ptt_favorite_small.bmp"}));
    EXPECT_EQ(row(1), QStringList({"Zeta", onPhone, "Zoë", "none"}));
    EXPECT_EQ(row(2), QStringList({"alpha", onPhone, "A. Author", "none"}));
    expectLookup();
    for (const auto& [key, current] :
         Rows<int, int>{{Key_A, 2}, {Key_Z, 1}, {Key_X, 1}, {Key_B, 0}}) {
        press(key);
        EXPECT_EQ(apps().currentItem(), current) << key;
    }
}

TEST_F(UiList, IconsThatCannotBeShownDoNoHarm) {
    const QString fallback = "yes_no_pop.bmp";
    const auto svg = [](const QByteArray& content, const QByteArray& before = {}) {
        return before + "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='20'>" +
               "<rect width='20' height='20' fill='red'/>" + content + "</svg>";
    };
    const auto repeated = [](const QByteArray& text, int count) { return text.repeated(count); };
    const QByteArray drawn =
        "<metadata id='m'><rdf:RDF><cc:Work rdf:about=''/></rdf:RDF></metadata>"
        "<defs><linearGradient id='a'/><linearGradient id='b' x:href='#a'/>"
        "</defs><g style='fill:url(#b);stroke:none;marker:none' x:label='L'/>";
    const QByteArray doctype = "<?xml version='1.0'?><!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN'"
                               " 'http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd'>";
    const QList<std::tuple<QByteArray, QByteArray, QString>> icons = {
        {"own.png", "", "#ff0000"},
        {"drawn.svg", svg(drawn, doctype), "#ff0000"},
        {"", "", fallback},
        {"fifo.png", "", fallback},
        {"huge.png", "", fallback},
        {"broken.png", "\x89PNG\r\n\x1a\n and then nothing of use", fallback},
        {"packed.svg",
         QByteArray::fromBase64(
             "H4sIAAAAAAACA7MpLktXqMjNySu2Vc8oKSmw0tcvLy/XKzfWyy9K1zcyMDDQB6pQVyjPTCnJsFW3VFfISM1MzygBMe1silKTS7BK6dvZgPTZAQAweXKDXwAAAA=="),
         fallback},
        {"sheet.svg", svg("", "<?xml-stylesheet href='/dev/zero'?>"), fallback},
        {"image.svg", svg("<image href='fifo.png' width='9' height='9'/>"), fallback},
        {"link.svg", svg("<linearGradient xlink:href='other.svg#g'/>"), fallback},
        {"paint.svg", svg("<rect fill='url(fifo.png)'/>"), fallback},
        {"area.svg", svg("<textArea width='1e9' height='1e9'>text</textArea>"), fallback},
        {"use.svg", svg("<g id='g'/><use xlink:href='#g'/>"), fallback},
        {"hidden.svg", svg("<path style='stroke-dash\\61rray:1'/>"), fallback},
        {"deep.svg", svg(repeated("<g>", 40) + repeated("</g>", 40)), fallback},
        {"many.svg", svg(repeated("<g/>", 2000)), fallback},
        {"path.svg", svg("<path d='M0 0" + repeated("L9 9", 5000) + "'/>"), fallback},
        {"wide.svg", svg("").replace("width='20'", "width='1e9'"), fallback},
    };
    for (int i = 0; i < icons.size(); ++i) {
        const auto& [icon, content, shown] = icons.at(i);
        const QByteArray folder = 'A' + QByteArray::number(i).rightJustified(2, '0');
        addApp(0, folder, "", icon);
        const QByteArray path = phone.host(phoneApps + folder + '/');
        if (!content.isEmpty())
            writeFile(path + icon, content);
        mkfifo(path + "fifo.png", 0644);
        writePicture(path + "own.png", QSize(20, 10), Qt::red);
        if (icon == "huge.png")
            writePicture(path + icon, QSize(2049, 1), Qt::red);
    }
    openFilled();
    ASSERT_EQ(apps().count(), icons.size());
    for (int i = 0; i < icons.size(); ++i)
        EXPECT_EQ(iconOf(i), std::get<2>(icons.at(i))) << std::get<0>(icons.at(i)).constData();
    EXPECT_EQ(apps().item(0)->pixmap(0, 32).deviceIndependentSize(), QSizeF(32, 16));
    ZScreen::instance().grab();
    hold(Key_Down, 30);
    ZScreen::instance().grab();
    EXPECT_EQ(apps().currentItem(), icons.size() - 1);
}

TEST_F(UiList, ARowIsChosenOnce) {
    addProgram(0, "Alpha", ": > \"${0%/*}/started\"\n");
    openFilled();
    QWidget& list = *apps().viewport();
    const QPoint row = middleOf(apps(), 0);
    const QPoint below(100, list.height() - 5);
    const QByteArray launched = "DEBUG:: " + phone.host(phoneApps + "Alpha/run.sh &\n");
    EXPECT_EQ(outputOf([] { hold(Key_Return, 30); }), launched);
    EXPECT_TRUE(QTest::qWaitFor([&] { return exists(phone.host(phoneApps + "Alpha/started")); }));
    EXPECT_EQ(outputOf([&] { touchTwice(list, row); }), launched);
    press(Key_Tab); // there is nothing else to step to
    EXPECT_EQ(outputOf([] { press(Key_Return); }), launched);
    EXPECT_EQ(outputOf([&] {
                  touch(list, below);
                  pressMouse(list, row);
                  releaseMouse(list, below);
                  for (const MouseButton button : {RightButton, MiddleButton})
                      QTest::mouseClick(&list, button, {}, row);
                  window->mainOptM_MultiSelect();
                  press(Key_Return);
                  touchRow(apps(), 0);
              }),
              "DEBUG:: Select Multiple APPs\n");
}

TEST_F(UiList, AnApplicationThatCannotBeStartedTellsIt) {
    addProgram(0, "A", "printf 'b\\342\\033\\n' >&2; missing-command");
    addProgram(0, "B", "printf %0600d 0 >&2; exit 126");
    addProgram(0, "C", "(missing-command &); exec sleep 1.5");
    addProgram(0, "D", "echo words >&2; exit 1");
    addProgram(0, "E", "sleep 1.3; seq 100000 >&2 && : > ${0%/*}/done; exit 127");
    openFilled();
    QMap<QString, QString> told;
    const auto read = [&](ZPopup& popup) {
        told[popup.title()] = messageOf(popup);
        press(Key_F1);
    };
    testing::internal::CaptureStderr();
    const Dialogs dialogs({read, read});
    for (int row = 0; row < apps().count(); ++row)
        pressAll({Key_Return, Key_Down});
    EXPECT_TRUE(QTest::qWaitFor([&] { return exists(phone.host(phoneApps + "E/done")); }));
    EXPECT_GT(testing::internal::GetCapturedStderr().size(), 500000); // it goes on to where it went
    const QString missing = phone.host(phoneApps + "A/run.sh: 2: missing-command: not found");
    EXPECT_EQ(told["Error: A"], QString("b") + QChar(0xDCE2) + QChar(0xFFFD) + '\n' + missing);
    EXPECT_EQ(told["Error: B"], u'…' + QString(499, '0'));
}

TEST_F(UiList, AnApplicationThatTheSystemWouldNotRunTellsWhatHelps) {
    insertCard();
    addProgram(0, "A", "", 0644, "run.sh now");
    addProgram(0, "B", "", 0644, "'run.sh' now");
    openFilled();
    const auto expectTold = [](const QString& part) {
        const Dialogs dialogs({[&](ZPopup& popup) {
            EXPECT_TRUE(messageOf(popup).contains(part)) << messageOf(popup).toStdString();
            press(Key_F1);
        }});
        pressAll({Key_Return, Key_Down});
    };
    expectTold("program is not executable");
    expectTold("Permission denied"); // in the shell's own words
    if (unshare(CLONE_NEWNS) != 0 || mount("", "/", "", MS_REC | MS_PRIVATE, "") != 0)
        GTEST_SKIP() << "SKIPPED: this machine does not let a test mount anything";
    for (const auto& [location, text] : Rows<int, QString>{
             {0, "This storage does not let programs run."}, {1, "Move the application to"}}) {
        const QByteArray storage = phone.host(appsFolder(location).toUtf8());
        ASSERT_EQ(mount("none", storage.constData(), "tmpfs", MS_NOEXEC, ""), 0);
        addProgram(location, "0", "");
        window->refreshList(true);
        expectTold(text);
        EXPECT_EQ(umount2(storage.constData(), MNT_DETACH), 0);
    }
}

TEST_F(UiList, AHeldKeyHurriesAndStopsAtTheEnd) {
    constexpr int count = 200;
    for (int i = 0; i < count; ++i)
        addApp(0, "App" + QByteArray::number(i).rightJustified(4, '0'));
    outputOf([this] { openFilled(); });
    ASSERT_EQ(apps().count(), count);
    for (int row = 0; row < count; ++row)
        ASSERT_EQ(window->getApp(row)->name, QString("App%1").arg(row, 4, 10, QChar('0')));
    hold(Key_Down, 10);
    const int slow = apps().currentItem();
    EXPECT_GT(slow, 10);
    EXPECT_LT(slow, 40);
    hold(Key_Down, 200);
    EXPECT_EQ(apps().currentItem(), count - 1);
    hold(Key_Down, 0); // a fresh press goes round
    EXPECT_EQ(apps().currentItem(), 0);
    hold(Key_Up, 200);
    EXPECT_EQ(apps().currentItem(), 0); // round, and up to the first
    const QRect row = apps().visualRect(apps().model()->index(0, 0));
    press(Key_PageDown); // a row less than fits, so that nothing between two pages is left out
    EXPECT_EQ(apps().currentItem(), apps().viewport()->height() / row.height() - 1);
}

TEST_F(UiList, ALongNameMovesAndTheNextOneStartsAtItsBeginning) {
    for (const char letter : {'A', 'B'})
        addApp(0, QByteArray(60, letter));
    openFilled();
    const auto left = [this](char letter) {
        for (const DrawnText& drawn : drawnTexts(*apps().viewport())) {
            if (drawn.text.startsWith(QChar(letter)))
                return drawn.place.left();
        }
        return 0.0;
    };
    const qreal start = left('A');
    EXPECT_TRUE(QTest::qWaitFor([&] { return left('A') < start - 30; }));
    press(Key_Down);
    EXPECT_NEAR(left('B'), start, 5);
}
