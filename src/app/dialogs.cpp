#include "dialogs.h"

#include "RES_ICON_Reader.h"
#include "WaitBar.h"
#include "ZLabel.h"
#include "ZLineEdit.h"
#include "ZMessageDlg.h"
#include "ZPopup.h"
#include "ZSingleCaptureDlg.h"
#include "ZSingleSelectDlg.h"
#include "language.h"

namespace {

void setTitleIcon(ZPopup& popup, const QString& iconName) {
    popup.setTitleIcon(RES_ICON_Reader().getIcon(iconName, Measure::titleIcon));
}

int showMessage(const QString& title, const QString& text, const QString& iconName,
                ZMessageDlg::Type type) {
    ZMessageDlg dialog(title, text, type, 0, nullptr, nullptr, true, 0);
    setTitleIcon(dialog, iconName);
    return dialog.exec();
}

} // namespace

bool askYesNo(const QString& title, const QString& text, const QString& iconName) {
    return showMessage(title, text, iconName, ZMessageDlg::Question) == 1;
}

void showNotice(const QString& title, const QString& text, const QString& iconName) {
    showMessage(title, text, iconName, ZMessageDlg::Notice);
}

std::optional<int> chooseOne(const QString& title, const QString& text,
                             const QList<Choice>& choices, const QString& iconName) {
    ZSingleSelectDlg dialog(title, text, nullptr, "ZSingleSelectDlg", true, 0, 0);
    setTitleIcon(dialog, iconName);
    const RES_ICON_Reader reader;
    QStringList texts;
    for (const Choice& choice : choices)
        texts.append(choice.text);
    dialog.addItemsList(texts);
    for (int i = 0; i < choices.size(); ++i)
        dialog.setItemIcon(i, reader.getIcon(choices.at(i).iconName));
    if (dialog.exec() == 0)
        return std::nullopt;
    return dialog.getCheckedItemIndex();
}

std::optional<QString> askText(const QString& title, const QString& text, const QString& preset) {
    constexpr int editClass = 39;
    ZSingleCaptureDlg dialog(title, text, nullptr, "ZSingleCaptureDlg", true);
    auto* edit = new ZLineEdit(preset, &dialog, editClass);
    edit->selectAll();
    dialog.setEditWidget(edit);
    if (dialog.exec() == 0)
        return std::nullopt;
    return edit->text();
}

std::unique_ptr<ZPopup> makePleaseWait() {
    auto popup = std::make_unique<ZPopup>(1, nullptr, nullptr, true, 0, 0);
    setTitleIcon(*popup, "recur_enable_pop.bmp");
    auto* label = new ZLabel(tr("POP_PLEASEWAIT"), popup.get(), nullptr, 0, 1);
    label->setAlignment(Qt::AlignHCenter);
    popup->insertChild(label, -1);
    popup->insertChild(new WaitBar(popup.get()), -1);
    popup->setAutoDismissTime(1);
    popup->hide();
    return popup;
}

void showWhileWorking(ZPopup& pleaseWait, const QString& title) {
    pleaseWait.setTitle(title);
    // Once painted it dismisses itself; short work must not be over before it could be seen.
    pleaseWait.exec();
    pleaseWait.show();
}
