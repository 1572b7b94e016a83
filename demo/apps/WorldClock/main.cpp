// World Clock: the time in four cities, on dials that are dark at night.
#include "Look.h"
#include "ZApplication.h"
#include "oneview.h"

#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <QTimeZone>
#include <QTimer>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

struct City {
    QString name;
    QByteArray zone;
    int standardOffset; // in seconds, for a phone without a time zone database
};

const std::array<City, 4> cities{{{u"Lisbon"_s, "Europe/Lisbon", 0},
                                  {u"Nairobi"_s, "Africa/Nairobi", 3 * 3600},
                                  {u"Tokyo"_s, "Asia/Tokyo", 9 * 3600},
                                  {u"Montréal"_s, "America/Montreal", -5 * 3600}}};

constexpr int lineHeight = 18;

class Clocks : public QWidget {
public:
    Clocks() {
        timer_.callOnTimeout(this, [this] { update(); });
        timer_.start(1000);
    }

    void switchFormat() {
        halfDay_ = !halfDay_;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), colours().surface);
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (std::size_t i = 0; i < cities.size(); ++i) {
            const QTimeZone zone(cities[i].zone);
            const QDateTime local = zone.isValid() ? now.toTimeZone(zone)
                                                   : now.toOffsetFromUtc(cities[i].standardOffset);
            const QSizeF cell(width() / 2.0, height() / 2.0);
            drawCity(painter, QRectF(QPointF(i % 2 * cell.width(), i / 2 * cell.height()), cell),
                     cities[i].name, local);
        }
    }

private:
    void drawCity(QPainter& painter, const QRectF& cell, const QString& name,
                  const QDateTime& local) const {
        const QTime time = local.time();
        const bool day = time.hour() >= 7 && time.hour() < 19;
        const QColor ink = day ? QColor(0x10243a) : QColor(0xe8eef5);

        painter.save();
        const double room = cell.height() - 2 * scaled(lineHeight);
        painter.translate(cell.center().x(), cell.top() + room / 2);
        const double radius = std::min(room, cell.width()) * 0.45;
        painter.scale(radius / 100, radius / 100);
        painter.setPen(QPen(colours().tabBar, 6));
        painter.setBrush(day ? QColor(0xf7f3e3) : QColor(0x1c3a5c));
        painter.drawEllipse(QPointF(0, 0), 100, 100);
        for (int hour = 0; hour < 12; ++hour) {
            painter.setPen(QPen(ink, hour % 3 == 0 ? 6 : 3));
            painter.drawLine(0, -88, 0, hour % 3 == 0 ? -74 : -80);
            painter.rotate(30);
        }
        const double seconds = time.hour() * 3600 + time.minute() * 60 + time.second();
        drawHand(painter, seconds / 120, 50, QPen(ink, 9));
        drawHand(painter, seconds / 10, 74, QPen(ink, 6));
        drawHand(painter, seconds * 6, 80, QPen(colours().accent, 3));
        painter.restore();

        const QString format = halfDay_ ? u"ddd h:mm AP"_s : u"ddd HH:mm"_s;
        painter.setPen(colours().text);
        drawLine(painter, cell, 2, Measure::nameFont, name);
        painter.setPen(colours().secondaryText);
        drawLine(painter, cell, 1, Measure::secondFont, QLocale::c().toString(local, format));
    }

    // One of the lines below the dial, counted from the lowest one.
    static void drawLine(QPainter& painter, const QRectF& cell, int line, int pixels,
                         const QString& text) {
        const int height = scaled(lineHeight);
        const QRectF place(cell.left(), cell.bottom() - line * height, cell.width(), height);
        paintFitted(painter, place.toRect(), Qt::AlignHCenter, text, pixels, QFont::Normal);
    }

    static void drawHand(QPainter& painter, double degrees, int length, QPen pen) {
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        painter.save();
        painter.rotate(degrees);
        painter.drawLine(0, 10, 0, -length);
        painter.restore();
    }

    QTimer timer_;
    bool halfDay_ = false;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* clocks = new Clocks;
    auto* window = new OneView(u"World Clock"_s, clocks);
    window->setLeftKey(u"12/24 h"_s, [clocks] { clocks->switchFormat(); });
    return window->run();
}
