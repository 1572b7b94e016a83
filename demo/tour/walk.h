#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <variant>

/// What there is to read on the screen: an open dialog, else an open menu, else the list in front.
/// A line begins with marks where it is more than text: ">" highlighted, "-" disabled, "[x]" and
/// "[ ]" a tick box, "(o)" and "( )" the answers of which one is chosen. The texts of a row are
/// joined by " / "; "*" at its end is the star.
struct Screen {
    QString title; ///< the dialog's; else the window's, with the label of the tab in front
    QStringList lines;
    QString left; ///< the soft keys
    QString right;

    bool operator==(const Screen&) const = default;
    QString text() const;
};

Screen readScreen();

/// Says what is wrong, nothing where all is well. It is asked again until it is content or the
/// walk's patience ends.
using Check = std::function<QString()>;

/// The screen reads exactly so.
Check shows(const Screen& screen);

/// A dialog of this title is open, and `text` stands somewhere in it.
Check tells(const QString& title, const QString& text);

/// The whole row is in sight.
Check inSight(int row);

/// There is a badge in the title bar, or none.
Check badge(bool wanted);

/// Otherwise `what` is not so.
Check holds(const QString& what, const std::function<bool()>& condition);

/// The highlight goes to the row of this name, key by key.
struct Row {
    QString name;
};

/// A key that the user presses, a row that he goes to, or something that happens to the phone
/// meanwhile.
using Act = std::variant<Qt::Key, Row, std::function<void()>>;

/// What is done, and what there is to see afterwards. The acts of one step must not wait for each
/// other: where a dialog or a list takes its time to come, the next step begins.
struct Step {
    QString name; ///< of the picture; empty for the step that ends the program
    QString does;
    QList<Act> acts;
    QList<Check> checks;
};

/// Opens the language file of the walk, which the program should choose by itself. False when
/// there is none.
bool useLanguage(const QString& programFolder, const QString& code);

/// The text of `key` in that file.
QString word(const char* key);

/// Starts the program on the phone that QUIVER_ROOT names and goes through the steps in its window,
/// each with a picture in the folder `pictures`. The exit status: 0 when every step has shown what
/// it should and the program ended by the last one.
int walkThrough(const QList<Step>& steps, const QString& programFolder, const QString& pictures);
