#include "Look.h"
#include "PhoneRoot.h"
#include "PictureFile.h"
#include "ZLabel.h"
#include "ZMessageDlg.h"
#include "ZPK_App.h"
#include "ZSeparator.h"
#include "language.h"
#include "wraptext.h"
#include "zBaseGUI.h"

#include <cstdio>

namespace {

constexpr int wrapWidth = 210;
constexpr int headingFont = 14;
constexpr int valueFont = 12;
constexpr int panelLabel = 96;

ZLabel* addLabel(ZPopup& popup, const QString& text, const QFont& font) {
    auto* label = new ZLabel(text, &popup, nullptr, 0, panelLabel);
    label->setFont(font);
    label->setAlignment(Qt::AlignHCenter);
    popup.insertChild(label, -1);
    return label;
}

void addHeading(ZPopup& popup, const char* key) {
    popup.insertChild(new ZSeparator(&popup), -1);
    addLabel(popup, tr(key), lookFont(headingFont, QFont::Bold))->setForegroundRole(QPalette::Text);
}

void addValue(ZPopup& popup, const char* headingKey, const QString& value) {
    addHeading(popup, headingKey);
    addLabel(popup, QString(), lookFont(valueFont))->setBreakableText(value);
}

QStringList commentLines(const QString& comment) {
    const QFont font = lookFont(valueFont);
    const int width = scaled(wrapWidth);
    return wrapText(breakWideWords(comment, width, font), width, font);
}

} // namespace

void zBaseGUI::mainOptM_Properties() {
    puts("DEBUG:: Show APP Properties");
    const ZPK_App* app = currentApp();
    if (!app)
        return;
    ZMessageDlg popup(app->shownName(), QString(), ZMessageDlg::Notice);
    popup.setContentMargin(Measure::grid); // leaves a line of the comment its width
    popup.setContentSpacing(Measure::grid / 2);
    popup.setTitleIcon(
        loadPicture(hostPath(app->path + '/' + app->icon), scaled(Measure::titleIcon)));
    addValue(popup, "APP_AUTHOR", app->author);
    addValue(popup, "APP_VERSION", app->version);
    addHeading(popup, "APP_COMMENT");
    for (const QString& line : commentLines(app->comment))
        addLabel(popup, line, lookFont(valueFont));
    popup.insertChild(new ZSeparator(&popup), -1);
    popup.exec();
}
