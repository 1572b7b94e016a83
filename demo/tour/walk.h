#pragma once

#include "screen.h"

#include <QList>

#include <functional>
#include <variant>

/// Says what is wrong, nothing where all is well. It is asked again until it is content or the
/// walk's patience ends.
using Check = std::function<QString()>;

/// The screen reads exactly so.
Check shows(const Screen& screen);

/// A dialog of this title is open, and `text` stands somewhere in it.
Check tells(const QString& title, const QString& text);

/// The badges of the rows of the list in front, one for each; empty where a row has none.
Check badges(const QStringList& words);

/// There is a badge in the title bar, or none.
Check badge(bool wanted);

/// Otherwise `what` is not so.
Check holds(const QString& what, const std::function<bool()>& condition);

/// The highlight goes to the row of this name, key by key.
struct Row {
    QString name;
};

/// A key of the phone that the user presses, a letter that he types, a row that he goes to, or
/// something that happens to the phone meanwhile.
using Act = std::variant<Qt::Key, char, Row, std::function<void()>>;

/// What is done, and what there is to see afterwards. The acts of one step must not wait for each
/// other: where a dialog or a list takes its time to come, the next step begins.
struct Step {
    QString name; ///< of the picture; empty for the step that ends the program
    QString does;
    QList<Act> acts;
    QList<Check> checks;
};

/// Starts the program on the phone that QUIVER_ROOT names and goes through the steps in its window,
/// each with a picture in the folder `pictures`. The exit status: 0 when every step has shown what
/// it should and the program ended by the last one.
int walkThrough(const QList<Step>& steps, const QString& programFolder, const QString& pictures);
