#include "ZMessageDlg.h"

#include "Look.h"
#include "PlatformText.h"
#include "TerminalDialog.h"
#include "ZApplication.h"
#include "ZLabel.h"

#include <QRegularExpression>
#include <QTimer>

namespace {

constexpr qsizetype longestText = 6000;

/// The first of the lines that tells an error; -1 where none does. A line that begins with the word
/// tells more than one that has it in a name.
qsizetype errorLine(const QStringList& lines) {
    static const QRegularExpression begins("^\\s*(system )?errors?\\s*:",
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tells(
        "\\b(cannot|can't|can not|could not|failed|denied|no such)\\b",
        QRegularExpression::CaseInsensitiveOption);
    for (const QRegularExpression& sign : {begins, tells}) {
        for (qsizetype line = 0; line < lines.size(); ++line) {
            if (lines.at(line).contains(sign))
                return line;
        }
    }
    return -1;
}

/// The text without blank lines around it and, where it is too long (such as a command's output),
/// without its middle.
QString readablePart(const QString& whole) {
    const QString text = whole.trimmed();
    if (text.size() <= longestText)
        return text;
    return text.left(longestText / 3) + "\n\u2026\n" + text.right(longestText * 2 / 3);
}

} // namespace

ZMessageDlg::ZMessageDlg(const QString& title, const QString& text, Type type, int timeOut,
                         QWidget* parent, const char* name, bool modal, int flags)
    : ZPopup(type, parent, name, modal, flags, 0), m_text(text), m_type(type) {
    setTitle(title);
    setAutoDismissTime(timeOut);
    if (!text.isEmpty())
        addText(readablePart(text), !isLong())->setAccessibleName(text.left(longestText));
    const bool asks = type == Question;
    const QString left = asks ? platformText("SK_YES", "Yes") : platformText("SK_OK", "OK");
    const QString right = asks ? platformText("SK_NO", "No") : QString();
    setSoftKeys(left, right);
    // A notice that is filled by its owner needs its height for that; the soft key closes it.
    if (!text.isEmpty())
        addButtons(left, right);
}

bool ZMessageDlg::isLong() const {
    return m_text.size() > 200;
}

ZLabel* ZMessageDlg::addText(const QString& text, bool isStrong) {
    auto* label = new ZLabel(QString(), this, nullptr, 0, 1);
    label->setFont(lookFont(isLong() ? Measure::secondFont : Measure::dialogFont,
                            isStrong ? QFont::DemiBold : QFont::Normal));
    label->setBreakableText(text);
    insertChild(label, -1);
    return label;
}

void ZMessageDlg::setOffError() {
    const QStringList lines = m_text.trimmed().split('\n');
    const qsizetype line = errorLine(lines);
    auto* before = findChild<ZLabel*>();
    if (lines.size() < 2 || line < 0 || !before)
        return;
    QFont plain = before->font();
    plain.setWeight(QFont::Normal);
    before->setFont(plain);
    before->setBreakableText(readablePart(lines.mid(0, line).join('\n')));
    before->setAccessibleName(m_text.left(longestText));
    before->setVisible(line > 0);
    m_error = addText(lines.at(line).trimmed(), true);
    if (line + 1 < lines.size())
        addText(readablePart(lines.mid(line + 1).join('\n')), false);
}

/// Where the text begins is known only once the screen has laid it out.
void ZMessageDlg::showEvent(QShowEvent* event) {
    ZPopup::showEvent(event);
    if (m_error)
        QTimer::singleShot(0, m_error, [this] { scrollTo(m_error); });
}

int ZMessageDlg::exec() {
    if (ZApplication::hasDisplay())
        return ZPopup::exec();
    if (m_type == Question)
        return askOnTerminal(title(), m_text) ? 1 : 0;
    tellOnTerminal(title(), m_text);
    return 1;
}
