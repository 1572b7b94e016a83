#pragma once

#include <QPointer>
#include <QWidget>

class QScrollArea;
class SoftKeyBar;

/// Something laid over the whole screen, with soft-key labels of its own at the foot. While it is
/// shown, all keys and touches are its own; afterwards the focus goes back to where it was.
class ZOverlay : public QWidget {
    Q_OBJECT

public:
    /// An overlay without a parent lies on the screen of its own accord.
    explicit ZOverlay(QWidget* parent);

protected:
    SoftKeyBar* softKeys() const { return m_softKeys; }

    /// The room above the soft-key labels.
    QRect area() const;

    /// A see-through area in `parent` that scrolls `content` up and down, by touch too.
    static QScrollArea* makeScrollArea(QWidget* content, QWidget* parent);

    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    SoftKeyBar* m_softKeys;
    QPointer<QWidget> m_focusBefore;
};
