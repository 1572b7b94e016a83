#pragma once

#include "ZPopup.h"

#include <QTimer>

class ZLabel;

/// A notice that work goes on, with how far it is. While the work can be cancelled, the right soft
/// key, Escape and Backspace do that.
class WaitPopup : public ZPopup {
    Q_OBJECT

public:
    /// What stands in the notice, there once the work is being cancelled, and on the soft key.
    struct Texts {
        QString wait;
        QString cancelling;
        QString cancel;
    };

    explicit WaitPopup(const Texts& texts);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void showState();

    Texts m_texts;
    ZLabel* m_label;
    QTimer m_timer;
};
