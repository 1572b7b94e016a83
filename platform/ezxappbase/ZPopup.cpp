#include "ZPopup.h"

#include "FlatButton.h"
#include "Look.h"
#include "SoftKeyBar.h"
#include "ZApplication.h"
#include "ZScreen.h"

#include <QApplication>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>

namespace {

constexpr int unitMilliseconds = 100;
constexpr int contentSpacing = 2 * Measure::grid;

/// What waits for an answer, and what is on the screen; the last one is on top. There is one
/// screen, and the order in which popups came to lie on it is known nowhere else.
QList<ZPopup*> waitingPopups;
QList<ZPopup*> shownPopups;

int titleHeight() {
    return scaled(Measure::titleBar);
}

} // namespace

ZPopup::ZPopup(int, QWidget* parent, const char* name, bool, int, int)
    : ZOverlay(parent), m_card(new QWidget(this)), m_scroll(makeScrollArea(new QWidget, m_card)),
      m_content(new QVBoxLayout), m_actions(new QVBoxLayout) {
    setObjectName(QString::fromLatin1(name));

    m_scroll->widget()->setLayout(m_content);
    m_scroll->widget()->installEventFilter(this);
    setContentMargin(Measure::dialogPadding);
    m_content->setSpacing(contentSpacing);

    auto* column = new QVBoxLayout(m_card);
    column->setContentsMargins(0, titleHeight(), 0, 0);
    column->setSpacing(0);
    column->addWidget(m_scroll);
    column->addLayout(m_actions);

    connect(softKeys(), &SoftKeyBar::leftPressed, this, [this] { done(1); });
    connect(softKeys(), &SoftKeyBar::rightPressed, this, [this] { done(0); });
}

ZPopup::~ZPopup() {
    waitingPopups.removeOne(this);
    shownPopups.removeOne(this);
}

ZPopup* ZPopup::active() {
    return waitingPopups.isEmpty() ? nullptr : waitingPopups.last();
}

ZPopup* ZPopup::shown() {
    return shownPopups.isEmpty() ? nullptr : shownPopups.last();
}

void ZPopup::setTitle(const QString& title) {
    m_title = title;
    setAccessibleName(title);
    update();
}

void ZPopup::setTitleIcon(const QPixmap& icon) {
    m_titleIcon = icon;
    update();
}

void ZPopup::insertChild(QWidget* child, int index) {
    m_content->insertWidget(index, child);
}

void ZPopup::setContentSpacing(int spacing) {
    m_content->setSpacing(spacing);
}

void ZPopup::setAutoDismissTime(int units) {
    m_dismissUnits = units;
}

void ZPopup::setSoftKeys(const QString& left, const QString& right) {
    softKeys()->setTexts(left, right);
}

void ZPopup::setContentMargin(int margin) {
    m_content->setContentsMargins(margin, Measure::dialogPadding, margin, Measure::dialogPadding);
}

void ZPopup::addButtons(const QString& left, const QString& right) {
    const int padding = Measure::dialogPadding;
    auto* row = new QHBoxLayout;
    row->setContentsMargins(padding, 0, padding, padding);
    row->setSpacing(contentSpacing);
    const QStringList texts = {left, right};
    for (int i = 0; i < texts.size(); ++i) {
        if (texts.at(i).isEmpty())
            continue;
        auto* button =
            new FlatButton(i == 0 ? FlatButton::MainAction : FlatButton::OtherAction, m_card);
        button->setText(texts.at(i));
        connect(button, &QPushButton::clicked, this, [this, i] { done(i == 0 ? 1 : 0); });
        row->addWidget(button);
    }
    m_actions->addLayout(row);
}

int ZPopup::exec() {
    if (!ZApplication::hasDisplay())
        return 0;
    QEventLoop loop;
    m_loop = &loop;
    m_result = 0;
    m_isAnswered = false;
    m_painted = false;
    waitingPopups.append(this);
    ZScreen::instance().present();
    show();
    if (m_dismissUnits > 0)
        dismissWhenPainted();
    loop.exec();
    qApp->removeEventFilter(this);
    waitingPopups.removeOne(this);
    hide();
    return m_result;
}

void ZPopup::dismissWhenPainted() {
    const bool wasPainted = m_painted;
    QTimer::singleShot(m_dismissUnits * unitMilliseconds, m_loop, [this, wasPainted] {
        wasPainted || !isVisible() ? done(0) : dismissWhenPainted();
    });
}

void ZPopup::done(int result) {
    if (!m_loop || m_isAnswered)
        return;
    m_result = result;
    m_isAnswered = true;
    qApp->installEventFilter(this);
    m_loop->quit();
}

/// Keys that came in together are handed out one after the other before the popup is gone: those
/// after the answer were not meant for it.
bool ZPopup::eventFilter(QObject* watched, QEvent* event) {
    if (m_isAnswered && isInput(*event) &&
        (watched == this || isAncestorOf(qobject_cast<QWidget*>(watched))))
        return true;
    if (watched == m_scroll->widget() && event->type() == QEvent::LayoutRequest)
        layOut();
    return ZOverlay::eventFilter(watched, event);
}

void ZPopup::showEvent(QShowEvent* event) {
    ZOverlay::showEvent(event);
    shownPopups.append(this);
    showTopCardOnly();
    layOut();
}

void ZPopup::hideEvent(QHideEvent* event) {
    shownPopups.removeOne(this);
    showTopCardOnly();
    ZOverlay::hideEvent(event);
}

/// The screen is dimmed once, and one card is enough to read.
void ZPopup::showTopCardOnly() {
    for (ZPopup* popup : std::as_const(shownPopups)) {
        popup->m_card->setVisible(popup == shownPopups.last());
        popup->update();
    }
}

void ZPopup::resizeEvent(QResizeEvent* event) {
    ZOverlay::resizeEvent(event);
    layOut();
}

QSize ZPopup::cardSize() const {
    const int width = qMin(this->width() - 2 * Measure::dialogMargin, scaled(Measure::widestCard));
    const int content = m_content->hasHeightForWidth() ? m_content->totalHeightForWidth(width)
                                                       : m_content->totalSizeHint().height();
    const int room = area().height() - 2 * Measure::dialogMargin;
    const int wanted = titleHeight() + content + m_actions->sizeHint().height();
    return QSize(width, qMin(wanted, room));
}

void ZPopup::layOut() {
    QRect card(QPoint(), cardSize());
    card.moveCenter(area().center());
    m_card->setGeometry(card);
}

void ZPopup::paintEvent(QPaintEvent*) {
    m_painted = true;
    QPainter painter(this);
    if (this == shownPopups.first())
        painter.fillRect(rect(), colours().dim);
    if (this != shownPopups.last())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRect card = m_card->geometry();
    const int radius = Measure::radius;
    const QRect title(card.left(), card.top(), card.width(), titleHeight());
    painter.setBrush(colours().surface);
    painter.drawRoundedRect(card, radius, radius);
    painter.setBrush(colours().bar);
    painter.drawRoundedRect(title, radius, radius);
    painter.drawRect(title.adjusted(0, radius, 0, 0));
    paintTitle(painter, title, m_titleIcon, m_title);
}

void ZPopup::reveal(QWidget* child) {
    m_scroll->ensureWidgetVisible(child, 0, Measure::dialogPadding);
}

void ZPopup::scrollTo(QWidget* child) {
    m_scroll->verticalScrollBar()->setValue(child->y() - contentSpacing);
}

void ZPopup::scrollBy(int steps) {
    QScrollBar* bar = m_scroll->verticalScrollBar();
    bar->setValue(bar->value() + steps * scaled(Measure::dialogFont));
}

void ZPopup::keyPressEvent(QKeyEvent* event) {
    const int page = 8;
    switch (event->key()) {
    case Qt::Key_Up:
        return scrollBy(-1);
    case Qt::Key_Down:
        return scrollBy(1);
    case Qt::Key_PageUp:
        return scrollBy(-page);
    case Qt::Key_PageDown:
        return scrollBy(page);
    case Qt::Key_Home:
        return m_scroll->verticalScrollBar()->triggerAction(QScrollBar::SliderToMinimum);
    case Qt::Key_End:
        return m_scroll->verticalScrollBar()->triggerAction(QScrollBar::SliderToMaximum);
    default:
        break;
    }
    // A key that is still held from the screen below must not answer the question.
    if (event->isAutoRepeat())
        return;
    switch (event->key()) {
    case Qt::Key_F1:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
        if (!softKeys()->leftText().isEmpty())
            done(1);
        break;
    case Qt::Key_F2:
        if (!softKeys()->rightText().isEmpty())
            done(0);
        break;
    case Qt::Key_Escape:
    case Qt::Key_Backspace:
        if (!softKeys()->leftText().isEmpty())
            done(0);
        break;
    default:
        break;
    }
}
