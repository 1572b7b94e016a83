#include "Environment.h"
#include "TerminalDialog.h"
#include "ZLabel.h"
#include "ZPopup.h"
#include "dialogs.h"
#include "launch.h"
#include "shell.h"
#include "support.h"

#include <QCoreApplication>
#include <QScrollArea>

TEST(ErrorPopup, OpensAtTheLineThatTellsTheError) {
    const QString banner = QString("error.zpk: archive listing\n").repeated(40);
    for (const auto& [text, line] : Rows<QString, QString>{
             {banner + "ERROR: Data Error\nArchives with Errors: 1\n", "ERROR: Data Error"},
             {banner + "mv: cannot stat 'x'\n", "mv: cannot stat 'x'"},
             {banner + "all went well", ""},
             {"ERROR: the only line", ""}}) {
        const Dialogs dialogs({[&, text = text, line = line](ZPopup& popup) {
            QCoreApplication::processEvents();
            EXPECT_EQ(messageOf(popup), text);
            const auto* area = popup.findChild<QScrollArea*>()->viewport();
            const QList<ZLabel*> labels = popup.findChildren<ZLabel*>();
            EXPECT_EQ(labels.size() > 1, !line.isEmpty());
            for (const ZLabel* label : labels) {
                const bool isSeen = area->rect().contains(label->mapTo(area, QPoint(0, 0)));
                EXPECT_TRUE(isSeen || label->accessibleName() != line);
            }
            const bool isAtTop = area->rect().contains(labels.first()->mapTo(area, QPoint(0, 0)));
            EXPECT_EQ(isAtTop, line.isEmpty());
            popup.done(1);
        }});
        showFailure("Error", text);
    }
}

TEST(Terminal, GetsNoControlCharacters) {
    testing::internal::CaptureStderr();
    tellOnTerminal("a\x1b[2Jb", QString::fromLatin1("c\0d\x9b\te\n", 7));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a\uFFFD[2Jb\nc\uFFFDd\uFFFD\te\n");
}

TEST(Launch, GivesTheEnvironmentThatTheProgramWasGiven) {
    qputenv("QUIVER_TEST", "given");
    rememberEnvironment();
    qputenv("QUIVER_TEST", "changed");
    EXPECT_EQ(outputOf([] { launch("echo $QUIVER_TEST", qApp, {}); }), "given\n");
    EXPECT_EQ(outputOf([] { runSystem("echo $QUIVER_TEST"); }), "changed\n");
    qunsetenv("QUIVER_TEST");
    rememberEnvironment();
}
