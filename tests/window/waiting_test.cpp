#include "Waiting.h"

#include "Bytes.h"

#include "WaitBar.h"
#include "ZListBox.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "dialogs.h"
#include "paths.h"
#include "shell.h"
#include "window_support.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSet>

#include <sqlite3.h>

using namespace Qt;

namespace {

class UiWaiting : public Ui {
protected:
    UiWaiting() {
        addApp(0, "Alpha");
        addApp(0, "Beta");
        openFilled();
        showWorking("Alpha");
    }

    /// Runs the shell command and asks `question` every now and then meanwhile.
    static void during(const QString& command, const std::function<void()>& question) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, question);
        timer.start(20);
        EXPECT_EQ(runSystem(command), 0);
    }

    WaitBar& bar() { return *ZPopup::shown()->findChild<WaitBar*>(); }
};

} // namespace

/// The bar is watched by the pictures that it paints of itself.
TEST_F(UiWaiting, TheScreenMovesAndIsDeafWhileACommandRuns) {
    class Watch : public QObject {
    public:
        int paints = 0;

        bool eventFilter(QObject*, QEvent* event) override {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } watch;

    bar().installEventFilter(&watch);
    during("sleep 0.7", [] {
        EXPECT_TRUE(isWorking());
        pressAll({Key_Down, Key_Return, Key_F1, Key_F2, Key_Escape});
        ZScreen::instance().close();
    });
    EXPECT_GT(watch.paints, 3);
    EXPECT_FALSE(isWorking());
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(apps().currentItem(), 0);
    QCoreApplication::processEvents(); // a closed window would be gone by now
    EXPECT_TRUE(ZScreen::instance().isVisible());
}

/// The database is held by another program until the window has been seen to move.
TEST_F(Ui, TheWindowMovesDuringALongDiscovery) {
    addApp(0, "Beta");
    openFilled();
    addApp(0, "Alpha");
    sqlite3* other = nullptr;
    sqlite3_open(phone.host(Path::database.toUtf8()).constData(), &other);
    sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    QSet<QByteArray> pictures;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!isWorking())
            return; // the menu is still open
        const QImage picture = window->grab().toImage();
        pictures.insert(
            QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
        EXPECT_EQ(window->mainWidgetTitle(), "Loading…");
        EXPECT_EQ(window->currentApp(), window->getApp(0));
        EXPECT_EQ(names(apps()), QStringList("Beta"));
        ZScreen::instance().close();
        if (pictures.size() == 4)
            sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    });
    timer.start(20);
    const QByteArray said = outputOf([] { chooseInMenu({RefreshEntry}); });
    EXPECT_FALSE(said.contains("Quit")) << said.constData();
    timer.stop();
    EXPECT_GE(pictures.size(), 4);
    EXPECT_EQ(names(apps()), QStringList({"Alpha", "Beta"}));
    EXPECT_TRUE(ZScreen::instance().isVisible());
    sqlite3_close(other);
}

TEST_F(UiWaiting, ProgressIsWhatTheCommandsHaveReadOrWritten) {
    const QString half = "head -c 1000000 /dev/zero > " + fromBytes(phone.host("/tmp/half"));
    EXPECT_EQ(bar().progressText(), "");
    QStringList texts;
    const auto note = [&] { texts.append(bar().progressText()); };
    {
        const WorkGoal goal(WorkGoal::Writes, 2'000'000);
        during("sh -c '" + half + "'; sleep 0.4", note);
        EXPECT_EQ(texts.value(texts.size() - 2), "50 %");
    }
    {
        const WorkGoal goal(WorkGoal::Reads, 4'000'000);
        during("cat " + fromBytes(phone.host("/tmp/half")) + " > /dev/null; sleep 0.4", note);
        EXPECT_EQ(texts.value(texts.size() - 2), "25 %");
    }
    const WorkPart part(2, 5);
    during("sleep 0.2", note);
    EXPECT_EQ(texts.last(), "2 / 5");
    EXPECT_DOUBLE_EQ(workProgress().fraction, 0.2);
    EXPECT_EQ(bar().timeText(), "");
}
