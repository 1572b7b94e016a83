#include "walk.h"

#include "Bytes.h"
#include "ChoiceRow.h"
#include "Look.h"
#include "SoftKeyBar.h"
#include "ZConfig.h"
#include "ZLabel.h"
#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "ZSoftKey.h"
#include "zBaseGUI.h"

#include <QAbstractButton>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QSet>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

/// The program's entry, which has this name here.
int quiverMain(int argc, char** argv);

namespace {

constexpr int tickMilliseconds = 10;
constexpr qint64 patienceMilliseconds = 30000;
constexpr int fewestColours = 16;
constexpr int fewestColoursOfText = 3; // ground, ink and one shade between

std::unique_ptr<ZConfig> languageFile;
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

zBaseGUI& window() {
    return *static_cast<zBaseGUI*>(ZScreen::instance().mainWidget());
}

ZListBox& listInFront() {
    const bool packages = window().tabWidget()->currentPageIndex() == 1;
    return *(packages ? window().packageList() : window().appList());
}

Screen readDialog(const ZPopup& popup) {
    Screen screen;
    screen.title = popup.title();
    for (const QWidget* part : popup.findChildren<QWidget*>()) {
        if (const auto* label = qobject_cast<const ZLabel*>(part)) {
            // The text as it was given, without the places where a long word may break.
            const QString name = label->accessibleName();
            screen.lines += name.isEmpty() ? label->text() : name;
        } else if (const auto* choice = qobject_cast<const ChoiceRow*>(part)) {
            screen.lines += (choice->isChecked() ? "(o) " : "( ) ") + choice->text();
        } else if (const auto* keys = qobject_cast<const SoftKeyBar*>(part)) {
            screen.left = keys->leftText();
            screen.right = keys->rightText();
        }
    }
    return screen;
}

Screen readMenu(const ZOptionsMenu& menu) {
    const auto* keys = menu.findChild<SoftKeyBar*>();
    Screen screen;
    screen.left = keys->leftText();
    screen.right = keys->rightText();
    for (int id = 0; id < menu.count(); ++id) {
        QString line = menu.itemText(id);
        if (menu.itemState(id) & ZOptionsMenu::CheckItem)
            line.prepend(menu.itemState(id) & ZOptionsMenu::CheckedItem ? "[x] " : "[ ] ");
        if (!menu.isItemEnabled(id))
            line.prepend("- ");
        if (id == menu.highlighted())
            line.prepend("> ");
        screen.lines += line;
    }
    return screen;
}

QString readRow(const ZListBox& list, int row) {
    const ZListBoxItem& item = *list.item(row);
    QStringList texts;
    bool star = false;
    for (const ZListItem& part : item.subItems(list.textColumn())) {
        star = !texts.isEmpty() && !part.icon.isNull();
        texts += part.text.isEmpty() ? part.secondText : part.text;
    }
    QString line = texts.join(" / ");
    if (star)
        line.append(" *");
    if (item.isCheckable())
        line.prepend(item.isChecked() ? "[x] " : "[ ] ");
    if (!item.isEnabled())
        line.prepend("- ");
    if (row == list.currentItem())
        line.prepend("> ");
    return line;
}

Screen readList() {
    const ZListBox& list = listInFront();
    const auto* tabs = window().tabWidget()->findChild<QTabBar*>();
    const ZSoftKey* keys = window().getSoftKey();
    Screen screen;
    screen.title = window().mainWidgetTitle() + ", " + tabs->tabText(tabs->currentIndex());
    for (int row = 0; row < list.count(); ++row)
        screen.lines += readRow(list, row);
    screen.left = keys->leftText();
    screen.right = keys->rightText();
    return screen;
}

QImage pictureOfScreen() {
    return ZScreen::instance().grab().toImage();
}

/// Colours in a part of the picture, which is given in logical pixels.
QSet<QRgb> coloursOf(const QImage& picture, const QRect& part) {
    const double scale = picture.devicePixelRatio();
    const QImage pixels = picture.copy(
        QRectF(part.x() * scale, part.y() * scale, part.width() * scale, part.height() * scale)
            .toRect());
    QSet<QRgb> all;
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            all.insert(pixels.pixel(x, y));
    }
    return all;
}

/// Letters have many shades at their edges, so a content with any text in it has many colours.
bool isBlank(const QImage& picture) {
    const QRect content = ZScreen::instance().rect().adjusted(
        0, scaled(Measure::titleBar + Measure::tabBar), 0, -scaled(Measure::softKeyBar));
    return coloursOf(picture, content).size() < fewestColours;
}

/// A text and where on the screen it should be.
struct TextPlace {
    QString text;
    QRect place;
};

QRect onScreen(const QWidget& widget, const QRect& place) {
    return QRect(widget.mapTo(&ZScreen::instance(), place.topLeft()), place.size());
}

/// The rows that are wholly in sight, without their icons.
QList<TextPlace> rowTexts(const ZListBox& list) {
    const int icon = scaled(list.isCompact() ? Measure::compactIcon : Measure::rowIcon);
    const int check = list.hasCheckBoxes() ? scaled(Measure::checkBox) + 2 * Measure::grid : 0;
    QList<TextPlace> texts;
    for (int row = 0; row < list.count(); ++row) {
        const QRect place = list.visualRect(list.model()->index(row, 0));
        if (!list.viewport()->rect().contains(place))
            continue;
        const int beside = list.item(row)->isEnabled() ? icon + check + 4 * Measure::grid : 0;
        texts += {readRow(list, row),
                  onScreen(*list.viewport(), place.adjusted(beside, 0, -Measure::scrollBar, -2))};
    }
    return texts;
}

/// Labels and buttons of what is in front, and the rows of the list where that is the window.
QList<TextPlace> textsInFront() {
    const QWidget* front = ZPopup::active();
    if (!front)
        front = ZOptionsMenu::active();
    QList<TextPlace> texts = front ? QList<TextPlace>() : rowTexts(listInFront());
    for (const QWidget* part : (front ? front : &window())->findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(part);
        const auto* button = qobject_cast<const QAbstractButton*>(part);
        const QString text = label ? label->text() : button ? button->text() : QString();
        const QRect place = part->visibleRegion().boundingRect();
        if (part->isVisible() && !text.isEmpty() && place.height() >= part->font().pixelSize())
            texts += {text, onScreen(*part, place)};
    }
    return texts;
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
    void press(Qt::Key key) {
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
        if (isBlank(picture))
            return "the screen is blank";
        for (const auto& [text, place] : textsInFront()) {
            if (coloursOf(picture, place).size() < fewestColoursOfText)
                return "not painted: " + text;
        }
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

QString Screen::text() const {
    const QString rows = lines.isEmpty() ? "(empty)" : lines.join("; ");
    return QString("%1%2 [%3] [%4]").arg(title.isEmpty() ? "" : title + ": ", rows, left, right);
}

Screen readScreen() {
    if (const ZPopup* popup = ZPopup::active(); popup && popup->isVisible())
        return readDialog(*popup);
    if (const ZOptionsMenu* menu = ZOptionsMenu::active(); menu && menu->isVisible())
        return readMenu(*menu);
    return readList();
}

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

Check inSight(int row) {
    return [row] {
        const ZListBox& list = listInFront();
        const QRect place = list.visualRect(list.model()->index(row, 0));
        const bool whole = place.isValid() && list.viewport()->rect().contains(place);
        return whole ? QString() : QString("row %1 is out of sight").arg(row);
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

bool useLanguage(const QString& programFolder, const QString& code) {
    const QString path = QString("%1/quiver_%2.lng").arg(programFolder, code);
    languageFile = std::make_unique<ZConfig>(path, true);
    return QFileInfo::exists(path);
}

QString word(const char* key) {
    return languageFile->readEntry("WORDS", key, QString("(no text for %1)").arg(key));
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
