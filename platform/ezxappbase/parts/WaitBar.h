#pragma once

#include <QElapsedTimer>
#include <QRectF>
#include <QTimer>
#include <QWidget>

/// Between two pictures of what moves while work goes on, in milliseconds.
constexpr int frameMilliseconds = 40;

/// The part of `bar` that is lit `milliseconds` after the work began: it swings from end to end, as
/// long as nobody can tell how far the work is.
QRectF swingingPart(const QRectF& bar, qint64 milliseconds);

/// Shows that work goes on, and how far it is: a bar that fills where the progress is known, else
/// one that moves; below it the part or the percentage, and the seconds from the third one on.
class WaitBar : public QWidget {
    Q_OBJECT

public:
    explicit WaitBar(QWidget* parent);

    QSize sizeHint() const override;

    /// What stands below the bar, at its left and right end.
    QString progressText() const;
    QString timeText() const;

protected:
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QElapsedTimer m_shown;
    QTimer m_timer;
};
