#pragma once

#include <QWidget>

class FlatButton;

/// The bar at the foot of the screen with the labels of the two soft keys; a touch on a label is a
/// press of its key. A key without a label does nothing.
class SoftKeyBar : public QWidget {
    Q_OBJECT

public:
    explicit SoftKeyBar(QWidget* parent);

    QString leftText() const;
    QString rightText() const;
    void setTexts(const QString& left, const QString& right);

signals:
    void leftPressed();
    void rightPressed();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    FlatButton* m_left;
    FlatButton* m_right;
};
