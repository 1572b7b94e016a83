// Block Drop: falling blocks, steered with the arrows or by taps on the left, middle and right of
// the well.
#include "Look.h"
#include "ZApplication.h"
#include "oneview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRandomGenerator>
#include <QTimer>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

constexpr int columns = 10;
constexpr int rows = 20;
using Piece = std::array<QPoint, 4>;

// Every piece around its pivot, which comes first.
constexpr std::array<Piece, 7> shapes{{{{{0, 0}, {-1, 0}, {1, 0}, {2, 0}}},
                                       {{{0, 0}, {1, 0}, {0, 1}, {1, 1}}},
                                       {{{0, 0}, {-1, 0}, {1, 0}, {0, 1}}},
                                       {{{0, 0}, {-1, 0}, {1, 0}, {1, 1}}},
                                       {{{0, 0}, {-1, 0}, {1, 0}, {-1, 1}}},
                                       {{{0, 0}, {-1, 0}, {0, 1}, {1, 1}}},
                                       {{{0, 0}, {1, 0}, {0, 1}, {-1, 1}}}}};
constexpr std::array<QRgb, 7> pieceColours{0xff26c6da, 0xffffca28, 0xffab47bc, 0xffff7043,
                                           0xff5c7cfa, 0xffef5350, 0xff66bb6a};

class Board : public QWidget {
public:
    Board() {
        setFocusPolicy(Qt::StrongFocus);
        timer_.callOnTimeout(this, [this] { descend(); });
        newGame();
    }

    void pauseOrRestart() {
        if (over_)
            newGame();
        else if (timer_.isActive())
            timer_.stop();
        else
            timer_.start();
        update();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Left:
            return steer(-1);
        case Qt::Key_Right:
            return steer(1);
        case Qt::Key_Up:
            return turn();
        case Qt::Key_Down:
            return descend();
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void mousePressEvent(QMouseEvent* event) override {
        const int third = int(event->position().x()) * 3 / (columns * cell());
        third == 1 ? turn() : steer(third < 1 ? -1 : 1);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), colours().surface);
        const QRect well(0, 0, columns * cell(), height());
        painter.fillRect(well, QColor(0x0f1124));
        const auto drawCell = [&](QPoint at, int shape) {
            const QRect box(at.x() * cell(), at.y() * cell(), cell() - 1, cell() - 1);
            painter.fillRect(box, QColor(pieceColours[shape]));
        };
        for (int y = 0; y < rows; ++y)
            for (int x = 0; x < columns; ++x)
                if (cells_[y][x] != 0)
                    drawCell({x, y}, cells_[y][x] - 1);
        for (int i = 0; i < 4; ++i) {
            drawCell(position_ + piece_[i], shape_);
            drawCell(QPoint(columns + 3, 3) + shapes[next_][i], next_);
        }
        painter.setPen(colours().text);
        painter.setFont(lookFont(Measure::secondFont));
        const QRect panel = rect().adjusted(well.width() + 12, 12, -8, 0);
        const QString figures = u"Next\n\n\n\nScore\n%1\nLines\n%2\nLevel\n%3"_s;
        painter.drawText(panel, figures.arg(score_).arg(lines_).arg(level()));
        if (!timer_.isActive()) {
            painter.fillRect(well, colours().dim);
            painter.setPen(colours().barText);
            painter.drawText(well, Qt::AlignCenter, over_ ? u"Game over"_s : u"Paused"_s);
        }
    }

private:
    int cell() const { return height() / rows; }

    int level() const { return 1 + lines_ / 10; }

    void newGame() {
        cells_ = {};
        lines_ = score_ = 0;
        over_ = false;
        next_ = QRandomGenerator::global()->bounded(int(shapes.size()));
        spawn();
    }

    void spawn() {
        shape_ = next_;
        next_ = QRandomGenerator::global()->bounded(int(shapes.size()));
        piece_ = shapes[shape_];
        position_ = {columns / 2 - 1, 0};
        over_ = !fits(piece_, position_);
        over_ ? timer_.stop() : timer_.start(std::max(80, 600 - 60 * (level() - 1)));
    }

    bool fits(const Piece& piece, QPoint at) const {
        return std::ranges::all_of(piece, [&](QPoint part) {
            const QPoint p = at + part;
            return p.x() >= 0 && p.x() < columns && p.y() < rows &&
                   (p.y() < 0 || cells_[p.y()][p.x()] == 0);
        });
    }

    bool tryMove(const Piece& piece, QPoint at) {
        if (!timer_.isActive() || !fits(piece, at))
            return false;
        piece_ = piece;
        position_ = at;
        update();
        return true;
    }

    void steer(int direction) { tryMove(piece_, position_ + QPoint(direction, 0)); }

    void turn() {
        Piece turned;
        std::ranges::transform(piece_, turned.begin(),
                               [](QPoint p) { return QPoint(-p.y(), p.x()); });
        tryMove(turned, position_);
    }

    void descend() {
        if (!timer_.isActive() || tryMove(piece_, position_ + QPoint(0, 1)))
            return;
        for (QPoint part : piece_)
            if (const QPoint p = position_ + part; p.y() >= 0)
                cells_[p.y()][p.x()] = shape_ + 1;
        // Full rows move to the front, where they become the empty rows on top.
        const auto kept = std::ranges::stable_partition(
            cells_, [](const auto& row) { return std::ranges::count(row, 0) == 0; });
        const int full = int(kept.begin() - cells_.begin());
        std::fill(cells_.begin(), kept.begin(), Row{});
        lines_ += full;
        score_ += 10 + 100 * full * full;
        spawn();
        update();
    }

    using Row = std::array<int, columns>;
    std::array<Row, rows> cells_{};
    Piece piece_{};
    QPoint position_;
    int shape_ = 0;
    int next_ = 0;
    int lines_ = 0;
    int score_ = 0;
    bool over_ = false;
    QTimer timer_;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* board = new Board;
    auto* window = new OneView(u"Block Drop"_s, board);
    window->setLeftKey(u"Pause"_s, [board] { board->pauseOrRestart(); });
    return window->run();
}
