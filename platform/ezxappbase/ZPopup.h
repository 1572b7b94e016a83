#pragma once

#include "ZOverlay.h"

#include <QPixmap>

class QEventLoop;
class QScrollArea;
class QVBoxLayout;

/// A card laid over the dimmed screen: a title bar, content that scrolls when it is higher than the
/// screen, buttons, and labels for the two soft keys. While it is shown, all keys and touches are
/// its own.
class ZPopup : public ZOverlay {
    Q_OBJECT

public:
    /// `popupType` 1 is a notice without an answer. A popup without a parent lies on the screen of
    /// its own accord. `modal` is always true here, `flags` 0.
    explicit ZPopup(int popupType, QWidget* parent = nullptr, const char* name = nullptr,
                    bool modal = true, int flags = 0, int skinClass = 0);
    ~ZPopup() override;

    void setTitle(const QString& title);

    QString title() const { return m_title; }

    void setTitleIcon(const QPixmap& icon);

    /// Takes `child` into the content at `index`, at the end where `index` is -1.
    void insertChild(QWidget* child, int index);

    /// The room left and right of the content; `Measure::dialogPadding` where it is not set.
    void setContentMargin(int margin);

    /// The room between the children of the content.
    void setContentSpacing(int spacing);

    /// From then on `exec` ends by itself after `units` of 100 ms, counted from the first time that
    /// the popup has been painted.
    void setAutoDismissTime(int units);

    /// Shows the popup and waits until it is answered or dismissed. The result is 1 for the left
    /// key, 0 for the right one or a dismissal. The popup is hidden afterwards.
    virtual int exec();

    /// Ends `exec` with `result`. The first answer holds.
    void done(int result);

    /// The popup on top of the screen that waits for an answer, or none.
    static ZPopup* active();

    /// The popup on top of the screen, whether it waits for an answer or not, or none.
    static ZPopup* shown();

protected:
    void setSoftKeys(const QString& left, const QString& right);
    void addButtons(const QString& left, const QString& right);
    /// Scrolls so that this child of the content is in sight.
    void reveal(QWidget* child);
    /// Scrolls so that this child is the first one in sight, as far as there is something below.
    void scrollTo(QWidget* child);
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void dismissWhenPainted();
    static void showTopCardOnly();
    void layOut();
    void scrollBy(int steps);
    QSize cardSize() const;

    QString m_title;
    QPixmap m_titleIcon;
    QWidget* m_card;
    QScrollArea* m_scroll;
    QVBoxLayout* m_content;
    QVBoxLayout* m_actions;
    QPointer<QEventLoop> m_loop;
    int m_dismissUnits = 0;
    int m_result = 0;
    bool m_isAnswered = false;
    bool m_painted = false;
};
