// Dice: one to six dice. Return or a tap throws them, up and down change their number.
#include "ZApplication.h"
#include "oneview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRandomGenerator>
#include <QTimer>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

constexpr std::size_t most = 6;

class Table : public QWidget {
public:
    Table() {
        setFocusPolicy(Qt::StrongFocus);
        faces_.fill(1);
        timer_.setInterval(70);
        timer_.callOnTimeout(this, [this] { tumble(); });
        roll();
    }

    void roll() {
        tumblesLeft_ = 8;
        timer_.start();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Up:
            return setCount(count_ % most + 1);
        case Qt::Key_Down:
            return setCount((count_ + most - 2) % most + 1);
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Select:
            return roll();
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void mousePressEvent(QMouseEvent*) override { roll(); }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), QColor(0x1b5e3a));
        const std::size_t across = count_ == 1 ? 1 : 2;
        const std::size_t down = (count_ + across - 1) / across;
        const double room = height() - 40;
        const double side =
            std::min({room / 2, room / double(down), width() / double(across)}) * 0.86;
        for (std::size_t i = 0; i < count_; ++i) {
            const bool alone = i + 1 == count_ && count_ % 2 == 1;
            const double x = alone ? 0.5 : (double(i % 2) + 0.5) / 2;
            const double y = (double(i / across) + 0.5) / double(down);
            drawDie(painter, {x * width(), y * room + 6}, side, faces_[i]);
        }
        painter.setPen(Qt::white);
        const int sum = std::accumulate(faces_.begin(), faces_.begin() + count_, 0);
        painter.drawText(rect().adjusted(0, 0, 0, -8), Qt::AlignHCenter | Qt::AlignBottom,
                         timer_.isActive() ? u"…"_s
                                           : u"Total: %1    Dice ▲▼: %2"_s.arg(sum).arg(count_));
    }

private:
    void setCount(std::size_t count) {
        count_ = count;
        roll();
    }

    void tumble() {
        for (int& face : faces_)
            face = QRandomGenerator::global()->bounded(1, 7);
        if (--tumblesLeft_ == 0)
            timer_.stop();
        update();
    }

    static void drawDie(QPainter& painter, QPointF centre, double side, int face) {
        painter.save();
        painter.translate(centre);
        painter.scale(side / 100, side / 100);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xfdfaf2));
        painter.drawRoundedRect(QRectF(-50, -50, 100, 100), 18, 18);
        painter.setBrush(QColor(0xc62828));
        const auto pips = [&](double x, double y) {
            painter.drawEllipse(QPointF(x, y), 10, 10);
            painter.drawEllipse(QPointF(-x, -y), 10, 10);
        };
        if (face % 2 == 1)
            pips(0, 0);
        if (face >= 2)
            pips(27, -27);
        if (face >= 4)
            pips(27, 27);
        if (face == 6)
            pips(27, 0);
        painter.restore();
    }

    std::array<int, most> faces_;
    std::size_t count_ = 2;
    int tumblesLeft_ = 0;
    QTimer timer_;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* table = new Table;
    auto* window = new OneView(u"Dice"_s, table);
    window->setLeftKey(u"Throw"_s, [table] { table->roll(); });
    return window->run();
}
