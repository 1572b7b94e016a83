#include "Look.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <cstdlib>

namespace {

Palette lightPalette() {
    return {.bar = QColor(0x1F2A44),
            .barText = QColor(0xFFFFFF),
            .tabBar = QColor(0x2C3A5C),
            .tabText = QColor(0xB9C3DA),
            .surface = QColor(0xFFFFFF),
            .text = QColor(0x1B1F2A),
            .secondaryText = QColor(0x5A6275),
            .focus = QColor(0x2457C5),
            .focusText = QColor(0xFFFFFF),
            .focusSecondaryText = QColor(0xD6E2FF),
            .accent = QColor(0xF2A541),
            .disabledText = QColor(0x767D8E),
            .line = QColor(0xE1E6F0),
            .header = QColor(0xF4F6FB),
            .button = QColor(0xE1E6F0),
            .glyph = QColor(0x5A6275),
            .dim = QColor(0x1B, 0x1F, 0x2A, 148)};
}

Palette darkPalette() {
    Palette dark = lightPalette();
    dark.surface = QColor(0x161A24);
    dark.text = QColor(0xF2F4F9);
    dark.secondaryText = QColor(0xA6AFC3);
    dark.disabledText = QColor(0x7E869A);
    dark.line = QColor(0x2B3242);
    dark.header = QColor(0x1C2130);
    dark.button = QColor(0x2B3242);
    dark.dim = QColor(0x00, 0x00, 0x00, 160);
    return dark;
}

bool isDark = false;

/// For what Qt paints itself.
QPalette widgetPalette() {
    const Palette& palette = colours();
    QPalette inks;
    inks.setColor(QPalette::Window, palette.surface);
    inks.setColor(QPalette::WindowText, palette.text);
    inks.setColor(QPalette::Base, palette.surface);
    inks.setColor(QPalette::Text, palette.text);
    inks.setColor(QPalette::PlaceholderText, palette.secondaryText);
    inks.setColor(QPalette::Button, palette.button);
    inks.setColor(QPalette::ButtonText, palette.text);
    inks.setColor(QPalette::Highlight, palette.focus);
    inks.setColor(QPalette::HighlightedText, palette.focusText);
    return inks;
}

double fontFactor() {
    static const double factor =
        qBound(1.0, qEnvironmentVariable("QUIVER_FONT_SCALE").toDouble(), 2.0);
    return factor;
}

/// The largest font that `fits`. A larger font than normal must not cost words, so the smallest one
/// is taken from the normal size.
template<typename Test>
QFont shrunkFont(int pixels, QFont::Weight weight, const Test& fits) {
    QFont font = lookFont(pixels, weight);
    const int smallest = pixels * 5 / 8;
    while (font.pixelSize() > smallest && !fits(QFontMetrics(font)))
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

int distance(QRgb first, QRgb second) {
    return std::abs(qRed(first) - qRed(second)) + std::abs(qGreen(first) - qGreen(second)) +
           std::abs(qBlue(first) - qBlue(second));
}

bool isGlyph(const QImage& image) {
    // The pixels at an edge are too faint for their colour to be told.
    constexpr int opaque = 240;
    constexpr int sameColour = 24;
    const QRgb glyph = colours().glyph.rgb();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) > opaque && distance(pixel, glyph) > sameColour)
                return false;
        }
    }
    return true;
}

} // namespace

const Palette& colours() {
    static const Palette light = lightPalette();
    static const Palette dark = darkPalette();
    return isDark ? dark : light;
}

/// Every widget hears of another palette, and paints itself.
void useColours(bool dark) {
    isDark = dark;
    QGuiApplication::setPalette(widgetPalette());
}

int scaled(int measure) {
    return qRound(measure * fontFactor());
}

QFont lookFont(int pixels, QFont::Weight weight) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(scaled(pixels));
    font.setWeight(weight);
    return font;
}

QFont fittedFont(const QString& text, int width, int pixels, QFont::Weight weight) {
    // Advances are rounded: a text of just that width may still be cut when it is painted.
    return shrunkFont(pixels, weight, [&](const QFontMetrics& metrics) {
        return metrics.horizontalAdvance(text) < width;
    });
}

QFont fittedFont(const QString& text, const QSize& room, int pixels, QFont::Weight weight) {
    const QRect place(QPoint(), room);
    return shrunkFont(pixels, weight, [&](const QFontMetrics& metrics) {
        return place.contains(metrics.boundingRect(place, Qt::TextWordWrap, text));
    });
}

void paintFitted(QPainter& painter, const QRect& place, Qt::Alignment alignment,
                 const QString& text, int pixels, QFont::Weight weight) {
    painter.setFont(fittedFont(text, place.width(), pixels, weight));
    const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
    painter.drawText(place, int(alignment | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
}

void paintCheckBox(QPainter& painter, const QRect& place, bool checked, bool focused) {
    const Palette& palette = colours();
    const QRectF box = QRectF(place).adjusted(1, 1, -1, -1);
    painter.setPen(QPen(focused ? palette.focusText : palette.secondaryText, 2));
    painter.setBrush(focused ? palette.focusText : palette.surface);
    painter.drawRoundedRect(box, Measure::grid, Measure::grid);
    if (!checked)
        return;
    painter.setPen(
        QPen(palette.focus, box.width() / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const auto at = [&](double x, double y) {
        return box.topLeft() + QPointF(x * box.width(), y * box.height());
    };
    painter.drawPolyline(QPolygonF({at(0.2, 0.52), at(0.42, 0.74), at(0.8, 0.28)}));
}

QPixmap tinted(const QPixmap& picture, const QColor& colour) {
    if (picture.isNull() || !isGlyph(picture.toImage()))
        return picture;
    QPixmap repainted = picture;
    QPainter painter(&repainted);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF(QPointF(), picture.deviceIndependentSize()), colour);
    return repainted;
}

void paintTitle(QPainter& painter, const QRect& bar, const QPixmap& icon, const QString& title) {
    const int margin = 2 * Measure::grid;
    QRect text = bar.adjusted(margin, 0, -margin, 0);
    if (!icon.isNull()) {
        const int size = scaled(Measure::titleIcon);
        const QRect place(text.left(), bar.center().y() - size / 2 + 1, size, size);
        painter.drawPixmap(place, tinted(icon, colours().barText));
        text.setLeft(place.right() + 1 + margin);
    }
    painter.setPen(colours().barText);
    paintFitted(painter, text, Qt::AlignLeft, title, Measure::titleFont, QFont::DemiBold);
}
