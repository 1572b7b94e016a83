#include "Waiting.h"

#include "Bytes.h"

#include "WaitBar.h"
#include "ZListBox.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "dialogs.h"
#include "shell.h"
#include "ui_support.h"

#include <QSet>

using namespace Qt;

namespace {

class UiWaiting : public Ui {
protected:
    UiWaiting() {
        addApp(0, "Alpha");
        addApp(0, "Beta");
        openFilled();
        showWhileWorking(*m_pleaseWait, "Alpha");
    }

    /// Runs the shell command and asks `question` every now and then meanwhile.
    static void during(const QString& command, const std::function<void()>& question) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, question);
        timer.start(20);
        EXPECT_EQ(runSystem(command), 0);
    }

    WaitBar& bar() { return *m_pleaseWait->findChild<WaitBar*>(); }

private:
    std::unique_ptr<ZPopup> m_pleaseWait = makePleaseWait();
};

} // namespace

TEST_F(UiWaiting, TheScreenMovesAndIsDeafWhileACommandRuns) {
    QSet<QByteArray> pictures;
    during("sleep 0.7", [&] {
        const QImage picture = bar().grab().toImage();
        pictures.insert(
            QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
        EXPECT_TRUE(isWorking());
        pressAll({Key_Down, Key_Return, Key_F1, Key_F2, Key_Escape});
        ZScreen::instance().close();
    });
    EXPECT_GT(pictures.size(), 3);
    EXPECT_FALSE(isWorking());
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(apps().currentItem(), 0);
    EXPECT_TRUE(ZScreen::instance().isVisible());
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
