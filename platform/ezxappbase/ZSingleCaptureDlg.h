#pragma once

#include "ZPopup.h"

/// A question that is answered with a line of text.
class ZSingleCaptureDlg : public ZPopup {
    Q_OBJECT

public:
    ZSingleCaptureDlg(const QString& title, const QString& text, QWidget* parent = nullptr,
                      const char* name = "ZSingleCaptureDlg", bool modal = true);

    /// Takes the widget that is edited in; it has the focus while the dialog is shown.
    void setEditWidget(QWidget* edit);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
