#pragma once

#include <QWidget>

/// A slim line above the rows of a list, which tells what they are. A text too long for it loses
/// its middle.
class ListHeader : public QWidget {
    Q_OBJECT

public:
    explicit ListHeader(QWidget* parent);

    void setText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
};
