// Sudoku: the arrows or a tap choose a cell, 1 to 9 fill it, 0 empties it. Cells that contradict
// each other are red.
#include "Look.h"
#include "ZApplication.h"
#include "oneview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRandomGenerator>
#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

constexpr int side = 9;
constexpr int box = 3;
constexpr int blanks = 42;
constexpr QColor wrong(0xef, 0x53, 0x50);

class Grid : public QWidget {
public:
    Grid() {
        setFocusPolicy(Qt::StrongFocus);
        newGame();
    }

    // A solution whose digits, rows and columns change places, with some of its cells emptied.
    void newGame() {
        std::array<int, side> digits;
        std::iota(digits.begin(), digits.end(), 1);
        shuffle(digits);
        const auto row = shuffledLines();
        const auto column = shuffledLines();
        for (int cell = 0; cell < side * side; ++cell) {
            const int y = row[cell / side];
            const int x = column[cell % side];
            cells_[cell] = digits[(y * box + y / box + x) % side];
        }
        std::array<int, side * side> order;
        std::iota(order.begin(), order.end(), 0);
        shuffle(order);
        given_.fill(true);
        for (int i = 0; i < blanks; ++i) {
            given_[order[i]] = false;
            cells_[order[i]] = 0;
        }
        update();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        if (key >= Qt::Key_0 && key <= Qt::Key_9)
            return fill(key - Qt::Key_0);
        switch (key) {
        case Qt::Key_Left:
            return choose(x_ - 1, y_);
        case Qt::Key_Right:
            return choose(x_ + 1, y_);
        case Qt::Key_Up:
            return choose(x_, y_ - 1);
        case Qt::Key_Down:
            return choose(x_, y_ + 1);
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            return fill(0);
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void mousePressEvent(QMouseEvent* event) override {
        const QPointF at = (event->position() - corner()) / cellSize();
        if (QRectF(0, 0, side, side).contains(at))
            choose(int(at.x()), int(at.y()));
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const Palette& palette = colours();
        painter.fillRect(rect(), palette.surface);
        painter.translate(corner());
        const double size = cellSize();
        for (int cell = 0; cell < side * side; ++cell)
            paintCell(painter, cell, size);
        for (int i = 0; i <= side; ++i) {
            const bool isBox = i % box == 0;
            painter.setPen(QPen(isBox ? palette.tabBar : palette.tabText, isBox ? 2 : 1));
            painter.drawLine(QPointF(i * size, 0), QPointF(i * size, side * size));
            painter.drawLine(QPointF(0, i * size), QPointF(side * size, i * size));
        }
        painter.setPen(palette.secondaryText);
        painter.drawText(QRectF(0, side * size, side * size, 32), Qt::AlignCenter, status());
    }

private:
    template<typename List>
    static void shuffle(List& list) {
        std::shuffle(list.begin(), list.end(), *QRandomGenerator::global());
    }

    // Rows (or columns) in an order that keeps every three that share boxes together.
    static std::array<int, side> shuffledLines() {
        std::array<int, box> bands{0, 1, 2};
        shuffle(bands);
        std::array<int, side> lines;
        for (int band = 0; band < box; ++band) {
            std::array<int, box> inBand{0, 1, 2};
            shuffle(inBand);
            for (int i = 0; i < box; ++i)
                lines[band * box + i] = bands[band] * box + inBand[i];
        }
        return lines;
    }

    double cellSize() const { return std::min(width() - 16, height() - 40) / double(side); }

    QPointF corner() const { return {(width() - side * cellSize()) / 2, 8}; }

    void choose(int x, int y) {
        x_ = (x + side) % side;
        y_ = (y + side) % side;
        update();
    }

    void fill(int digit) {
        if (!given_[y_ * side + x_])
            cells_[y_ * side + x_] = digit;
        update();
    }

    bool contradicts(int cell) const {
        const int x = cell % side;
        const int y = cell / side;
        for (int other = 0; other < side * side; ++other) {
            const int u = other % side;
            const int v = other / side;
            const bool sees = u == x || v == y || (u / box == x / box && v / box == y / box);
            if (other != cell && sees && cells_[cell] != 0 && cells_[other] == cells_[cell])
                return true;
        }
        return false;
    }

    QString status() const {
        const auto left = std::count(cells_.begin(), cells_.end(), 0);
        if (left > 0)
            return u"Empty cells: %1"_s.arg(left);
        for (int cell = 0; cell < side * side; ++cell)
            if (contradicts(cell))
                return u"Not right yet"_s;
        return u"Solved!"_s;
    }

    void paintCell(QPainter& painter, int cell, double size) const {
        const QRectF place((cell % side) * size, (cell / side) * size, size, size);
        const bool chosen = cell == y_ * side + x_;
        const Palette& palette = colours();
        const QColor own = given_[cell] ? palette.line : palette.surface;
        const QColor ground = chosen ? palette.focus : own;
        painter.fillRect(place, ground);
        if (cells_[cell] == 0)
            return;
        QFont font = this->font();
        font.setPixelSize(std::max(1, int(size * 0.6)));
        font.setBold(given_[cell]);
        painter.setFont(font);
        const QColor ink = chosen ? palette.focusText : palette.text;
        painter.setPen(contradicts(cell) ? wrong : ink);
        painter.drawText(place, Qt::AlignCenter, QString::number(cells_[cell]));
        painter.setFont(this->font());
    }

    std::array<int, side * side> cells_{};
    std::array<bool, side * side> given_{};
    int x_ = side / 2;
    int y_ = side / 2;
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* grid = new Grid;
    auto* window = new OneView(u"Sudoku"_s, grid);
    window->setLeftKey(u"New"_s, [grid] { grid->newGame(); });
    return window->run();
}
