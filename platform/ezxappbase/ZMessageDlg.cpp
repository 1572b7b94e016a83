#include "ZMessageDlg.h"

#include "Look.h"
#include "PlatformText.h"
#include "TerminalDialog.h"
#include "ZApplication.h"
#include "ZLabel.h"

namespace {

constexpr qsizetype longestText = 6000;

/// The text without blank lines around it and, where it is too long (such as a command's output),
/// without its middle.
QString readablePart(const QString& whole) {
    const QString text = whole.trimmed();
    if (text.size() <= longestText)
        return text;
    return text.left(longestText / 3) + "\n\u2026\n" + text.right(longestText * 2 / 3);
}

} // namespace

ZMessageDlg::ZMessageDlg(const QString& title, const QString& text, int type, int timeOut,
                         QWidget* parent, const char* name, bool modal, int flags)
    : ZPopup(type, parent, name, modal, flags, 0), m_text(text), m_type(type) {
    setTitle(title);
    setAutoDismissTime(timeOut);
    if (!text.isEmpty()) {
        const bool isLong = text.size() > 200;
        const QFont font = lookFont(isLong ? Measure::secondFont : Measure::dialogFont,
                                    isLong ? QFont::Normal : QFont::DemiBold);
        auto* label = new ZLabel(QString(), this, nullptr, 0, 1);
        label->setFont(font);
        label->setBreakableText(readablePart(text));
        label->setAccessibleName(text.left(longestText));
        insertChild(label, -1);
    }
    const bool asks = type == Question;
    const QString left = asks ? platformText("SK_YES", "Yes") : platformText("SK_OK", "OK");
    const QString right = asks ? platformText("SK_NO", "No") : QString();
    setSoftKeys(left, right);
    // A notice that is filled by its owner needs its height for that; the soft key closes it.
    if (!text.isEmpty())
        addButtons(left, right);
}

int ZMessageDlg::exec() {
    if (ZApplication::hasDisplay())
        return ZPopup::exec();
    if (m_type == Question)
        return askOnTerminal(title(), m_text) ? 1 : 0;
    tellOnTerminal(title(), m_text);
    return 1;
}
