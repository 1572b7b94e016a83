#pragma once

#include "ZPopup.h"

class ChoiceRow;

/// A question with a list of answers of which one is chosen; the first one is chosen to begin with.
class ZSingleSelectDlg : public ZPopup {
    Q_OBJECT

public:
    ZSingleSelectDlg(const QString& title, const QString& text, QWidget* parent = nullptr,
                     const char* name = "ZSingleSelectDlg", bool modal = true, int flags = 0,
                     int skinClass = 0);

    void addItemsList(const QStringList& items);
    void setItemIcon(int index, const QPixmap& icon);
    void setItemSecondText(int index, const QString& text);

    /// The chosen item, counted from 0; -1 in an empty list.
    int getCheckedItemIndex() const;

    /// Non-zero when the choice was accepted. Without a display the terminal is asked.
    int exec() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void moveChoice(qsizetype steps);

    QString m_text;
    QList<ChoiceRow*> m_rows;
};
