#pragma once

#include <QElapsedTimer>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>

class QVBoxLayout;
class ZSoftKey;

/// A program's window on a phone with keys: a title bar, the content in a vertical layout, and a
/// bar with the labels of the two soft keys.
class ZKbMainWidget : public QWidget {
    Q_OBJECT

public:
    ZKbMainWidget(QWidget* parent, const char* name, int flags);

    /// Shows `title` at once, also when the event loop does not come round soon.
    void setMainWidgetTitle(const QString& title);

    QString mainWidgetTitle() const { return m_title; }

    void setTitleIcon(const QPixmap& icon);

    /// A short text on the accent colour at the right end of the title bar; none where empty.
    void setTitleBadge(const QString& badge);

    /// Shows or hides the thin line of the accent colour below the title while work goes on. When
    /// that takes more than a moment, and the event loop runs, the line moves.
    void setBusy(bool busy);

    QVBoxLayout* getVBoxLayout() const { return m_content; }

    void setSoftKey(ZSoftKey* softKey);

    /// Pixels by which content moves with one step of a scroll bar or wheel.
    virtual int getStepInScrollPanel() const { return 1; }

    /// Whether room is kept for a tool bar between title and content.
    virtual bool showToolBar() const { return false; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void layOut();
    QRect titleBar() const;
    QRect busyLine() const;
    void paintBadge(QPainter& painter, const QRect& bar) const;

    QString m_title;
    QString m_badge;
    QPixmap m_titleIcon;
    QElapsedTimer m_busySince; ///< not valid where nothing is going on
    QTimer m_busyTimer;
    QVBoxLayout* m_content;
    QPointer<ZSoftKey> m_softKey;
};
