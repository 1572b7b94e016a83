#pragma once

#include "entries.h"
#include "support.h"
#include "zBaseGUI.h"

#include <QRectF>

class MenuRow;
class ZListBox;
class ZOptionsMenu;

/// A phone with the program's window on it.
class Ui : public testing::Test {
protected:
    Ui();
    ~Ui() override;

    /// A memory card is in the phone; to be called before the window opens.
    void insertCard() const;

    /// An application as a package leaves it: `folder` with its descriptor. The name is the
    /// folder's.
    void addApp(int location, const QByteArray& folder, const QByteArray& author = "Author",
                const QByteArray& icon = QByteArray()) const;

    /// Starts as the program does, to the point where the empty window is on the screen.
    void open(const QByteArray& language = "en");

    /// Also waits until both lists have been filled.
    void openFilled(const QByteArray& language = "en");
    void waitForFirstFill();

    ZListBox& apps() { return *window->appList(); }

    ZListBox& files() { return *window->packageList(); }

    /// The labels of the soft keys in front: of the menu that is open, or of the window.
    QStringList softKeys();

    /// The first text of each row of the list.
    static QStringList names(const ZListBox& list);

    Phone phone;
    std::unique_ptr<zBaseGUI> window;

private:
    void sendForgottenAway();

    QTimer m_watch;
    ZPopup* m_seen = nullptr;
    int m_timesSeen = 0;
};

/// Presses these keys one after the other.
void pressAll(const QList<int>& keys);

/// Opens the options menu and chooses the entries of that id, one level deeper each.
void chooseInMenu(const QList<int>& ids);

/// A key held down: the press and `repeats` repetitions of it, with no time passing between.
void hold(int key, int repeats);

/// Repetitions of a key that has been held since before.
void repeat(int key, int times);

/// A touch at a place of `widget`, two in quick succession, and the two halves of one.
void touch(const QWidget& widget, const QPoint& place);
void touchTwice(const QWidget& widget, const QPoint& place);
void pressMouse(const QWidget& widget, const QPoint& place);
void releaseMouse(const QWidget& widget, const QPoint& place);

/// The middle of a row, in the viewport's coordinates.
QPoint middleOf(const ZListBox& list, int row);
void touchRow(const ZListBox& list, int row);

MenuRow* rowOf(const ZOptionsMenu& menu, int id);

struct DrawnText {
    QString text;
    QRectF place; ///< of the ink, in the widget's coordinates
};

/// The texts that the widget itself paints, without its children's.
QList<DrawnText> drawnTexts(QWidget& widget);
