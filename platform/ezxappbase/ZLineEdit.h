#pragma once

#include <QLineEdit>

class KeypadInput;

/// A line of text to be edited, in the phone's look. Where the phone has a keypad, letters are
/// typed by its digits.
class ZLineEdit : public QLineEdit {
    Q_OBJECT

public:
    /// `widgetClass` is the phone's own.
    ZLineEdit(const QString& text, QWidget* parent, int widgetClass);

    QSize sizeHint() const override;

    /// From then on the text has no line breaks and control characters, which become blanks, and at
    /// most `bytes` of UTF-8; what does not fit is cut off. The frame shows when it is full.
    void setMaxBytes(int bytes);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isFull() const;

    int m_maxBytes = 0; ///< 0 where there is no limit
    KeypadInput* m_keypad = nullptr;
};
