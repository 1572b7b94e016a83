#pragma once

#include "walk.h"

// The walks, and what several of them go through: the phone's keys, and the folders and
// applications of the demo phone.

constexpr Qt::Key left = Qt::Key_F1;
constexpr Qt::Key right = Qt::Key_F2;
constexpr Qt::Key enter = Qt::Key_Return;

inline const QString phoneApps = "/ezxlocal/download/mystuff/quiver";
inline const QString cardApps = "/mmc/mmca1/quiver";

inline const QString blockDrop = "Block Drop / Mira Okafor";
inline const QString calculator = "Calculator / J. Lindqvist";
inline const QString cityMap = "City Map / Open Atlas";
inline const QString worldClock = "World Clock / T. Ueda";
inline const QString notes = "Заметки / Павел Н.";

/// Leaves the program, whose menu has changed, and has the phone's menu restarted.
QList<Step> leavingWithRestart();

/// Looks around on a new demo phone, installs Torch and puts it into the phone's menu.
QList<Step> firstWalk();

/// Does to applications what can be done, on the phone that the first walk has left.
QList<Step> secondWalk();
