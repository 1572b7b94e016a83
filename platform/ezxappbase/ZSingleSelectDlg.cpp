#include "ZSingleSelectDlg.h"

#include "ChoiceRow.h"
#include "Look.h"
#include "PlatformText.h"
#include "TerminalDialog.h"
#include "ZApplication.h"
#include "ZLabel.h"

#include <QKeyEvent>

namespace {
/// The rows are nearly as wide as the card.
constexpr int rowMargin = Measure::dialogPadding / 2;
} // namespace

ZSingleSelectDlg::ZSingleSelectDlg(const QString& title, const QString& text, QWidget* parent,
                                   const char* name, bool modal, int flags, int skinClass)
    : ZPopup(0, parent, name, modal, flags, skinClass), m_text(text) {
    setTitle(title);
    if (!text.isEmpty()) {
        auto* label = new ZLabel(text, this, nullptr, 0, 1);
        label->setIndent(rowMargin);
        insertChild(label, -1);
    }
    setContentMargin(rowMargin);
    setSoftKeys(platformText("SK_OK", "OK"), platformText("SK_CANCEL", "Cancel"));
}

void ZSingleSelectDlg::addItemsList(const QStringList& items) {
    for (const QString& item : items) {
        auto* row = new ChoiceRow(item, this);
        row->setChecked(m_rows.isEmpty());
        connect(row, &ChoiceRow::chosenAgain, this, [this] { done(1); });
        m_rows.append(row);
        insertChild(row, -1);
    }
}

void ZSingleSelectDlg::setItemIcon(int index, const QPixmap& icon) {
    m_rows.at(index)->setPixmap(icon);
}

void ZSingleSelectDlg::setItemSecondText(int index, const QString& text) {
    m_rows.at(index)->setSecondText(text);
}

int ZSingleSelectDlg::getCheckedItemIndex() const {
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i)->isChecked())
            return i;
    }
    return -1;
}

int ZSingleSelectDlg::exec() {
    if (ZApplication::hasDisplay())
        return ZPopup::exec();
    QStringList items;
    for (const ChoiceRow* row : std::as_const(m_rows))
        items.append(QStringList{row->text(), row->secondText()}.join(
            row->secondText().isEmpty() ? "" : ", "));
    const int chosen = chooseOnTerminal(title(), m_text, items);
    if (chosen < 0)
        return 0;
    m_rows.at(chosen)->setChecked(true);
    return 1;
}

void ZSingleSelectDlg::moveChoice(qsizetype steps) {
    if (m_rows.isEmpty())
        return;
    ChoiceRow* row = m_rows.at(qBound(0, getCheckedItemIndex() + steps, m_rows.size() - 1));
    row->setChecked(true);
    reveal(row);
}

void ZSingleSelectDlg::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
        return moveChoice(-1);
    case Qt::Key_Down:
        return moveChoice(1);
    case Qt::Key_PageUp:
    case Qt::Key_Home:
        return moveChoice(-m_rows.size());
    case Qt::Key_PageDown:
    case Qt::Key_End:
        return moveChoice(m_rows.size());
    default:
        return ZPopup::keyPressEvent(event);
    }
}
