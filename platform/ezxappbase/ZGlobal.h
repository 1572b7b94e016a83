#pragma once

#include <QRect>

/// What holds for every program on the phone.
class ZGlobal {
public:
    /// The part of the screen between title bar and soft-key bar, in the screen's coordinates.
    static QRect getContentR();
};
