#pragma once

#include "screen.h"

/// What the screens of the program read when all is as it should be. `highlighted` is a row.

Screen appList(const QStringList& rows, int highlighted = 0);

/// The list with tick boxes, of which those of the rows `ticked` are ticked.
Screen tickList(QStringList rows, int highlighted, const QSet<int>& ticked);

/// The package browser, each file with the size that it has on the phone.
Screen browser(const QString& folder, const QStringList& folders, const QStringList& files,
               int highlighted = 1);

/// The options of the list, without those that are `disabled`.
Screen mainMenu(const QSet<int>& disabled, int highlighted = 0);

Screen saveMenu();

/// With the tick at the memory card, or without.
Screen viewMenu(bool card);

/// The options of the package browser; `install` where the highlighted row is a package.
Screen browserMenu(bool install);

Screen multiSelectMenu();

Screen installQuestion(const QString& package);

/// With the card chosen, or the phone.
Screen placeQuestion(bool card);

/// A question by the key of its text, about an application where one is named.
Screen question(const char* text, const QString& app = QString());

Screen nameQuestion(const QString& app, const QString& typed);

Screen success();
