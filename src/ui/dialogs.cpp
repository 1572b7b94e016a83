#include "dialogs.h"

#include "PictureFile.h"
#include "RES_ICON_Reader.h"
#include "WaitPopup.h"
#include "ZApplication.h"
#include "ZLabel.h"
#include "ZLineEdit.h"
#include "ZMessageDlg.h"
#include "ZPopup.h"
#include "ZSeparator.h"
#include "ZSingleCaptureDlg.h"
#include "ZSingleSelectDlg.h"
#include "language.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>

namespace {

void setTitleIcon(ZPopup& popup, const QString& iconName) {
    popup.setTitleIcon(RES_ICON_Reader().getIcon(iconName, Measure::titleIcon));
}

int showMessage(const QString& title, const QString& text, const QString& iconName,
                ZMessageDlg::Type type) {
    ZMessageDlg dialog(title, text, type);
    setTitleIcon(dialog, iconName);
    return dialog.exec();
}

ZLabel* makeLabel(const QString& text, int widgetClass, QWidget* parent) {
    auto* label = new ZLabel(QString(), parent, nullptr, 0, widgetClass);
    label->setBreakableText(text);
    return label;
}

/// Icon, heading and subheading; below them the facts, in two columns.
QWidget* makeCard(const Details& details) {
    constexpr int gap = 2 * Measure::grid;
    auto* card = new QWidget;
    auto* rows = new QGridLayout(card);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setHorizontalSpacing(gap);
    rows->setVerticalSpacing(Measure::grid);
    rows->setColumnStretch(1, 1);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    if (!details.heading.isEmpty())
        texts->addWidget(makeLabel(details.heading, 1, card));
    if (!details.subheading.isEmpty())
        texts->addWidget(makeLabel(details.subheading, 0, card));
    auto* heading = new QHBoxLayout;
    heading->setSpacing(gap);
    if (const QPixmap picture = readPicture(details.icon, Measure::rowIcon); !picture.isNull()) {
        auto* icon = new QLabel(card);
        icon->setPixmap(picture);
        heading->addWidget(icon);
    }
    heading->addLayout(texts, 1);
    rows->addLayout(heading, 0, 0, 1, 2);
    if (!details.facts.isEmpty() && !details.heading.isEmpty())
        rows->addWidget(new ZSeparator(card), 1, 0, 1, 2);
    for (const auto& [name, value] : details.facts) {
        const int row = rows->rowCount();
        rows->addWidget(makeLabel(name, 0, card), row, 0);
        ZLabel* right = makeLabel(value, 0, card);
        right->setAlignment(Qt::AlignRight);
        right->setForegroundRole(QPalette::Text);
        rows->addWidget(right, row, 1);
    }
    return card;
}

/// The one that is shown and hidden again. The screen owns it, so it is made again on another one.
ZPopup& workNotice() {
    static QPointer<ZPopup> notice;
    if (!notice) {
        notice = new WaitPopup({tr("POP_PLEASEWAIT"), tr("POP_CANCELLING_TEXT"), tr("SK_CANCEL")});
        setTitleIcon(*notice, "recur_enable_pop.bmp");
    }
    return *notice;
}

QString asLines(const Details& details) {
    QStringList lines;
    if (!details.heading.isEmpty())
        lines.append(details.heading);
    if (!details.subheading.isEmpty())
        lines.append(details.subheading);
    for (const auto& [name, value] : details.facts)
        lines.append(name + ": " + value);
    return lines.join('\n');
}

} // namespace

bool askAbout(const QString& title, const QString& text, const Details& details,
              const QString& iconName) {
    if (!ZApplication::hasDisplay())
        return askYesNo(title, text + '\n' + asLines(details), iconName);
    ZMessageDlg dialog(title, text, ZMessageDlg::Question);
    setTitleIcon(dialog, iconName);
    dialog.insertChild(makeCard(details), -1);
    return dialog.exec() == 1;
}

bool askYesNo(const QString& title, const QString& text, const QString& iconName) {
    return showMessage(title, text, iconName, ZMessageDlg::Question) == 1;
}

void showNotice(const QString& title, const QString& text, const QString& iconName) {
    showMessage(title, text, iconName, ZMessageDlg::Notice);
}

void showFailure(const QString& title, const QString& text) {
    ZMessageDlg dialog(title, text, ZMessageDlg::Notice);
    setTitleIcon(dialog, "error_pop.bmp");
    dialog.setOffError();
    dialog.exec();
}

std::optional<int> chooseOne(const QString& title, const QString& text,
                             const QList<Choice>& choices, const QString& iconName) {
    ZSingleSelectDlg dialog(title, text);
    setTitleIcon(dialog, iconName);
    const RES_ICON_Reader reader;
    QStringList texts;
    for (const Choice& choice : choices)
        texts.append(choice.text);
    dialog.addItemsList(texts);
    for (int i = 0; i < choices.size(); ++i) {
        dialog.setItemIcon(i, reader.getIcon(choices.at(i).iconName));
        dialog.setItemSecondText(i, choices.at(i).secondText);
    }
    if (dialog.exec() == 0)
        return std::nullopt;
    return dialog.getCheckedItemIndex();
}

std::optional<QString> askText(const QString& title, const QString& text, const QString& preset,
                               int bytes) {
    constexpr int editClass = 39;
    ZSingleCaptureDlg dialog(title, text);
    auto* edit = new ZLineEdit(preset, &dialog, editClass);
    edit->setMaxBytes(bytes);
    edit->selectAll();
    dialog.setEditWidget(edit);
    if (dialog.exec() == 0)
        return std::nullopt;
    return edit->text();
}

void showWorking(const QString& title) {
    ZPopup& notice = workNotice();
    notice.setTitle(title);
    // Once painted it dismisses itself; short work must not be over before it could be seen.
    notice.exec();
    notice.show();
}

void hideWorking() {
    workNotice().hide();
}
