#include "ZLineEdit.h"

#include "KeypadInput.h"
#include "Look.h"
#include "PhoneSettings.h"

#include <QPainter>
#include <QValidator>

namespace {

/// Mends what it is given, so that everything can be typed and pasted.
class OneLine : public QValidator {
public:
    OneLine(int bytes, QObject* parent) : QValidator(parent), m_bytes(bytes) {}

    State validate(QString& text, int& cursor) const override {
        for (QChar& c : text) {
            if (c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
                c.category() == QChar::Separator_Paragraph)
                c = ' ';
        }
        while (text.toUtf8().size() > m_bytes)
            text.chop(text.back().isLowSurrogate() ? 2 : 1);
        cursor = int(qMin<qsizetype>(cursor, text.size()));
        return Acceptable;
    }

private:
    int m_bytes;
};

} // namespace

ZLineEdit::ZLineEdit(const QString& text, QWidget* parent, int) : QLineEdit(text, parent) {
    setFrame(false);
    setFont(lookFont(Measure::dialogFont));
    const int margin = 2 * Measure::grid;
    setTextMargins(margin, 0, margin, 0);
    QPalette ground; // nothing more of it, as the rest changes with the colours
    ground.setColor(QPalette::Base, Qt::transparent);
    setPalette(ground);
    if (!hasKeypad())
        return;
    m_keypad = new KeypadInput(this);
    const int modeWidth = fontMetrics().horizontalAdvance("ABC");
    setTextMargins(margin, 0, 2 * margin + modeWidth, 0);
}

void ZLineEdit::setMaxBytes(int bytes) {
    m_maxBytes = bytes;
    auto* oneLine = new OneLine(bytes, this);
    QString mended = text();
    int cursor = 0;
    oneLine->validate(mended, cursor);
    setText(mended);
    setValidator(oneLine);
    connect(this, &QLineEdit::textChanged, this, qOverload<>(&QWidget::update));
}

/// No further letter of any alphabet fits for sure.
bool ZLineEdit::isFull() const {
    return m_maxBytes > 0 && text().toUtf8().size() > m_maxBytes - 2;
}

QSize ZLineEdit::sizeHint() const {
    return QSize(QLineEdit::sizeHint().width(), scaled(Measure::button));
}

void ZLineEdit::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor frame = hasFocus() ? colours().focus : colours().line;
    painter.setPen(QPen(isFull() ? colours().accent : frame, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), Measure::grid, Measure::grid);
    if (m_keypad) {
        painter.setPen(colours().secondaryText);
        painter.drawText(rect().adjusted(0, 0, -2 * Measure::grid, 0),
                         Qt::AlignRight | Qt::AlignVCenter, m_keypad->mode());
    }
    painter.end();
    QLineEdit::paintEvent(event);
}
