#include "ZOptionsMenu.h"

#include "Look.h"
#include "MenuRow.h"
#include "SoftKeyBar.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

/// The menus that are open on the program's one screen, the one on top last.
QList<QPointer<ZOptionsMenu>> openMenus;

constexpr int cardPadding = Measure::grid;
constexpr int sideMargin = 6;

/// The place of the entry that a digit key chooses, counted from 0; -1 for other keys.
int indexOfDigit(int key) {
    if (key == Qt::Key_0)
        return 9;
    return key >= Qt::Key_1 && key <= Qt::Key_9 ? key - Qt::Key_1 : -1;
}

} // namespace

ZOptionsMenu::ZOptionsMenu(const QRect&, QWidget* parent, const char* name, int, int, bool)
    : ZOverlay(nullptr), m_scroll(makeScrollArea(new QWidget, this)), m_column(new QVBoxLayout) {
    setObjectName(QString::fromLatin1(name));
    connect(parent, &QObject::destroyed, this, &QObject::deleteLater);
    m_scroll->widget()->setLayout(m_column);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    connect(softKeys(), &SoftKeyBar::leftPressed, this, [this] { choose(m_highlighted); });
    connect(softKeys(), &SoftKeyBar::rightPressed, this, &ZOptionsMenu::close);
}

ZOptionsMenu* ZOptionsMenu::active() {
    return openMenus.isEmpty() ? nullptr : openMenus.last().data();
}

void ZOptionsMenu::addRow(MenuRow* row, int index) {
    m_rows.insert(index, row);
    m_column->insertWidget(index, row);
    for (int i = 0; i < m_rows.size(); ++i)
        m_rows.at(i)->setNumber(i + 1);
    connect(row, &QPushButton::pressed, this, [this, row] { highlight(int(m_rows.indexOf(row))); });
    connect(row, &QPushButton::clicked, this, [this, row] { choose(int(m_rows.indexOf(row))); });
}

void ZOptionsMenu::insertItem(const QString& text, ZOptionsMenu* submenu, const QPixmap&,
                              bool enabled, int id, int index) {
    auto* row = new MenuRow(text, id, m_scroll->widget());
    row->setSubmenu(submenu);
    row->setEnabled(enabled);
    addRow(row, index);
}

void ZOptionsMenu::insertItem(const QString& text, const QPixmap&, QObject*, bool enabled,
                              bool checkItem, bool checked, int id, int index) {
    auto* row = new MenuRow(text, id, m_scroll->widget());
    row->setEnabled(enabled);
    row->setCheckable(checkItem);
    row->setChecked(checked);
    addRow(row, index);
}

MenuRow* ZOptionsMenu::row(int id) const {
    for (MenuRow* row : m_rows) {
        if (row->id() == id)
            return row;
    }
    return nullptr;
}

void ZOptionsMenu::connectItem(int id, QObject* receiver, const std::function<void()>& action) {
    if (const MenuRow* entry = row(id))
        connect(entry, &MenuRow::chosen, receiver, action);
}

void ZOptionsMenu::setItemEnabled(int id, bool enabled) {
    if (MenuRow* entry = row(id))
        entry->setEnabled(enabled);
}

bool ZOptionsMenu::isItemEnabled(int id) const {
    const MenuRow* entry = row(id);
    return entry && entry->isEnabled();
}

int ZOptionsMenu::itemState(int id) const {
    const MenuRow* entry = row(id);
    if (!entry || !entry->isCheckable())
        return 0;
    return entry->isChecked() ? CheckItem | CheckedItem : CheckItem;
}

QString ZOptionsMenu::itemText(int id) const {
    const MenuRow* entry = row(id);
    return entry ? entry->text() : QString();
}

void ZOptionsMenu::open(const QString& leftText, const QString& rightText) {
    softKeys()->setTexts(leftText, rightText);
    openMenus.removeAll(this);
    openMenus.append(this);
    show();
    layOut();
    m_highlighted = -1;
    moveHighlight(1, false);
}

void ZOptionsMenu::highlight(int index) {
    m_highlighted = index;
    for (int i = 0; i < m_rows.size(); ++i)
        m_rows.at(i)->setHighlighted(i == index);
    if (index >= 0)
        m_scroll->ensureWidgetVisible(m_rows.at(index), 0, 0);
}

/// To the next entry that can be chosen, if there is one.
void ZOptionsMenu::moveHighlight(int step, bool wrap) {
    const int count = int(m_rows.size());
    for (int tried = 1; tried <= count; ++tried) {
        int target = m_highlighted + tried * step;
        if (wrap)
            target = (target + 2 * count) % count;
        if (target < 0 || target >= count)
            return;
        if (m_rows.at(target)->isEnabled())
            return highlight(target);
    }
}

void ZOptionsMenu::choose(int index) {
    if (index < 0 || index >= m_rows.size() || !m_rows.at(index)->isEnabled())
        return;
    MenuRow* entry = m_rows.at(index);
    if (entry->submenu())
        return openSubmenu(index);
    if (entry->isCheckable())
        entry->toggle();
    closeAll();
    emit entry->chosen();
}

void ZOptionsMenu::openSubmenu(int index) {
    ZOptionsMenu* submenu = m_rows.at(index)->submenu();
    if (!submenu || !m_rows.at(index)->isEnabled())
        return;
    highlight(index);
    hide();
    submenu->m_opener = this;
    submenu->setAccessibleName(m_rows.at(index)->text());
    submenu->open(softKeys()->leftText(), softKeys()->rightText());
}

void ZOptionsMenu::close() {
    openMenus.removeAll(this);
    hide();
    if (m_opener)
        m_opener->show();
    m_opener.clear();
}

void ZOptionsMenu::closeAll() {
    const QPointer<ZOptionsMenu> opener = m_opener;
    m_opener.clear();
    close();
    if (opener)
        opener->closeAll();
}

void ZOptionsMenu::layOut() {
    const QSize hint = m_column->sizeHint();
    const int room = qMin(this->width(), scaled(Measure::widestCard));
    const int width =
        qMin(qMax(hint.width() + 2 * cardPadding, room * 4 / 5), room - 2 * sideMargin);
    const int height = qMin(hint.height() + 2 * cardPadding, area().height() - 2 * Measure::grid);
    const int left = m_opener ? room - width - sideMargin : sideMargin;
    m_card = QRect(left, area().bottom() + 1 - Measure::grid / 2 - height, width, height);
    m_scroll->setGeometry(m_card.adjusted(cardPadding, cardPadding, -cardPadding, -cardPadding));
    update();
}

void ZOptionsMenu::resizeEvent(QResizeEvent* event) {
    ZOverlay::resizeEvent(event);
    layOut();
}

void ZOptionsMenu::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(area(), colours().dim);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours().surface);
    painter.drawRoundedRect(m_card, Measure::radius, Measure::radius);
}

void ZOptionsMenu::mousePressEvent(QMouseEvent* event) {
    if (!m_card.contains(event->position().toPoint()))
        close();
}

void ZOptionsMenu::keyPressEvent(QKeyEvent* event) {
    const bool isFresh = !event->isAutoRepeat();
    switch (event->key()) {
    case Qt::Key_Up:
        return moveHighlight(-1, isFresh);
    case Qt::Key_Down:
        return moveHighlight(1, isFresh);
    case Qt::Key_Home:
    case Qt::Key_PageUp:
        m_highlighted = -1;
        return moveHighlight(1, false);
    case Qt::Key_End:
    case Qt::Key_PageDown:
        m_highlighted = count();
        return moveHighlight(-1, false);
    default:
        if (isFresh)
            pressKey(event->key());
    }
}

void ZOptionsMenu::pressKey(int key) {
    switch (key) {
    case Qt::Key_F1:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
        return choose(m_highlighted);
    case Qt::Key_Right:
        return openSubmenu(m_highlighted);
    case Qt::Key_Left:
        return m_opener ? close() : void();
    case Qt::Key_F2:
    case Qt::Key_Escape:
    case Qt::Key_Backspace:
        return close();
    default:
        return choose(indexOfDigit(key));
    }
}
