#pragma once

#include <QObject>
#include <QTimer>

class QKeyEvent;
class QLineEdit;

/// Types letters into a line of text by the digits of a keypad. A digit pressed again at once goes
/// on to its next letter, which is shown as chosen until another key or a pause takes it; held, it
/// types itself. The star goes through the ways of writing, the hash deletes.
class KeypadInput : public QObject {
    Q_OBJECT

public:
    explicit KeypadInput(QLineEdit* edit);

    /// The way of writing, as it is shown: "abc", "Abc", "ABC" or "123".
    QString mode() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool takeKey(const QKeyEvent& event);
    void typeDigit(int digit, bool isHeld);
    void show(const QString& letter);
    void take();

    QLineEdit* m_edit;
    QTimer m_pause;
    int m_mode = 0;
    int m_digit = -1; ///< whose letter is under the finger; -1 for none
    int m_letter = 0;
};
