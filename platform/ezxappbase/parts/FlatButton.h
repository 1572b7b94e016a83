#pragma once

#include <QPushButton>

/// A push button drawn in the phone's look. It never takes the focus: the keys belong to the dialog
/// or window that it stands in.
class FlatButton : public QPushButton {
    Q_OBJECT

public:
    enum Kind {
        LeftSoftKey,
        RightSoftKey,
        MainAction, ///< the answer that the centre key gives
        OtherAction
    };

    FlatButton(Kind kind, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isSoftKey() const;

    Kind m_kind;
};
