// Torch: turns the screen into a lamp. Left and right choose its colour, a tap or Return switches
// it.
#include "ZApplication.h"
#include "oneview.h"

#include <QKeyEvent>
#include <QPainter>
#include <array>

using namespace Qt::StringLiterals;

constexpr std::array<QRgb, 6> colours{0xffffffff, 0xffffe0b2, 0xffff5252,
                                      0xff69f0ae, 0xff64b5f6, 0xffffff00};

class Lamp : public QWidget {
public:
    Lamp() { setFocusPolicy(Qt::StrongFocus); }

    void chooseColour(std::size_t step) {
        chosen_ = (chosen_ + step) % colours.size();
        update();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Right:
            return chooseColour(1);
        case Qt::Key_Left:
            return chooseColour(colours.size() - 1);
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Select:
            return toggle();
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void mousePressEvent(QMouseEvent*) override { toggle(); }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), lit_ ? QColor(colours[chosen_]) : QColor(0x101010));
        const double gap = width() / double(colours.size());
        for (std::size_t i = 0; i < colours.size(); ++i) {
            painter.setPen(QPen(lit_ ? Qt::black : Qt::white, i == chosen_ ? 3 : 1));
            painter.setBrush(QColor(colours[i]));
            painter.drawEllipse(QPointF((double(i) + 0.5) * gap, height() - 22), 9, 9);
        }
    }

private:
    void toggle() {
        lit_ = !lit_;
        update();
    }

    std::size_t chosen_ = 0;
    bool lit_ = true;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* lamp = new Lamp;
    auto* window = new OneView(u"Torch"_s, lamp);
    window->setLeftKey(u"Colour"_s, [lamp] { lamp->chooseColour(1); });
    return window->run();
}
