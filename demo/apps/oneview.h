#pragma once

#include "ZKbMainWidget.h"

#include <functional>

class ZOptionsMenu;

/// The window of a program that shows one thing: the program's icon and title, that view, and the
/// two soft keys, of which the right one leaves the program, as Escape does.
class OneView : public ZKbMainWidget {
    Q_OBJECT

public:
    /// Takes ownership of `view`, which gets the keys.
    OneView(const QString& title, QWidget* view, const QString& exitText = QStringLiteral("Exit"));

    /// What the left soft key says and does: one thing, or it opens a menu.
    void setLeftKey(const QString& text, const std::function<void()>& action);
    void setLeftKey(const QString& text, ZOptionsMenu* menu, const QString& chooseText,
                    const QString& closeText);

    /// Puts the window on the screen, which owns it from then on, and returns the program's exit
    /// status when it has been left. Without a display there is nothing to be done.
    int run();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    ZSoftKey* m_softKey;
};
