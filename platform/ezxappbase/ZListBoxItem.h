#pragma once

#include "ZListItem.h"

#include <QList>
#include <QStandardItem>

#include <memory>

class ListLayout;
class PictureLoad;

/// One row of a list, in columns as the list's item layout says: a check box, an icon, lines of
/// text.
class ZListBoxItem : public QStandardItem {
public:
    /// A row for the list `box`, of the layout that it has then; it is not in the list yet.
    explicit ZListBoxItem(const ListLayout* box);

    void setPixmap(int column, const QPixmap& icon);

    /// The icon is read from the file at `path` (of the machine) when the row is first painted;
    /// `otherwise` is shown where no picture can be read from it, and until a slow one has been.
    void setPixmapFile(int column, const QString& path, const QPixmap& otherwise);

    /// The icon of `column`, `size` pixels square; it may be empty.
    QPixmap pixmap(int column, int size) const;

    void appendSubItem(int column, const ZListItem& line);

    /// Replaces the first line of `column`.
    void setSubItem(int column, const ZListItem& line);

    /// The text of the first line of `column`, empty where there is none.
    QString subItemText(int column) const;
    QList<ZListItem> subItems(int column) const;

    bool isChecked() const { return checkState() == Qt::Checked; }

    void setChecked(bool checked) { setCheckState(checked ? Qt::Checked : Qt::Unchecked); }

private:
    struct Column {
        QPixmap icon;
        QString iconFile;
        std::shared_ptr<PictureLoad> iconLoad; ///< while the file is read
        QList<ZListItem> lines;
    };

    Column& column(int index);
    void linesChanged();
    void paintLater() const;

    mutable QList<Column> m_columns;
};
