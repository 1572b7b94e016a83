#include "screen.h"

#include "ChoiceRow.h"
#include "Look.h"
#include "SoftKeyBar.h"
#include "ZLabel.h"
#include "ZListBox.h"
#include "ZNavTabWidget.h"
#include "ZOptionsMenu.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "ZSoftKey.h"
#include "entries.h"
#include "zBaseGUI.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>

namespace {

constexpr int fewestColours = 16;
constexpr int fewestColoursOfText = 3; // ground, ink and one shade between

zBaseGUI& window() {
    return *static_cast<zBaseGUI*>(ZScreen::instance().mainWidget());
}

Screen readDialog(const ZPopup& popup) {
    Screen screen;
    screen.title = popup.title();
    for (const QWidget* part : popup.findChildren<QWidget*>()) {
        if (const auto* label = qobject_cast<const ZLabel*>(part)) {
            // The text as it was given, without the places where a long word may break.
            const QString name = label->accessibleName();
            screen.lines += name.isEmpty() ? label->text() : name;
        } else if (const auto* edit = qobject_cast<const QLineEdit*>(part)) {
            screen.lines += "| " + edit->text();
        } else if (const auto* choice = qobject_cast<const ChoiceRow*>(part)) {
            screen.lines += (choice->isChecked() ? "(o) " : "( ) ") + choice->text();
        } else if (const auto* keys = qobject_cast<const SoftKeyBar*>(part)) {
            screen.left = keys->leftText();
            screen.right = keys->rightText();
        }
    }
    return screen;
}

Screen readMenu(const ZOptionsMenu& menu) {
    const auto* keys = menu.findChild<SoftKeyBar*>();
    Screen screen;
    screen.left = keys->leftText();
    screen.right = keys->rightText();
    for (int id = 0; id < menu.count(); ++id) {
        QString line = menu.itemText(id);
        if (menu.itemState(id) & ZOptionsMenu::CheckItem)
            line.prepend(menu.itemState(id) & ZOptionsMenu::CheckedItem ? "[x] " : "[ ] ");
        if (!menu.isItemEnabled(id))
            line.prepend("- ");
        if (id == menu.highlighted())
            line.prepend("> ");
        screen.lines += line;
    }
    return screen;
}

QString readRow(const ZListBox& list, int row) {
    const ZListBoxItem& item = *list.item(row);
    QStringList texts;
    bool star = false;
    for (const ZListItem& part : item.subItems(list.textColumn())) {
        star = !texts.isEmpty() && !part.icon.isNull();
        texts += part.text.isEmpty() ? part.secondText : part.text;
    }
    QString line = texts.join(" / ");
    if (star)
        line.append(" *");
    if (item.isCheckable())
        line.prepend(item.isChecked() ? "[x] " : "[ ] ");
    if (!item.isEnabled())
        line.prepend("- ");
    if (row == list.currentItem())
        line.prepend("> ");
    return line;
}

Screen readList() {
    const ZListBox& list = listInFront();
    const auto* tabs = window().tabWidget()->findChild<QTabBar*>();
    const ZSoftKey* keys = window().getSoftKey();
    Screen screen;
    screen.title = window().mainWidgetTitle() + ", " + tabs->tabText(tabs->currentIndex());
    for (int row = 0; row < list.count(); ++row)
        screen.lines += readRow(list, row);
    screen.left = keys->leftText();
    screen.right = keys->rightText();
    return screen;
}

/// Letters have many shades at their edges, so a content with any text in it has many colours.
bool isBlank(const QImage& picture) {
    const QRect content = ZScreen::instance().rect().adjusted(
        0, scaled(Measure::titleBar + Measure::tabBar), 0, -scaled(Measure::softKeyBar));
    return coloursOf(picture, content).size() < fewestColours;
}

/// A text and where on the screen it should be.
struct TextPlace {
    QString text;
    QRect place;
};

QRect onScreen(const QWidget& widget, const QRect& place) {
    return QRect(widget.mapTo(&ZScreen::instance(), place.topLeft()), place.size());
}

/// The rows that are wholly in sight, without their icons.
QList<TextPlace> rowTexts(const ZListBox& list) {
    const int icon = scaled(list.isCompact() ? Measure::compactIcon : Measure::rowIcon);
    const int check = list.hasCheckBoxes() ? scaled(Measure::checkBox) + 2 * Measure::grid : 0;
    QList<TextPlace> texts;
    for (int row = 0; row < list.count(); ++row) {
        const QRect place = list.visualRect(list.model()->index(row, 0));
        if (!list.viewport()->rect().contains(place))
            continue;
        const int beside = list.item(row)->isEnabled() ? icon + check + 4 * Measure::grid : 0;
        texts += {readRow(list, row),
                  onScreen(*list.viewport(), place.adjusted(beside, 0, -Measure::scrollBar, -2))};
    }
    return texts;
}

/// Labels and buttons of what is in front, and the rows of the list where that is the window.
QList<TextPlace> textsInFront() {
    const QWidget* front = ZPopup::shown();
    if (!front)
        front = ZOptionsMenu::active();
    QList<TextPlace> texts = front ? QList<TextPlace>() : rowTexts(listInFront());
    for (const QWidget* part : (front ? front : &window())->findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(part);
        const auto* button = qobject_cast<const QAbstractButton*>(part);
        const QString text = label ? label->text() : button ? button->text() : QString();
        const QRect place = part->visibleRegion().boundingRect();
        if (part->isVisible() && !text.isEmpty() && place.height() >= part->font().pixelSize())
            texts += {text, onScreen(*part, place)};
    }
    return texts;
}

} // namespace

QString Screen::text() const {
    const QString rows = lines.isEmpty() ? "(empty)" : lines.join("; ");
    return QString("%1%2 [%3] [%4]").arg(title.isEmpty() ? "" : title + ": ", rows, left, right);
}

Screen readScreen() {
    if (const ZPopup* popup = ZPopup::shown(); popup && popup->isVisible())
        return readDialog(*popup);
    if (const ZOptionsMenu* menu = ZOptionsMenu::active(); menu && menu->isVisible())
        return readMenu(*menu);
    return readList();
}

ZListBox& listInFront() {
    const bool packages = window().tabWidget()->currentPageIndex() == PackagesPage;
    return *(packages ? window().packageList() : window().appList());
}

QImage pictureOfScreen() {
    return ZScreen::instance().grab().toImage();
}

QSet<QRgb> coloursOf(const QImage& picture, const QRect& part) {
    const double scale = picture.devicePixelRatio();
    const QImage pixels = picture.copy(
        QRectF(part.x() * scale, part.y() * scale, part.width() * scale, part.height() * scale)
            .toRect());
    QSet<QRgb> all;
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            all.insert(pixels.pixel(x, y));
    }
    return all;
}

QString unpainted(const QImage& picture) {
    if (isBlank(picture))
        return "the screen is blank";
    for (const auto& [text, place] : textsInFront()) {
        if (coloursOf(picture, place).size() < fewestColoursOfText)
            return "not painted: " + text;
    }
    return QString();
}
