#pragma once

#include <QStyledItemDelegate>

class ListLayout;
class QAbstractItemView;
class ZListBoxItem;
struct ZListItem;

/// Paints the rows of a list, which are `ZListBoxItem`s in a `QStandardItemModel`.
class ListRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    ListRowDelegate(QAbstractItemView* view, const ListLayout* layout);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Pixels of the row's name that do not fit; 0 where all of it does.
    int hiddenNameWidth(const QModelIndex& index) const;

private:
    void paintIcon(QPainter& painter, const QRect& row, const ZListBoxItem& item,
                   bool focused) const;
    void paintLines(QPainter& painter, const QRect& row, const ZListBoxItem& item,
                    bool focused) const;
    QRect textPlace(const QRect& row, const QList<ZListItem>& lines) const;

    const QAbstractItemView* m_view;
    const ListLayout* m_layout;
};

/// Paints an icon, a heading and a hint in the middle of `place`, for a list with nothing to show.
void paintEmptyNotice(QPainter& painter, const QRect& place, const QPixmap& icon,
                      const QString& heading, const QString& hint);
