#pragma once

#include <QLineEdit>

/// A line of text to be edited, in the phone's look.
class ZLineEdit : public QLineEdit {
    Q_OBJECT

public:
    /// `widgetClass` is the phone's own.
    ZLineEdit(const QString& text, QWidget* parent, int widgetClass);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
