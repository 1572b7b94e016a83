#include "ZListBoxItem.h"

#include "ListLayout.h"
#include "PictureFile.h"

#include <QStandardItemModel>
#include <QTimer>

#include <utility>

namespace {

constexpr int patience = 100; // ms that the screen waits for an icon

} // namespace

ZListBoxItem::ZListBoxItem(const ListLayout* box) {
    setEditable(false);
    if (box->hasCheckBoxes()) {
        setCheckable(true);
        setChecked(false);
    }
}

ZListBoxItem::Column& ZListBoxItem::column(int index) {
    if (m_columns.size() <= index)
        m_columns.resize(index + 1);
    return m_columns[index];
}

void ZListBoxItem::setPixmap(int index, const QPixmap& icon) {
    column(index).icon = icon;
    emitDataChanged();
}

void ZListBoxItem::setPixmapFile(int index, const QString& path, const QPixmap& otherwise) {
    column(index).iconFile = path;
    column(index).icon = otherwise;
    emitDataChanged();
}

QPixmap ZListBoxItem::pixmap(int index, int size) const {
    if (index >= m_columns.size())
        return QPixmap();
    Column& column = m_columns[index];
    const bool isFirst = !column.iconFile.isEmpty();
    if (isFirst)
        column.iconLoad =
            std::make_shared<PictureLoad>(std::exchange(column.iconFile, QString()), size);
    if (!column.iconLoad)
        return column.icon;
    if (!column.iconLoad->isOver(isFirst ? patience : 0)) {
        paintLater();
        return column.icon;
    }
    if (const QPixmap picture = column.iconLoad->picture(); !picture.isNull())
        column.icon = picture;
    column.iconLoad.reset();
    return column.icon;
}

void ZListBoxItem::paintLater() const {
    QTimer::singleShot(patience, model(),
                       [model = model(), place = QPersistentModelIndex(index())] {
                           if (place.isValid())
                               emit model->dataChanged(place, place);
                       });
}

void ZListBoxItem::appendSubItem(int index, const ZListItem& line) {
    column(index).lines.append(line);
    linesChanged();
}

void ZListBoxItem::setSubItem(int index, const ZListItem& line) {
    QList<ZListItem>& lines = column(index).lines;
    if (lines.isEmpty())
        lines.append(line);
    else
        lines.first() = line;
    linesChanged();
}

QString ZListBoxItem::subItemText(int index) const {
    const QList<ZListItem> lines = subItems(index);
    return lines.isEmpty() ? QString() : lines.first().text;
}

QList<ZListItem> ZListBoxItem::subItems(int index) const {
    return index < m_columns.size() ? m_columns.at(index).lines : QList<ZListItem>();
}

/// The row's whole text is what a screen reader says and what typing a letter searches.
void ZListBoxItem::linesChanged() {
    QStringList texts;
    for (const Column& column : std::as_const(m_columns)) {
        for (const ZListItem& line : column.lines) {
            texts.append(line.text.isEmpty() ? line.secondText : line.text);
            if (!line.badge.isEmpty())
                texts.append(line.badge);
        }
    }
    setText(texts.join(", "));
    emitDataChanged();
}
