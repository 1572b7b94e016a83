#pragma once

#include "ZOverlay.h"

#include <QList>
#include <QPixmap>

#include <functional>

class MenuRow;
class QScrollArea;
class QVBoxLayout;

/// A menu that rises from the soft-key bar over the dimmed screen. Its entries are known by the ids
/// that they are given when they are inserted.
class ZOptionsMenu : public ZOverlay {
    Q_OBJECT

public:
    /// Bits of `itemState`.
    enum State { CheckItem = 4, CheckedItem = 8 };

    /// `place` and `skinClass` are the phone's own; the menu finds its place by itself. Whatever
    /// its parent is, it lies on the whole screen and goes with the parent.
    ZOptionsMenu(const QRect& place, QWidget* parent, const char* name, int flags, int skinClass,
                 bool numbered);

    /// A plain entry, or one that opens `submenu`.
    void insertItem(const QString& text, ZOptionsMenu* submenu, const QPixmap& icon, bool enabled,
                    int id, int index);

    /// A check entry.
    void insertItem(const QString& text, const QPixmap& icon, QObject* receiver, bool enabled,
                    bool checkItem, bool checked, int id, int index);

    /// Calls `action` when the entry is chosen, after the menu has gone. It ends with `receiver`.
    void connectItem(int id, QObject* receiver, const std::function<void()>& action);

    void setItemEnabled(int id, bool enabled);
    bool isItemEnabled(int id) const;

    /// True for a check entry that is checked.
    bool isItemChecked(int id) const { return (itemState(id) & CheckedItem) != 0; }

    /// Bits of `State`, 0 for a plain entry or an unknown id.
    int itemState(int id) const;
    QString itemText(int id) const;

    int count() const { return int(m_rows.size()); }

    /// Shows the menu with these labels on the soft keys, its first entry highlighted.
    void open(const QString& leftText, const QString& rightText);

    /// The menu that is open on top of the screen, or none.
    static ZOptionsMenu* active();

    int highlighted() const { return m_highlighted; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void addRow(MenuRow* row, int index);
    MenuRow* row(int id) const;
    void highlight(int index);
    void pressKey(int key);
    void moveHighlight(int step, bool wrap);
    void choose(int index);
    void openSubmenu(int index);
    void close();
    void closeAll();
    void layOut();

    QList<MenuRow*> m_rows;
    QScrollArea* m_scroll;
    QVBoxLayout* m_column;
    QRect m_card;
    QPointer<ZOptionsMenu> m_opener;
    int m_highlighted = 0;
};
