#pragma once

#include <QColor>
#include <QFont>
#include <QSize>

class QPainter;
class QPixmap;
class QRect;

/// The colours of the phone's screen, each named by what it is for.
struct Palette {
    QColor bar;
    QColor barText;
    QColor tabBar;
    QColor tabText;
    QColor surface;
    QColor text;
    QColor secondaryText;
    QColor focus;
    QColor focusText;
    QColor focusSecondaryText;
    QColor accent;
    QColor disabledText;
    QColor line;
    QColor header; ///< ground of a row that tells what the rows below it are
    QColor button;
    QColor glyph; ///< the one colour of icons that are repainted in the colour of their text
    QColor dim;   ///< laid over the screen below a popup
};

/// The colours in use: a light set, or a dark one.
const Palette& colours();

/// Takes the dark set or the light one. What is on the screen is painted anew.
void useColours(bool dark);

/// Measures in logical pixels at the normal font size; `scaled` fits them to the font size in use.
namespace Measure {
constexpr int grid = 4;
constexpr int titleBar = 28;
constexpr int titleIcon = 16;
constexpr int titleFont = 15;
constexpr int softKeyBar = 30;
constexpr int softKeyFont = 14;
constexpr int widestCard = 480; ///< of popups and menus, where the screen is wider than a phone's
constexpr int dialogMargin = 8;
constexpr int dialogPadding = 12;
constexpr int dialogFont = 14;
constexpr int button = 36;
constexpr int choiceRow = 44;
constexpr int rowIcon = 32;
constexpr int markerIcon = 16;
constexpr int noticeIcon = 64; ///< of a list with nothing to show
constexpr int nameFont = 14;
constexpr int secondFont = 12;
constexpr int hintFont = 11;
constexpr int tabBar = 28;
constexpr int tabIcon = 16;
constexpr int tabFont = 13;
constexpr int accentLine = 3;
constexpr int listRow = 46;
constexpr int compactRow = 36;
constexpr int compactIcon = 20;
constexpr int headerRow = 24;
constexpr int checkBox = 20;
constexpr int menuRow = 26;
constexpr int menuFont = 14;
constexpr int radius = 6;
constexpr int scrollBar = 3;
constexpr int overhang = 2; ///< the tail of a "J" to the left of its place, in bold letters
constexpr QSize screen(240, 320);
} // namespace Measure

/// `measure` times the font factor: the environment variable QUIVER_FONT_SCALE, from 1 to 2, 1
/// where unset.
int scaled(int measure);

/// The application's font at `pixels` (a measure, scaled here).
QFont lookFont(int pixels, QFont::Weight weight = QFont::Normal);

/// As `lookFont`, made smaller (down to five eighths of `pixels`) where `text` would be wider than
/// `width`.
QFont fittedFont(const QString& text, int width, int pixels, QFont::Weight weight);

/// The same for a text whose words wrap in `room`.
QFont fittedFont(const QString& text, const QSize& room, int pixels, QFont::Weight weight);

/// Paints `text` on one line in `place`, in a fitted font and, as the last resort, elided.
void paintFitted(QPainter& painter, const QRect& place, Qt::Alignment alignment,
                 const QString& text, int pixels, QFont::Weight weight);

/// Paints a tick box, with its tick where `checked`, in the colours of a focused row or of others.
void paintCheckBox(QPainter& painter, const QRect& place, bool checked, bool focused);

/// `picture` in `colour` where it is a glyph (all its pixels are of the palette's glyph colour),
/// else unchanged: so one picture serves on every background.
QPixmap tinted(const QPixmap& picture, const QColor& colour);

/// Paints a bar with an icon at the left and an elided title: the title bar of window and popups.
void paintTitle(QPainter& painter, const QRect& bar, const QPixmap& icon, const QString& title);
