#pragma once

#include <QPixmap>
#include <QString>

/// One line of text in a row of a list, with a marker icon at its right end.
struct ZListItem {
    QString text;
    QString secondText = {}; ///< shown in the quieter colour where `text` is empty
    QPixmap icon = {};
    int width = 0;        ///< pixels that the text keeps: with less room the icon is left out
    int showPriority = 0; ///< a row without room for all its lines shows those of the highest
    QString badge = {};   ///< a word in a pill at the row's right end; the first line's counts
    bool strongBadge = false;
    bool strong = true; ///< the row's first line is written heavier
};
