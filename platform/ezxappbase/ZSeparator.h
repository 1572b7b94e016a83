#pragma once

#include <QWidget>

/// A thin line between two parts of a popup.
class ZSeparator : public QWidget {
    Q_OBJECT

public:
    explicit ZSeparator(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};
