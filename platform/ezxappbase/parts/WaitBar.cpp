#include "WaitBar.h"

#include "Look.h"
#include "Waiting.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr int barHeight = 2 * Measure::grid;
constexpr int crossingMilliseconds = 1600;
constexpr double movingShare = 0.3;
constexpr qint64 firstSecondShown = 3;

} // namespace

QRectF swingingPart(const QRectF& bar, qint64 milliseconds) {
    const double phase = double(milliseconds % crossingMilliseconds) / crossingMilliseconds;
    const double start = (1 - movingShare) * (1 - std::cos(2 * M_PI * phase)) / 2;
    return QRectF(bar.left() + start * bar.width(), bar.top(), movingShare * bar.width(),
                  bar.height());
}

WaitBar::WaitBar(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_timer.setInterval(frameMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, [this] { update(); });
}

QSize WaitBar::sizeHint() const {
    const QFontMetrics metrics(lookFont(Measure::secondFont));
    return QSize(1, barHeight + Measure::grid + metrics.height());
}

QString WaitBar::progressText() const {
    const WorkProgress progress = workProgress();
    if (progress.total > 0)
        return QString("%1 / %2").arg(progress.number).arg(progress.total);
    return progress.fraction < 0 ? QString() : QString("%1 %").arg(int(progress.fraction * 100));
}

QString WaitBar::timeText() const {
    const qint64 seconds = m_shown.isValid() ? m_shown.elapsed() / 1000 : 0;
    return seconds < firstSecondShown ? QString() : QString("%1 s").arg(seconds);
}

void WaitBar::showEvent(QShowEvent*) {
    m_shown.start();
    m_timer.start();
}

void WaitBar::hideEvent(QHideEvent*) {
    m_timer.stop();
}

void WaitBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF bar(0, 0, width(), barHeight);
    constexpr double radius = barHeight / 2.0;
    painter.setBrush(colours().button);
    painter.drawRoundedRect(bar, radius, radius);

    const double fraction = workProgress().fraction;
    QRectF lit = fraction < 0 ? swingingPart(bar, m_shown.elapsed()) : bar;
    if (fraction >= 0)
        lit.setWidth(qMax(fraction * width(), 2 * radius));
    painter.setBrush(colours().accent);
    if (fraction != 0)
        painter.drawRoundedRect(lit, radius, radius);

    painter.setFont(lookFont(Measure::secondFont));
    painter.setPen(colours().secondaryText);
    const QRect texts = rect().adjusted(0, barHeight + Measure::grid, 0, 0);
    painter.drawText(texts, Qt::AlignLeft, progressText());
    painter.drawText(texts, Qt::AlignRight, timeText());
}
