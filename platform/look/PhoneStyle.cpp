#include "PhoneStyle.h"

#include "Look.h"

#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionSlider>

namespace {
constexpr int shortestThumb = 24;
}

PhoneStyle::PhoneStyle() : QProxyStyle("Fusion") {}

void PhoneStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QScrollBar*>(widget))
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
}

int PhoneStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    // The bar lies over the rows, which keep the whole width.
    if (metric == PM_ScrollBarExtent || metric == PM_ScrollView_ScrollBarOverlap)
        return Measure::scrollBar;
    if (metric == PM_ScrollBarSliderMin)
        return shortestThumb;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int PhoneStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
    if (hint == SH_ScrollBar_LeftClickAbsolutePosition)
        return 1;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QRect PhoneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const QRect groove = bar->rect;
    const int range = bar->maximum - bar->minimum;
    const int whole = range + bar->pageStep;
    const int length = qBound(shortestThumb, groove.height() * bar->pageStep / qMax(whole, 1),
                              qMax(groove.height(), shortestThumb));
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              groove.height() - length, bar->upsideDown);
    switch (part) {
    case SC_ScrollBarSlider:
        return QRect(groove.left(), groove.top() + start, groove.width(), length);
    case SC_ScrollBarGroove:
        return groove;
    case SC_ScrollBarSubPage:
        return QRect(groove.left(), groove.top(), groove.width(), start);
    case SC_ScrollBarAddPage:
        return groove.adjusted(0, start + length, 0, 0);
    default:
        return QRect();
    }
}

void PhoneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    if (control != CC_ScrollBar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colours().tabText);
    const QRect thumb = subControlRect(control, option, SC_ScrollBarSlider, widget);
    painter->drawRoundedRect(thumb, Measure::scrollBar / 2.0, Measure::scrollBar / 2.0);
    painter->restore();
}
