// Calculator: four functions. The arrows choose a key on the screen and Return presses it; digits
// and operators may be typed as well.
#include "Look.h"
#include "ZApplication.h"
#include "oneview.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <cmath>

using namespace Qt::StringLiterals;

class Calculator : public QWidget {
public:
    Calculator() {
        setStyleSheet(keyStyle());
        display_->setFont(lookFont(28));
        display_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto* grid = new QGridLayout(this);
        grid->setContentsMargins(4, 0, 4, 4);
        grid->setSpacing(4);
        grid->addWidget(display_, 0, 0, 1, 4);

        // Within a group the arrows move the focus by row and column.
        auto* keys = new QButtonGroup(this);
        keys->setExclusive(false);
        const QString faces = u"C±%÷789×456−123+0.⌫="_s;
        for (int i = 0; i < faces.size(); ++i) {
            auto* key = new QPushButton(faces[i]);
            key->setProperty("operation", i % 4 == 3);
            key->setFont(lookFont(20));
            key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
            key->setAutoDefault(true);
            keys->addButton(key);
            grid->addWidget(key, 1 + i / 4, i % 4);
            setFocusProxy(key);
        }
        connect(keys, &QButtonGroup::buttonClicked, this,
                [this](QAbstractButton* key) { press(key->text()[0]); });
    }

    void press(QChar key) {
        const double value = display_->text().toDouble();
        if (key.isDigit() || key == u'.')
            type(key);
        else if (key == u'C')
            clear();
        else if (key == u'⌫')
            erase();
        else if (key == u'±')
            enter(0 - value);
        else if (key == u'%')
            enter(value / 100, false);
        else
            operate(key, value);
    }

protected:
    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::PaletteChange && styleSheet() != keyStyle())
            setStyleSheet(keyStyle());
        QWidget::changeEvent(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const QString typed = u"0123456789.,+-*/%=\b"_s;
        const QString meant = u"0123456789..+−×÷%=⌫"_s;
        const qsizetype at = event->text().isEmpty() ? -1 : typed.indexOf(event->text());
        at < 0 ? QWidget::keyPressEvent(event) : press(meant[at]);
    }

private:
    static QString keyStyle() {
        const Palette& palette = colours();
        return u"QPushButton {background: %1; color: %2; border: none; border-radius: %3px;}"
               "QPushButton[operation=true] {background: %4; color: %5;}"
               "QPushButton:focus {background: %6; color: %7;}"
               "QPushButton:pressed {background: %8; color: %2;}"_s.arg(
                   palette.button.name(), palette.text.name(), QString::number(Measure::radius),
                   palette.tabBar.name(), palette.barText.name(), palette.focus.name(),
                   palette.focusText.name(), palette.accent.name());
    }

    void type(QChar key) {
        const QString text = typing_ ? display_->text() : u"0"_s;
        typing_ = operand_ = true;
        if (key == u'.' ? !text.contains(key) : text.size() < 12)
            display_->setText(text == u"0"_s && key != u'.' ? QString(key) : text + key);
    }

    void erase() {
        bool number = false;
        const QString shorter = display_->text().chopped(1);
        shorter.toDouble(&number);
        display_->setText(typing_ && number ? shorter : u"0"_s);
        typing_ = operand_ = true;
    }

    void clear() {
        total_ = 0;
        pending_ = u'=';
        typing_ = operand_ = false;
        display_->setText(u"0"_s);
    }

    void enter(double value, bool editable = true) {
        typing_ = typing_ && editable;
        operand_ = true;
        display_->setText(QString::number(value, 'g', 10));
    }

    // A second operator in a row only replaces the first one.
    void operate(QChar key, double value) {
        if (operand_ || key == u'=')
            total_ = combined(value);
        if (!std::isfinite(total_)) {
            clear();
            display_->setText(u"Error"_s);
            return;
        }
        enter(total_);
        pending_ = key;
        typing_ = operand_ = false;
    }

    double combined(double value) const {
        switch (pending_.unicode()) {
        case u'+':
            return total_ + value;
        case u'−':
            return total_ - value;
        case u'×':
            return total_ * value;
        case u'÷':
            return total_ / value;
        default:
            return value;
        }
    }

    QLabel* display_ = new QLabel(u"0"_s);
    double total_ = 0;
    QChar pending_ = u'=';
    bool typing_ = false;  // the next digit goes behind the number instead of replacing it
    bool operand_ = false; // the number has yet to be taken into the total
};

int main(int argc, char** argv) {
    ZApplication app(argc, argv, ZApplication::GuiClient);
    auto* calculator = new Calculator;
    auto* window = new OneView(u"Calculator"_s, calculator);
    window->setLeftKey(u"Clear"_s, [calculator] { calculator->press(u'C'); });
    return window->run();
}
