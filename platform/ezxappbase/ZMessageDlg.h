#pragma once

#include "ZPopup.h"

class ZLabel;

/// A message with a title: a yes/no question or a notice to be acknowledged.
class ZMessageDlg : public ZPopup {
    Q_OBJECT

public:
    enum Type { Question = 1, Notice = 2 };

    /// `timeOut` in units of 100 ms after which the dialog dismisses itself, 0 for never. A text
    /// beyond what can be read on a phone is shown without its middle.
    ZMessageDlg(const QString& title, const QString& text, Type type, int timeOut = 0,
                QWidget* parent = nullptr, const char* name = nullptr, bool modal = true,
                int flags = 0);

    /// Sets the first line of the text off that tells an error. The dialog opens there.
    void setOffError();

    /// 1 for yes (or the acknowledgement), 0 for no. Without a display the terminal is asked.
    int exec() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    bool isLong() const;
    ZLabel* addText(const QString& text, bool isStrong);

    QString m_text;
    Type m_type;
    ZLabel* m_error = nullptr; ///< none where no line is set off
};
