#pragma once

#include "SoftKeyBar.h"

#include <QPointer>

#include <functional>

class ZOptionsMenu;

/// The soft keys of a window: the left one opens an options menu or, where there is none, does one
/// thing, as the right one does.
class ZSoftKey : public SoftKeyBar {
    Q_OBJECT

public:
    enum Key { Left, Right };

    /// `styleName` names a style of the phone; there is one here. What the keys do ends with
    /// `receiver`.
    ZSoftKey(const QString& styleName, QWidget* parent, QObject* receiver);

    void setText(Key key, const QString& text);

    /// The left text while the options menu is hidden, and both texts while it is shown.
    void setTextForOptMenuHide(const QString& left);
    void setTextForOptMenuShow(const QString& left, const QString& right);

    /// The menu that the left key opens; it goes to the screen and stays the caller's to keep.
    void setOptMenu(ZOptionsMenu* menu);
    ZOptionsMenu* optMenu() const;

    /// What a press of the right key does.
    void setClickedSlot(const std::function<void()>& slot);

    void pressLeft();
    void pressRight();

signals:
    /// The left key was pressed and has no menu to open.
    void leftChosen();

private:
    QObject* m_receiver;
    QPointer<ZOptionsMenu> m_menu;
    QString m_leftWhileShown;
    QString m_rightWhileShown;
};
