#include "KeypadInput.h"

#include "Keypad.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QStringList>

namespace {

constexpr int takenAfter = 1000; // ms

enum Mode { Small, FirstCapital, Capital, Digits };

const QStringList modeNames = {"abc", "Abc", "ABC", "123"};

} // namespace

KeypadInput::KeypadInput(QLineEdit* edit) : QObject(edit), m_edit(edit) {
    m_pause.setSingleShot(true);
    m_pause.setInterval(takenAfter);
    connect(&m_pause, &QTimer::timeout, this, &KeypadInput::take);
    edit->installEventFilter(this);
}

QString KeypadInput::mode() const {
    return modeNames.at(m_mode);
}

bool KeypadInput::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::FocusOut || event->type() == QEvent::MouseButtonPress)
        take();
    return event->type() == QEvent::KeyPress && takeKey(*static_cast<QKeyEvent*>(event));
}

/// True where the key was one for it.
bool KeypadInput::takeKey(const QKeyEvent& event) {
    if (const int digit = digitOf(event.key()); digit >= 0) {
        typeDigit(digit, event.isAutoRepeat());
        return true;
    }
    take();
    if (event.key() == Qt::Key_Asterisk) {
        m_mode = (m_mode + 1) % int(modeNames.size());
        m_edit->update();
        return true;
    }
    if (event.key() == Qt::Key_NumberSign) {
        m_edit->backspace();
        return true;
    }
    return false;
}

void KeypadInput::typeDigit(int digit, bool isHeld) {
    if (isHeld && digit != m_digit)
        return; // it has typed itself
    if (isHeld || m_mode == Digits) {
        if (!isHeld)
            take();
        m_edit->insert(QString::number(digit));
        m_digit = -1;
        m_pause.stop();
        return;
    }
    const bool isNext = digit == m_digit;
    if (!isNext)
        take();
    const QString letters = lettersOf(digit);
    m_letter = isNext ? (m_letter + 1) % int(letters.size()) : 0;
    m_digit = digit;
    const QString letter = letters.at(m_letter);
    show(m_mode == Small ? letter : letter.toUpper());
}

/// In place of the one before, which is still selected.
void KeypadInput::show(const QString& letter) {
    const int before = m_edit->text().size() - m_edit->selectedText().size();
    m_edit->insert(letter);
    if (m_edit->text().size() == before + letter.size())
        m_edit->setSelection(m_edit->cursorPosition() - int(letter.size()), int(letter.size()));
    else
        m_digit = -1; // there was no room for it
    m_pause.start();
}

/// The letter under the finger counts from now on.
void KeypadInput::take() {
    m_pause.stop();
    if (m_digit < 0)
        return;
    m_digit = -1;
    m_edit->setCursorPosition(m_edit->selectionStart() + int(m_edit->selectedText().size()));
    m_edit->deselect();
    if (m_mode == FirstCapital)
        m_mode = Small;
    m_edit->update();
}
