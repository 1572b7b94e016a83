#pragma once

#include <QPixmap>
#include <QRadioButton>

/// One answer in a list of which one is chosen: icon, text and a round mark. The chosen one stands
/// on the focus colour.
class ChoiceRow : public QRadioButton {
    Q_OBJECT

public:
    ChoiceRow(const QString& text, QWidget* parent);

    void setPixmap(const QPixmap& icon);

    /// A quieter line below the text.
    void setSecondText(const QString& text);

    QString secondText() const { return m_secondText; }

    QSize sizeHint() const override;

signals:
    /// The row was touched while it was the chosen one already.
    void chosenAgain();

protected:
    bool hitButton(const QPoint& position) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTexts(QPainter& painter, const QRect& place, const QColor& ink) const;

    QPixmap m_icon;
    QString m_secondText;
    bool m_wasChosen = false;
};
