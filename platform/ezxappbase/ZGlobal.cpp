#include "ZGlobal.h"

#include "Look.h"
#include "ZScreen.h"

QRect ZGlobal::getContentR() {
    return ZScreen::instance().rect().adjusted(0, scaled(Measure::titleBar), 0,
                                               -scaled(Measure::softKeyBar));
}
