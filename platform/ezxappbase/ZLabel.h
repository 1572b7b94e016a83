#pragma once

#include <QLabel>

/// A text in a popup. Words wrap at the popup's width; a word that is wider is broken.
class ZLabel : public QLabel {
    Q_OBJECT

public:
    /// `widgetClass` chooses the look: 1 is the text of a notice, others a line of a panel.
    ZLabel(const QString& text, QWidget* parent, const char* name, int flags, int widgetClass);
};
