#include "ZSingleCaptureDlg.h"

#include "PlatformText.h"
#include "ZLabel.h"

#include <QKeyEvent>

ZSingleCaptureDlg::ZSingleCaptureDlg(const QString& title, const QString& text, QWidget* parent,
                                     const char* name, bool modal)
    : ZPopup(0, parent, name, modal, 0, 0) {
    setTitle(title);
    auto* label = new ZLabel(QString(), this, nullptr, 0, 1);
    label->setBreakableText(text);
    insertChild(label, -1);
    const QString ok = platformText("SK_OK", "OK");
    const QString cancel = platformText("SK_CANCEL", "Cancel");
    setSoftKeys(ok, cancel);
    addButtons(ok, cancel);
}

void ZSingleCaptureDlg::setEditWidget(QWidget* edit) {
    insertChild(edit, -1);
    setFocusProxy(edit);
}

void ZSingleCaptureDlg::keyPressEvent(QKeyEvent* event) {
    // With nothing left to delete, the key must not throw the rest of the dialog away.
    if (event->key() != Qt::Key_Backspace)
        ZPopup::keyPressEvent(event);
}
