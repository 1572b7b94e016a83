#pragma once

#include "ListLayout.h"
#include "ZListBoxItem.h"

#include <QListView>
#include <QTimer>

class ListHeader;
class QStandardItemModel;

/// A list of rows, moved through by keys, wheel and finger. The highlight steps over a disabled
/// row; as the first one it is a header, which stays in its place above the others.
class ZListBox : public QListView, public ListLayout {
    Q_OBJECT

public:
    /// `itemLayout` names the columns of a row: "%C" a check box, "%I" an icon, "%M" lines of text.
    /// `skinClass` is the phone's own.
    ZListBox(const QString& itemLayout, QWidget* parent, int skinClass);

    /// For the rows that are made from then on.
    void setItemLayout(const QString& itemLayout);

    /// Lower rows with smaller icons, for long lists of files.
    void setCompact(bool compact);

    /// Takes `item` into the list at `index`, at the end where it is -1.
    void insertItem(ZListBoxItem* item, int index);
    void removeItem(int index);
    void clear();
    int count() const;

    /// The row at `index`; null where there is none.
    ZListBoxItem* item(int index) const;

    /// The highlighted row, -1 where there is none.
    int currentItem() const;
    void setCurrentItem(int index);

    /// What the list says in its middle while it has no more than `rows` rows.
    void setEmptyNotice(const QPixmap& icon, const QString& heading, const QString& hint, int rows);

signals:
    /// The highlight moved to the row `index`.
    void highlighted(int index);
    /// The row `index` was chosen by key or touch; its check box has been toggled by then.
    void selected(int index);
    /// The check box of a row changed.
    void checksChanged();

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void choose(const QModelIndex& index);
    bool moveHighlight(QKeyEvent* event);
    bool jumpByLetter(const QKeyEvent& event);
    int nextEnabled(int from, int step) const;
    void scrollName();
    void startNameScroll();
    void showHeader();

    QStandardItemModel* m_model;
    ListHeader* m_header;
    int m_repeats = 0;
    int m_nameHold = 0;
    QTimer m_nameTimer;
    QPersistentModelIndex m_pressed;
    QPixmap m_emptyIcon;
    QString m_emptyHeading;
    QString m_emptyHint;
    int m_emptyRows = -1;
};
