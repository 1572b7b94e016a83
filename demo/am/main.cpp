// The home screen of the demo phone: its application manager, which reads the menu's files once, at
// its start.
#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZScreen.h"
#include "homescreen.h"

#include <QScreen>

#include <cstdio>

namespace {

/// At the right edge of the desktop and without the keyboard: the home screen starts again while
/// another program asks or tells something, which has to stay in sight and in use.
void presentAside(QWidget* widget) {
    constexpr int margin = 16; // for the frame of a window manager
    ZScreen& screen = ZScreen::instance();
    screen.setMainWidget(widget);
    widget->setFocus();
    const QRect desktop = screen.screen()->availableGeometry();
    const int left = desktop.x() + desktop.width() - screen.width() - margin;
    screen.move(qMax(desktop.x(), left), desktop.y());
    screen.setAttribute(Qt::WA_ShowWithoutActivating);
    screen.show();
}

} // namespace

int main(int argc, char** argv) {
    QString error;
    if (!preparePhoneRoot(error)) {
        fprintf(stderr, "am: %s\n", toBytes(error).constData());
        return 1;
    }
    ZApplication application(argc, argv, ZApplication::GuiServer);
    if (!ZApplication::hasDisplay()) {
        fputs("am: there is no display for the home screen\n", stderr);
        return 1;
    }
    presentAside(new HomeScreen);
    return application.exec();
}
