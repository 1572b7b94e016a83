#include "ListRowDelegate.h"

#include "ListLayout.h"
#include "Look.h"
#include "ZListBoxItem.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStandardItemModel>

#include <algorithm>

namespace {

constexpr int margin = 2 * Measure::grid;
constexpr int mostLines = 2;

QFont nameFont(const ZListItem& line) {
    return lookFont(Measure::nameFont, line.strong ? QFont::DemiBold : QFont::Normal);
}

const ZListBoxItem& itemAt(const QModelIndex& index) {
    const auto* model = static_cast<const QStandardItemModel*>(index.model());
    return static_cast<const ZListBoxItem&>(*model->itemFromIndex(index));
}

/// The lines that the row has room for, in their order.
QList<ZListItem> shownLines(const ZListBoxItem& item, int column) {
    QList<ZListItem> lines = item.subItems(column);
    while (lines.size() > mostLines) {
        const auto least = std::min_element(lines.begin(), lines.end(), [](auto& a, auto& b) {
            return a.showPriority < b.showPriority;
        });
        lines.erase(least);
    }
    return lines;
}

/// Width left for the text of a line of `room` pixels beside its marker icon.
int textWidth(const ZListItem& line, int room) {
    const int marker = scaled(Measure::markerIcon) + Measure::grid;
    return !line.icon.isNull() && room - marker >= line.width ? room - marker : room;
}

QFont badgeFont() {
    return lookFont(Measure::hintFont, QFont::DemiBold);
}

int badgeWidth(const ZListItem& line) {
    return QFontMetrics(badgeFont()).horizontalAdvance(line.badge) + 4 * Measure::grid;
}

void paintBadge(QPainter& painter, const QRect& row, const ZListItem& line) {
    const int height = scaled(Measure::markerIcon);
    const int width = badgeWidth(line);
    const QRect pill(row.right() + 1 - width, row.center().y() - height / 2, width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(line.strongBadge ? colours().accent : colours().button);
    painter.drawRoundedRect(pill, height / 2.0, height / 2.0);
    painter.setFont(badgeFont());
    painter.setPen(line.strongBadge ? colours().bar : colours().text);
    painter.drawText(pill, Qt::AlignCenter, line.badge);
}

void paintMarker(QPainter& painter, const QRect& line, const ZListItem& item, const QColor& ink) {
    if (textWidth(item, line.width()) == line.width())
        return;
    const int size = scaled(Measure::markerIcon);
    const QRect place(line.right() + 1 - size, line.center().y() - size / 2 + 1, size, size);
    painter.drawPixmap(place, tinted(item.icon, ink));
}

} // namespace

ListRowDelegate::ListRowDelegate(QAbstractItemView* view, const ListLayout* layout)
    : QStyledItemDelegate(view), m_view(view), m_layout(layout) {}

QSize ListRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return QSize(1, scaled(m_layout->isCompact() ? Measure::compactRow : Measure::listRow));
}

QRect ListRowDelegate::textPlace(const QRect& row, const QList<ZListItem>& lines) const {
    const int icon = scaled(m_layout->isCompact() ? Measure::compactIcon : Measure::rowIcon);
    const int check = m_layout->hasCheckBoxes() ? scaled(Measure::checkBox) + margin : 0;
    const int badge =
        lines.isEmpty() || lines.first().badge.isEmpty() ? 0 : badgeWidth(lines.first()) + margin;
    return row.adjusted(margin + check + icon + margin, 0, -margin - Measure::scrollBar - badge, 0);
}

int ListRowDelegate::hiddenNameWidth(const QModelIndex& index) const {
    if (!index.isValid())
        return 0;
    const QList<ZListItem> lines = shownLines(itemAt(index), m_layout->textColumn());
    if (lines.isEmpty())
        return 0;
    const QRect place = textPlace(QRect(0, 0, m_view->viewport()->width(), 1), lines);
    const QFontMetrics metrics(nameFont(lines.first()));
    return qMax(0, metrics.horizontalAdvance(lines.first().text) -
                       textWidth(lines.first(), place.width()));
}

void ListRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const ZListBoxItem& item = itemAt(index);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool focused = index == m_view->currentIndex();
    if (focused)
        painter->fillRect(option.rect, colours().focus);
    paintIcon(*painter, option.rect, item, focused);
    paintLines(*painter, option.rect, item, focused);
    painter->restore();
}

void ListRowDelegate::paintIcon(QPainter& painter, const QRect& row, const ZListBoxItem& item,
                                bool focused) const {
    int left = row.left() + margin;
    if (item.isCheckable()) {
        const int size = scaled(Measure::checkBox);
        paintCheckBox(painter, QRect(left, row.center().y() - size / 2 + 1, size, size),
                      item.isChecked(), focused);
        left += size + margin;
    }
    const int size = scaled(m_layout->isCompact() ? Measure::compactIcon : Measure::rowIcon);
    const QPixmap icon = item.pixmap(m_layout->iconColumn(), size);
    if (icon.isNull())
        return;
    QRect place(QPoint(),
                icon.deviceIndependentSize().toSize().scaled(size, size, Qt::KeepAspectRatio));
    place.moveCenter(QRect(left, row.top(), size, row.height()).center());
    const QColor ink = focused ? colours().focusText : colours().secondaryText;
    painter.drawPixmap(place, tinted(icon, ink));
}

void ListRowDelegate::paintLines(QPainter& painter, const QRect& row, const ZListBoxItem& item,
                                 bool focused) const {
    const Palette& palette = colours();
    const QList<ZListItem> lines = shownLines(item, m_layout->textColumn());
    const QRect place = textPlace(row, lines);
    if (!lines.isEmpty() && !lines.first().badge.isEmpty())
        paintBadge(painter, row.adjusted(0, 0, -margin - Measure::scrollBar, 0), lines.first());
    painter.setPen(palette.line);
    if (!focused && !m_layout->isCompact())
        painter.drawLine(place.left(), row.bottom(), row.right(), row.bottom());

    const int inset = lines.size() > 1 ? (m_layout->isCompact() ? 1 : 3) : 0;
    const int height = (row.height() - 2 * inset) / qMax<int>(1, int(lines.size()));
    for (int i = 0; i < lines.size(); ++i) {
        const ZListItem& line = lines.at(i);
        const bool isName = i == 0;
        const bool isQuiet = line.text.isEmpty() || !isName;
        const QColor quiet = focused ? palette.focusSecondaryText : palette.secondaryText;
        const QColor ink = isQuiet ? quiet : focused ? palette.focusText : palette.text;
        const QRect whole(place.left(), row.top() + inset + i * height, place.width(), height);
        paintMarker(painter, whole, line, focused ? palette.focusText : palette.secondaryText);

        QRect text = whole;
        text.setWidth(textWidth(line, whole.width()));
        painter.setFont(isName ? nameFont(line) : lookFont(Measure::secondFont));
        painter.setPen(ink);
        const QString words = line.text.isEmpty() ? line.secondText : line.text;
        const int offset = focused && isName ? m_layout->nameOffset() : 0;
        const QString shown =
            offset > 0 ? words
                       : painter.fontMetrics().elidedText(words, Qt::ElideRight, text.width());
        painter.setClipRect(text);
        painter.drawText(
            text.adjusted(-offset, 0, 0, 0),
            int(Qt::AlignVCenter | Qt::AlignLeft) | Qt::TextSingleLine | Qt::TextDontClip, shown);
        painter.setClipping(false);
    }
}

void paintEmptyNotice(QPainter& painter, const QRect& place, const QPixmap& icon,
                      const QString& heading, const QString& hint) {
    constexpr int gap = 3 * Measure::grid;
    const QFont headingFont =
        fittedFont(heading, place.width() - 2 * gap, Measure::nameFont, QFont::DemiBold);
    const QFont hintFont = lookFont(Measure::secondFont);
    const QRect column = place.adjusted(gap, 0, -gap, 0);
    const int wrapped = int(Qt::AlignHCenter | Qt::AlignTop) | Qt::TextWordWrap;
    const QSize picture = icon.deviceIndependentSize().toSize();
    const int headingHeight =
        QFontMetrics(headingFont).boundingRect(column, wrapped, heading).height();
    const int hintHeight = QFontMetrics(hintFont).boundingRect(column, wrapped, hint).height();
    const int both = headingHeight + Measure::grid + hintHeight;
    // Where there is little room the words come first, and of them the heading.
    const bool hasHint = both <= place.height();
    const int texts = hasHint ? both : headingHeight;
    const bool hasPicture = !icon.isNull() && texts + gap + picture.height() <= place.height();
    int top =
        place.top() + (place.height() - texts - (hasPicture ? gap + picture.height() : 0)) / 2;
    if (hasPicture) {
        painter.setOpacity(0.35);
        painter.drawPixmap(place.center().x() - picture.width() / 2, top, icon);
        painter.setOpacity(1);
        top += picture.height() + gap;
    }
    painter.setFont(headingFont);
    painter.setPen(colours().text);
    painter.drawText(QRect(column.left(), top, column.width(), headingHeight), wrapped, heading);
    if (!hasHint)
        return;
    top += headingHeight + Measure::grid;
    painter.setFont(hintFont);
    painter.setPen(colours().secondaryText);
    painter.drawText(QRect(column.left(), top, column.width(), hintHeight), wrapped, hint);
}
