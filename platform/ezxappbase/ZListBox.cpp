#include "ZListBox.h"

#include "Keypad.h"
#include "ListHeader.h"
#include "ListRowDelegate.h"
#include "Look.h"
#include "PhoneSettings.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QScroller>
#include <QStandardItemModel>

namespace {

constexpr int nameStepMilliseconds = 40;
constexpr int nameHoldSteps = 25;
constexpr int fastAfter = 6;
constexpr int fasterAfter = 18;

/// Rows to go with the n-th repeat of a held key.
int stepOfRepeat(int repeats) {
    if (repeats > fasterAfter)
        return 8;
    return repeats > fastAfter ? 3 : 1;
}

} // namespace

ZListBox::ZListBox(const QString& itemLayout, QWidget* parent, int)
    : QListView(parent), ListLayout(itemLayout), m_model(new QStandardItemModel(this)),
      m_header(new ListHeader(this)) {
    setModel(m_model);
    setItemDelegate(new ListRowDelegate(this, this));
    setFrameShape(QFrame::NoFrame);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setAutoScroll(true);
    setMouseTracking(false);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    m_nameTimer.setInterval(nameStepMilliseconds);
    connect(&m_nameTimer, &QTimer::timeout, this, &ZListBox::scrollName);
    connect(m_model, &QStandardItemModel::itemChanged, this, &ZListBox::checksChanged);
}

void ZListBox::setItemLayout(const QString& itemLayout) {
    m_columns = itemLayout;
}

void ZListBox::setCompact(bool compact) {
    m_isCompact = compact;
}

void ZListBox::insertItem(ZListBoxItem* item, int index) {
    m_model->insertRow(index < 0 ? m_model->rowCount() : index, item);
    if (item->row() == 0)
        showHeader();
}

void ZListBox::showHeader() {
    const ZListBoxItem* first = item(0);
    const bool hasHeader = first && !first->isEnabled();
    m_header->setVisible(hasHeader);
    setViewportMargins(0, hasHeader ? scaled(Measure::headerRow) : 0, 0, 0);
    if (!hasHeader)
        return;
    setRowHidden(0, true);
    m_header->setText(first->subItemText(textColumn()));
    m_header->setGeometry(0, 0, width(), scaled(Measure::headerRow));
}

void ZListBox::removeItem(int index) {
    m_model->removeRow(index);
    showHeader();
}

void ZListBox::clear() {
    m_model->removeRows(0, m_model->rowCount());
    showHeader();
    viewport()->update();
}

int ZListBox::count() const {
    return m_model->rowCount();
}

ZListBoxItem* ZListBox::item(int index) const {
    return static_cast<ZListBoxItem*>(m_model->item(index));
}

int ZListBox::currentItem() const {
    return currentIndex().row();
}

void ZListBox::setCurrentItem(int index) {
    setCurrentIndex(m_model->index(index, 0));
}

void ZListBox::setEmptyNotice(const QPixmap& icon, const QString& heading, const QString& hint,
                              int rows) {
    m_emptyIcon = icon;
    m_emptyHeading = heading;
    m_emptyHint = hint;
    m_emptyRows = rows;
    viewport()->update();
}

void ZListBox::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    startNameScroll();
    if (current.isValid())
        emit highlighted(current.row());
}

void ZListBox::startNameScroll() {
    m_nameOffset = 0;
    m_nameHold = nameHoldSteps;
    m_nameTimer.start();
}

/// The name waits a moment, moves left to its end, waits, and begins anew.
void ZListBox::scrollName() {
    const auto* delegate = static_cast<const ListRowDelegate*>(itemDelegate());
    const int hidden = delegate->hiddenNameWidth(currentIndex());
    if (hidden <= 0 || !hasFocus()) {
        m_nameTimer.stop();
        return;
    }
    if (m_nameHold > 0) {
        --m_nameHold;
        return;
    }
    const bool atEnd = m_nameOffset >= hidden;
    m_nameOffset = atEnd ? 0 : m_nameOffset + 1;
    if (atEnd || m_nameOffset >= hidden)
        m_nameHold = nameHoldSteps;
    update(currentIndex());
}

void ZListBox::choose(const QModelIndex& index) {
    if (!index.isValid() || !(index.flags() & Qt::ItemIsEnabled))
        return;
    ZListBoxItem* row = item(index.row());
    if (row->isCheckable())
        row->setChecked(!row->isChecked());
    emit selected(index.row());
}

/// The first row that can be stepped on from `from` in the direction of `step`, -1 where there is
/// none.
int ZListBox::nextEnabled(int from, int step) const {
    for (int row = from; row >= 0 && row < count(); row += step) {
        if (item(row)->isEnabled())
            return row;
    }
    return -1;
}

bool ZListBox::moveHighlight(QKeyEvent* event) {
    const int last = count() - 1;
    const int page = qMax(1, viewport()->height() / qMax(1, sizeHintForRow(qMax(0, last))) - 1);
    const int current = currentItem();
    const bool isFresh = !event->isAutoRepeat();
    m_repeats = isFresh ? 0 : m_repeats + 1;
    const int step = stepOfRepeat(m_repeats);
    int target = -1;
    switch (event->key()) {
    case Qt::Key_Up:
        target = nextEnabled(qMax(0, current - step), -1);
        if (target < 0 || (current <= 0 && isFresh))
            target = isFresh ? nextEnabled(last, -1) : nextEnabled(0, 1);
        break;
    case Qt::Key_Down:
        target = current >= last && isFresh ? nextEnabled(0, 1)
                                            : nextEnabled(qMin(last, current + step), 1);
        break;
    case Qt::Key_PageUp:
        target = nextEnabled(qMax(0, current - page), 1);
        break;
    case Qt::Key_PageDown:
        target = nextEnabled(qMin(last, current + page), -1);
        break;
    case Qt::Key_Home:
        target = nextEnabled(0, 1);
        break;
    case Qt::Key_End:
        target = nextEnabled(last, -1);
        break;
    default:
        return false;
    }
    if (target >= 0)
        setCurrentItem(target);
    return true;
}

void ZListBox::keyPressEvent(QKeyEvent* event) {
    if (moveHighlight(event))
        return;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
        if (!event->isAutoRepeat())
            choose(currentIndex());
        return;
    default:
        // Soft keys and tabs belong to the window around the list.
        if (!jumpByLetter(*event))
            event->ignore();
    }
}

/// To the next row whose name begins with what was typed: a letter or, on a keypad, one of those of
/// its key.
bool ZListBox::jumpByLetter(const QKeyEvent& event) {
    const int digit = digitOf(event.key());
    const QString letters = digit >= 0 && hasKeypad() ? lettersOf(digit) : event.text();
    if (letters.isEmpty() || !letters.at(0).isPrint() || (event.modifiers() & Qt::ControlModifier))
        return false;
    for (int i = 1; i <= count(); ++i) {
        const int row = (qMax(0, currentItem()) + i) % count();
        const QString name = item(row)->subItemText(textColumn());
        if (!name.isEmpty() && item(row)->isEnabled() &&
            letters.contains(name.at(0), Qt::CaseInsensitive)) {
            setCurrentItem(row);
            return true;
        }
    }
    return true;
}

void ZListBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = indexAt(event->position().toPoint());
    QListView::mousePressEvent(event);
}

void ZListBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    QListView::mouseReleaseEvent(event);
    const QModelIndex released = indexAt(event->position().toPoint());
    const QModelIndex pressed = m_pressed;
    m_pressed = QPersistentModelIndex();
    if (released.isValid() && released == pressed)
        choose(released);
}

/// The first touch has chosen the row already, and other rows may be under the finger by now.
void ZListBox::mouseDoubleClickEvent(QMouseEvent*) {}

void ZListBox::resizeEvent(QResizeEvent* event) {
    QListView::resizeEvent(event);
    m_header->resize(width(), m_header->height());
    if (currentIndex().isValid())
        scrollTo(currentIndex());
}

void ZListBox::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (count() > m_emptyRows)
        return;
    QPainter painter(viewport());
    const QModelIndex last = m_model->index(count() - 1, 0);
    const int top = last.isValid() ? visualRect(last).bottom() + 1 : 0;
    paintEmptyNotice(painter, viewport()->rect().adjusted(0, top, 0, 0), m_emptyIcon,
                     m_emptyHeading, m_emptyHint);
}
