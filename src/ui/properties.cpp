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

void addSection(ZPopup& popup, const char* headingKey, const QStringList& lines) {
    popup.insertChild(new ZSeparator(&popup), -1);
    addLabel(popup, tr(headingKey), lookFont(headingFont, QFont::Bold))
        ->setForegroundRole(QPalette::Text);
    for (const QString& line : lines)
        addLabel(popup, line, lookFont(valueFont));
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
    ZMessageDlg popup(app->name, QString(), ZMessageDlg::Notice, 0, nullptr, nullptr, true, 0);
    popup.setContentMargin(Measure::grid); // leaves a line of the comment its width
    popup.setContentSpacing(Measure::grid / 2);
    popup.setTitleIcon(
        loadPicture(hostPath(app->path + '/' + app->icon), scaled(Measure::titleIcon)));
    addSection(popup, "APP_AUTHOR", {app->author});
    addSection(popup, "APP_VERSION", {app->version});
    addSection(popup, "APP_COMMENT", commentLines(app->comment));
    popup.insertChild(new ZSeparator(&popup), -1);
    popup.exec();
}
