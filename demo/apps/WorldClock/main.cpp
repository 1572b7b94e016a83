// World Clock: the time in four cities, on dials that are dark at night.
#include "phonewindow.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <QTimeZone>
#include <QTimer>
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
        painter.fillRect(rect(), QColor(0x10243a));
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
        painter.translate(cell.center().x(), cell.top() + cell.height() * 0.38);
        const double radius = cell.height() * 0.33;
        painter.scale(radius / 100, radius / 100);
        painter.setPen(QPen(QColor(0x4fc3f7), 6));
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
        drawHand(painter, seconds * 6, 80, QPen(QColor(0xff7043), 3));
        painter.restore();

        painter.setPen(Qt::white);
        painter.drawText(cell.adjusted(0, cell.height() * 0.73, 0, 0),
                         Qt::AlignHCenter | Qt::AlignTop, name);
        painter.setPen(QColor(0x9fb8d0));
        const QString format = halfDay_ ? u"ddd h:mm AP"_s : u"ddd HH:mm"_s;
        painter.drawText(cell.adjusted(0, cell.height() * 0.84, 0, 0),
                         Qt::AlignHCenter | Qt::AlignTop, QLocale::c().toString(local, format));
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
    QApplication app(argc, argv);
    auto* clocks = new Clocks;
    phone::Window window(u"World Clock"_s, QColor(0x1565c0), clocks);
    window.setLeftKey(u"12/24 h"_s, [clocks] { clocks->switchFormat(); });
    window.present();
    return app.exec();
}
