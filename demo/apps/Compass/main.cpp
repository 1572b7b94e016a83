// Компас: a compass card. Without a sensor it is set by hand: drag it or use the arrows.
#include "Look.h"
#include "ZApplication.h"
#include "oneview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPolygonF>

using namespace Qt::StringLiterals;

class Compass : public QWidget {
public:
    Compass() { setFocusPolicy(Qt::StrongFocus); }

    void turnTo(int bearing) {
        bearing_ = (bearing % 360 + 360) % 360;
        update();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Left:
            return turnTo(bearing_ - 5);
        case Qt::Key_Right:
            return turnTo(bearing_ + 5);
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void mousePressEvent(QMouseEvent* event) override { grabbed_ = angleAt(event->position()); }

    void mouseMoveEvent(QMouseEvent* event) override {
        const double angle = angleAt(event->position());
        turnTo(bearing_ + qRound(angle - grabbed_));
        grabbed_ = angle;
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), colours().surface);
        painter.setPen(colours().text);
        const QStringList winds{u"С"_s, u"СВ"_s, u"В"_s, u"ЮВ"_s, u"Ю"_s, u"ЮЗ"_s, u"З"_s, u"СЗ"_s};
        painter.drawText(rect().adjusted(0, 0, 0, -8), Qt::AlignHCenter | Qt::AlignBottom,
                         u"%1°  %2"_s.arg(bearing_).arg(winds[(bearing_ + 22) % 360 / 45]));

        const double radius = std::min(width(), height() - 40) * 0.45;
        painter.translate(width() / 2.0, (height() - 24) / 2.0);
        painter.scale(radius / 100, radius / 100);
        painter.rotate(-bearing_);
        painter.setPen(QPen(QColor(0x00796b), 5));
        painter.setBrush(Qt::white);
        painter.drawEllipse(QPointF(0, 0), 98, 98);
        for (int mark = 0; mark < 72; ++mark) {
            painter.setPen(QPen(QColor(0x004d40), mark % 9 == 0 ? 2.5 : 1));
            painter.drawLine(0, -92, 0, mark % 9 == 0 ? -82 : -87);
            if (mark % 18 == 0)
                painter.drawText(QRectF(-15, -82, 30, 22), Qt::AlignCenter, winds[mark / 9]);
            painter.rotate(5);
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xd32f2f));
        painter.drawPolygon(QPolygonF{{-13, 0}, {0, -60}, {13, 0}});
        painter.setBrush(QColor(0x90a4ae));
        painter.drawPolygon(QPolygonF{{-13, 0}, {0, 60}, {13, 0}});
        painter.setBrush(QColor(0x004d40));
        painter.drawEllipse(QPointF(0, 0), 6, 6);
        painter.rotate(bearing_);
        painter.drawPolygon(QPolygonF{{-8, -104}, {8, -104}, {0, -90}});
    }

private:
    // Clockwise degrees would turn the card against the finger; a line's angle runs the other way.
    double angleAt(QPointF at) const { return QLineF(rect().center(), at).angle(); }

    int bearing_ = 0;
    double grabbed_ = 0;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* compass = new Compass;
    auto* window = new OneView(u"Компас"_s, compass, u"Выход"_s);
    window->setLeftKey(u"Север"_s, [compass] { compass->turnTo(0); });
    return window->run();
}
