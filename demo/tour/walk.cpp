#include "walk.h"

#include "Bytes.h"
#include "Look.h"
#include "ZListBox.h"
#include "ZPopup.h"
#include "ZScreen.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

/// The program's entry, which has this name here.
int quiverMain(int argc, char** argv);

namespace {

constexpr int tickMilliseconds = 10;
constexpr qint64 patienceMilliseconds = 30000;

/// Of the walk that goes on. The walker is made within the program's own entry, by a function that
/// Qt calls without arguments.
QList<Step> allSteps;
QString pictureFolder;
FILE* report = nullptr; ///< standard output, which the program has no part in
bool lastStepBegun = false;

/// One line, however much there is to read.
QString shortened(const QString& text) {
    constexpr qsizetype longest = 240;
    const QString line = text.simplified();
    return line.size() > longest ? line.left(longest) + "…" : line;
}

void say(const QString& line) {
    fprintf(report, "%s\n", toBytes(line).constData());
    fflush(report);
}

/// The process ends on the spot: nobody knows which dialogs are open and what they wait for.
[[noreturn]] void fail(const QString& what) {
    say("FAILED " + what);
    fflush(stdout);
    _exit(1);
}

/// Goes through the steps by a timer, as the dialogs run event loops of their own within the keys
/// that open them.
class Walker : public QObject {
public:
    explicit Walker(QObject* parent) : QObject(parent) {
        m_taken = int(QDir(pictureFolder).entryList({"*.png"}).size());
        connect(&m_timer, &QTimer::timeout, this, &Walker::tick);
        m_timer.start(tickMilliseconds);
    }

private:
    const Step& step() const { return allSteps.at(m_step); }

    QString label() const {
        const QString name = step().name.isEmpty() ? "end" : step().name;
        return QString("%1-%2").arg(m_taken + 1, 2, 10, QChar('0')).arg(name);
    }

    void tick() {
        if (!m_begun)
            begin();
        else if (m_keyUnderWay)
            return;
        else if (!m_acts.isEmpty())
            act(m_acts.takeFirst());
        else
            look();
    }

    void begin() {
        m_begun = true;
        m_clock.restart();
        lastStepBegun = m_step == allSteps.size() - 1;
        m_acts = step().acts;
    }

    void act(const Act& act) {
        if (const auto* key = std::get_if<Qt::Key>(&act))
            press(*key);
        else if (const auto* letter = std::get_if<char>(&act))
            press(*letter);
        else if (const auto* row = std::get_if<Row>(&act))
            m_acts = keysToRow(row->name) + m_acts;
        else
            std::get<std::function<void()>>(act)();
    }

    QList<Act> keysToRow(const QString& name) const {
        const ZListBox& list = listInFront();
        for (int row = 0; row < list.count(); ++row) {
            if (list.item(row)->subItemText(list.textColumn()) != name)
                continue;
            const int way = row - list.currentItem();
            return QList<Act>(qAbs(way), way < 0 ? Qt::Key_Up : Qt::Key_Down);
        }
        fail(QString("%1: no row %2 on the screen\n  seen: %3")
                 .arg(label(), name, readScreen().text()));
    }

    /// Not within the timer's own call, which does not come again before it has returned.
    template<typename Key>
    void press(Key key) {
        m_keyUnderWay = true;
        QTimer::singleShot(0, this,
                           [key] { QTest::keyPress(ZScreen::instance().windowHandle(), key); });
        QTimer::singleShot(0, this, [this, key] {
            QTest::keyRelease(ZScreen::instance().windowHandle(), key);
            m_keyUnderWay = false;
        });
    }

    void look() {
        QImage picture;
        const QString complaint = complaintAbout(picture);
        if (complaint.isEmpty())
            return goOn(picture);
        if (m_clock.elapsed() < patienceMilliseconds)
            return;
        pictureOfScreen().save(QString("%1/%2-failed.png").arg(pictureFolder, label()));
        fail(QString("%1: %2\n  %3\n  seen: %4")
                 .arg(label(), step().does, complaint, readScreen().text()));
    }

    QString complaintAbout(QImage& picture) const {
        if (step().name.isEmpty())
            return "the program does not end";
        for (const Check& check : step().checks) {
            const QString complaint = check();
            if (!complaint.isEmpty())
                return complaint;
        }
        picture = pictureOfScreen();
        const QString missing = unpainted(picture);
        if (!missing.isEmpty())
            return missing;
        return picture == m_picture ? "the screen looks as it did before" : QString();
    }

    void goOn(const QImage& picture) {
        const QString path = QString("%1/%2.png").arg(pictureFolder, label());
        if (!picture.save(path))
            fail("cannot write " + path);
        say(QString("%1: %2 → %3").arg(label(), step().does, shortened(readScreen().text())));
        m_picture = picture;
        ++m_taken;
        ++m_step;
        m_begun = false;
    }

    QTimer m_timer;
    QElapsedTimer m_clock;
    QList<Act> m_acts;
    QImage m_picture;
    int m_step = 0;
    int m_taken = 0; ///< pictures, those of an earlier walk included
    bool m_begun = false;
    bool m_keyUnderWay = false;
};

void startWalker() {
    new Walker(QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startWalker)

Check shows(const Screen& screen) {
    return [screen] { return readScreen() == screen ? QString() : "due:  " + screen.text(); };
}

Check tells(const QString& title, const QString& text) {
    return [title, text] {
        const Screen screen = readScreen();
        if (screen.title == title && screen.lines.join('\n').contains(text))
            return QString();
        return QString("due:  %1: … %2 …").arg(title, text);
    };
}

Check badges(const QStringList& words) {
    return [words] {
        const ZListBox& list = listInFront();
        QStringList seen;
        for (int row = 0; row < list.count(); ++row)
            seen += list.item(row)->subItems(list.textColumn()).first().badge;
        return seen == words ? QString() : "badges: " + seen.join("; ");
    };
}

Check badge(bool wanted) {
    return [wanted] {
        const int bar = scaled(Measure::titleBar);
        const QRect corner(ZScreen::instance().width() - 2 * bar, 0, 2 * bar, bar - 2);
        const bool there = coloursOf(pictureOfScreen(), corner).contains(colours().accent.rgb());
        if (there == wanted)
            return QString();
        return QString(wanted ? "no badge in the title bar" : "a badge in the title bar");
    };
}

Check holds(const QString& what, const std::function<bool()>& condition) {
    return [what, condition] { return condition() ? QString() : "not so: " + what; };
}

int walkThrough(const QList<Step>& steps, const QString& programFolder, const QString& pictures) {
    allSteps = steps;
    pictureFolder = pictures;
    report = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1), "w");
    const QByteArray log = toBytes(pictures + "/quiver.log");
    if (!report || !freopen(log.constData(), "a", stdout)) {
        perror(log.constData());
        return 1;
    }
    dup2(STDOUT_FILENO, STDERR_FILENO);
    QByteArray program = toBytes(programFolder + "/quiver");
    char* arguments[] = {program.data(), nullptr};
    const int status = quiverMain(1, arguments);
    if (status != 0 || !lastStepBegun)
        fail(QString("the program ended early, with status %1").arg(status));
    return 0;
}
