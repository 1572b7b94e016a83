#include "ZNavTabWidget.h"

#include "Look.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

class NavTabBar : public QTabBar {
public:
    using QTabBar::QTabBar;

    QSize tabSizeHint(int) const override {
        return QSize(width() / qMax(count(), 1), scaled(Measure::tabBar));
    }

    QSize minimumTabSizeHint(int index) const override {
        return QSize(1, tabSizeHint(index).height());
    }

    QSize sizeHint() const override { return QSize(1, scaled(Measure::tabBar)); }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QTabBar::resizeEvent(event);
        updateGeometry();
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), colours().tabBar);
        for (int i = 0; i < count(); ++i)
            paintTab(painter, i);
    }

private:
    void paintTab(QPainter& painter, int index) const {
        const bool isCurrent = index == currentIndex();
        const int width = this->width() / count();
        const QRect tab(index * width, 0, width, height());
        const QColor ink = isCurrent ? colours().barText : colours().tabText;
        const QFont::Weight weight = isCurrent ? QFont::DemiBold : QFont::Normal;
        const int icon = scaled(Measure::tabIcon);
        const int gap = 2 * Measure::grid;
        const int room = width - icon - 3 * gap;
        const QFont font = fittedFont(tabText(index), room, Measure::tabFont, weight);
        const int text = qMin(QFontMetrics(font).horizontalAdvance(tabText(index)) + 1, room);
        const int left = tab.left() + (width - icon - gap - text) / 2;
        const int top = (height() - icon) / 2 - 1;
        const QPixmap picture = tabIcon(index).pixmap(QSize(icon, icon), devicePixelRatioF());
        painter.drawPixmap(QRect(left, top, icon, icon), tinted(picture, ink));
        painter.setPen(ink);
        paintFitted(painter, QRect(left + icon + gap, 0, text, height() - 2), Qt::AlignLeft,
                    tabText(index), Measure::tabFont, weight);
        if (isCurrent) {
            const int line = Measure::accentLine;
            painter.fillRect(tab.adjusted(0, tab.height() - line, 0, 0), colours().accent);
        }
    }
};

} // namespace

ZNavTabWidget::ZNavTabWidget(QWidget* parent, int)
    : QWidget(parent), m_bar(new NavTabBar(this)), m_pages(new QStackedWidget(this)) {
    m_bar->setFocusPolicy(Qt::NoFocus);
    m_bar->setExpanding(true);
    m_bar->setDrawBase(false);
    m_bar->setUsesScrollButtons(false);
    m_bar->setFixedHeight(scaled(Measure::tabBar));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_pages);
    connect(m_bar, &QTabBar::currentChanged, this, &ZNavTabWidget::showPage);
}

void ZNavTabWidget::addTab(QWidget* page, const QPixmap& icon, const QString& label) {
    m_pages->addWidget(page);
    m_bar->addTab(icon, label);
}

int ZNavTabWidget::currentPageIndex() const {
    return m_pages->currentIndex();
}

void ZNavTabWidget::setCurrentPage(int index) {
    m_bar->setCurrentIndex(index);
}

void ZNavTabWidget::stopNextWhenKeyRepeat(bool stop) {
    m_stopOnRepeat = stop;
}

void ZNavTabWidget::showPage(int index) {
    if (index < 0 || index >= m_pages->count())
        return;
    m_pages->setCurrentIndex(index);
    m_pages->currentWidget()->setFocus();
    emit selected(m_bar->tabText(index));
}

void ZNavTabWidget::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
    if (step == 0)
        return QWidget::keyPressEvent(event);
    if (event->isAutoRepeat() && m_stopOnRepeat)
        return;
    const int target = currentPageIndex() + step;
    if (target >= 0 && target < m_bar->count())
        setCurrentPage(target);
}
