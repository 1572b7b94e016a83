#pragma once

#include <QLabel>

/// A text in a popup, whose words wrap at the popup's width.
class ZLabel : public QLabel {
    Q_OBJECT

public:
    /// `widgetClass` chooses the look: 1 is the text of a notice, others a line of a panel.
    ZLabel(const QString& text, QWidget* parent, const char* name, int flags, int widgetClass);

    /// As `setText`, in the font that the label has then; a word that is too wide for the smallest
    /// screen is broken.
    void setBreakableText(const QString& text);
};
