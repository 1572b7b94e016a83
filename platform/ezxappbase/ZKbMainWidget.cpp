#include "ZKbMainWidget.h"

#include "Look.h"
#include "WaitBar.h"
#include "ZSoftKey.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int moment = 100; // ms; shorter work shows the whole line, which does not flicker

} // namespace

ZKbMainWidget::ZKbMainWidget(QWidget* parent, const char* name, int flags)
    : QWidget(parent, Qt::WindowFlags(flags)), m_content(new QVBoxLayout(this)) {
    setObjectName(QString::fromLatin1(name));
    m_content->setSpacing(0);
    m_busyTimer.setInterval(frameMilliseconds);
    connect(&m_busyTimer, &QTimer::timeout, this, [this] { update(busyLine()); });
}

void ZKbMainWidget::setMainWidgetTitle(const QString& title) {
    m_title = title;
    setAccessibleName(title);
    setWindowTitle(title);
    repaint(titleBar());
}

void ZKbMainWidget::setTitleIcon(const QPixmap& icon) {
    m_titleIcon = icon;
    update(titleBar());
}

void ZKbMainWidget::setTitleBadge(const QString& badge) {
    m_badge = badge;
    update(titleBar());
}

void ZKbMainWidget::setBusy(bool busy) {
    if (busy) {
        m_busySince.start();
        m_busyTimer.start();
    } else {
        m_busySince.invalidate();
        m_busyTimer.stop();
    }
    repaint(titleBar());
}

void ZKbMainWidget::setSoftKey(ZSoftKey* softKey) {
    m_softKey = softKey;
    if (isVisible())
        layOut();
}

QRect ZKbMainWidget::titleBar() const {
    return QRect(0, 0, width(), scaled(Measure::titleBar));
}

QRect ZKbMainWidget::busyLine() const {
    constexpr int height = 2;
    const QRect bar = titleBar();
    return bar.adjusted(0, bar.height() - height, 0, 0);
}

void ZKbMainWidget::layOut() {
    const int bar = scaled(Measure::softKeyBar);
    const int toolBar = showToolBar() ? scaled(Measure::tabBar) : 0;
    m_content->setContentsMargins(0, scaled(Measure::titleBar) + toolBar, 0, bar);
    if (m_softKey)
        m_softKey->setGeometry(0, height() - bar, width(), bar);
}

void ZKbMainWidget::resizeEvent(QResizeEvent*) {
    layOut();
}

void ZKbMainWidget::showEvent(QShowEvent*) {
    layOut();
}

void ZKbMainWidget::keyPressEvent(QKeyEvent* event) {
    if (!m_softKey || event->isAutoRepeat())
        return;
    if (event->key() == Qt::Key_F1)
        m_softKey->pressLeft();
    else if (event->key() == Qt::Key_F2)
        m_softKey->pressRight();
}

void ZKbMainWidget::paintBadge(QPainter& painter, const QRect& bar) const {
    painter.setFont(lookFont(Measure::hintFont, QFont::DemiBold));
    const int height = scaled(Measure::titleIcon);
    const int width = painter.fontMetrics().horizontalAdvance(m_badge) + 4 * Measure::grid;
    QRect place(0, 0, width, height);
    place.moveCenter(bar.center());
    place.moveRight(bar.right() - 2 * Measure::grid);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours().accent);
    painter.drawRoundedRect(place, height / 2.0, height / 2.0);
    painter.setPen(colours().bar);
    painter.drawText(place, Qt::AlignCenter, m_badge);
}

void ZKbMainWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect bar = titleBar();
    painter.fillRect(rect(), colours().surface);
    painter.fillRect(bar, colours().bar);
    paintTitle(painter, bar, m_titleIcon, m_title);
    if (!m_badge.isEmpty())
        paintBadge(painter, bar);
    if (!m_busySince.isValid())
        return;
    const QRectF line = busyLine();
    const qint64 elapsed = m_busySince.elapsed();
    painter.fillRect(elapsed < moment ? line : swingingPart(line, elapsed), colours().accent);
}
