#pragma once

#include "Look.h"

#include <QPixmap>
#include <QString>

/// Loads the platform's named icons, which are drawn as SVG and embedded in the program.
class RES_ICON_Reader {
public:
    /// The icon of that name ("fm_small.bmp"), `size` logical pixels square and sharp on the screen
    /// in use. A name without a picture gives an empty pixmap.
    QPixmap getIcon(const QString& name, int size = Measure::rowIcon) const;
};
