// City Map: a made-up harbour town. Drag it or use the arrows; plus and minus zoom. The menu goes
// to its places.
#include "Look.h"
#include "ZApplication.h"
#include "ZOptionsMenu.h"
#include "oneview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

struct Place {
    QPointF at;
    QString name;
    QRgb colour;
};

struct Street {
    QPointF from;
    QPointF to;
    QString name;
};

constexpr double townSize = 1000;

const std::array<Place, 6> places{{{{430, 470}, u"Town Hall"_s, 0xffc62828},
                                   {{735, 645}, u"Old Harbour"_s, 0xff1565c0},
                                   {{240, 250}, u"Linden Park"_s, 0xff2e7d32},
                                   {{610, 260}, u"Central Station"_s, 0xff6a1b9a},
                                   {{230, 760}, u"Hill Museum"_s, 0xff6d4c41},
                                   {{860, 180}, u"Lighthouse"_s, 0xffef6c00}}};

const std::array<Street, 4> avenues{{{{0, 420}, {1000, 380}, u"Mill Avenue"_s},
                                     {{0, 690}, {560, 640}, u"Weaver Street"_s},
                                     {{340, 0}, {360, 1000}, u"Castle Street"_s},
                                     {{560, 0}, {540, 660}, u"Station Road"_s}}};

class Map : public QWidget {
public:
    Map() { setFocusPolicy(Qt::StrongFocus); }

    void visit(std::size_t place) {
        visited_ = place;
        lookAt(places[place].at);
    }

    void visitNext() { visit((visited_ + 1) % places.size()); }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const double step = 40 / zoom_;
        switch (event->key()) {
        case Qt::Key_Left:
            return lookAt(centre_ - QPointF(step, 0));
        case Qt::Key_Right:
            return lookAt(centre_ + QPointF(step, 0));
        case Qt::Key_Up:
            return lookAt(centre_ - QPointF(0, step));
        case Qt::Key_Down:
            return lookAt(centre_ + QPointF(0, step));
        case Qt::Key_Plus:
            return zoomBy(1.25);
        case Qt::Key_Minus:
            return zoomBy(0.8);
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void mousePressEvent(QMouseEvent* event) override { grabbed_ = event->position(); }

    void mouseMoveEvent(QMouseEvent* event) override {
        lookAt(centre_ - (event->position() - grabbed_) / zoom_);
        grabbed_ = event->position();
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), QColor(0xf2efe6));
        painter.translate(width() / 2.0, height() / 2.0);
        painter.scale(zoom_, zoom_);
        painter.translate(-centre_);
        drawGround(painter);
        for (const auto& [colour, width] :
             {std::pair{QColor(0xc9bfa8), 17}, {QColor(0xffe39a), 13}}) {
            painter.setPen(QPen(colour, width));
            for (const Street& street : avenues)
                painter.drawLine(street.from, street.to);
        }
        drawLabels(painter);
    }

private:
    void lookAt(QPointF at) {
        centre_ = {std::clamp(at.x(), 0.0, townSize), std::clamp(at.y(), 0.0, townSize)};
        update();
    }

    void zoomBy(double factor) {
        zoom_ = std::clamp(zoom_ * factor, 0.4, 2.5);
        update();
    }

    static void drawGround(QPainter& painter) {
        // Side streets first: parks and water lie over them.
        painter.setPen(QPen(Qt::white, 6));
        for (double at = 30; at < townSize; at += 62) {
            painter.drawLine(QPointF(at, 0), QPointF(at + 25, townSize));
            painter.drawLine(QPointF(0, at + 15), QPointF(townSize, at - 20));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xbfdfa5));
        painter.drawRoundedRect(QRectF(110, 160, 210, 190), 40, 40);
        painter.drawEllipse(QPointF(230, 770), 95, 75);
        painter.drawRoundedRect(QRectF(610, 440, 150, 90), 20, 20);
        QPainterPath sea(QPointF(470, townSize));
        sea.cubicTo(520, 640, 760, 740, 790, 560);
        sea.cubicTo(800, 420, 930, 420, 890, 200);
        sea.cubicTo(880, 110, 940, 60, townSize, 0);
        sea.lineTo(townSize, townSize);
        painter.setBrush(QColor(0x9fcbe8));
        painter.drawPath(sea);
        QPainterPath river(QPointF(-20, 560));
        river.cubicTo(250, 480, 320, 640, 760, 720);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(0x9fcbe8), 34));
        painter.drawPath(river);
    }

    // Names keep their size on the screen, however far the map is zoomed.
    void drawLabels(QPainter& painter) const {
        const QTransform view = painter.transform();
        QFont small = font();
        small.setPixelSize(scaled(10));
        painter.setFont(small);
        painter.setPen(QColor(0x5d5340));
        for (const Street& street : avenues) {
            const QLineF line = view.map(QLineF(street.from, street.to));
            painter.resetTransform();
            painter.translate(line.pointAt(0.3));
            painter.rotate(-line.angle());
            painter.drawText(QRectF(-60, -8, 120, 16), Qt::AlignCenter, street.name);
        }
        painter.resetTransform();
        small.setBold(true);
        painter.setFont(small);
        for (const Place& place : places) {
            const QPointF at = view.map(place.at);
            painter.setPen(QPen(Qt::white, 2));
            painter.setBrush(QColor(place.colour));
            painter.drawEllipse(at, 6, 6);
            QRectF label = painter.fontMetrics().boundingRect(place.name).adjusted(-4, -1, 4, 1);
            label.moveCenter(at + QPointF(0, 17));
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(255, 255, 255, 220));
            painter.drawRoundedRect(label, 4, 4);
            painter.setPen(QColor(place.colour));
            painter.drawText(label, Qt::AlignCenter, place.name);
        }
    }

    QPointF centre_ = places[0].at;
    QPointF grabbed_;
    double zoom_ = 0.6;
    std::size_t visited_ = 0;
};

ZOptionsMenu* makeMenu(Map* map) {
    constexpr int menuSkin = 55;
    auto* menu = new ZOptionsMenu(QRect(), map, nullptr, 0, menuSkin, true);
    menu->insertItem(u"Next place"_s, nullptr, QPixmap(), true, 0, 0);
    menu->connectItem(0, map, [map] { map->visitNext(); });
    for (int place = 0; place < int(places.size()); ++place) {
        const int id = place + 1;
        menu->insertItem(places[place].name, nullptr, QPixmap(), true, id, id);
        menu->connectItem(id, map, [map, place] { map->visit(place); });
    }
    return menu;
}

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* map = new Map;
    auto* window = new OneView(u"City Map"_s, map);
    window->setLeftKey(u"Places"_s, makeMenu(map), u"Go"_s, u"Close"_s);
    return window->run();
}
