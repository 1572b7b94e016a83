// The home screen of the demo phone: its application manager, which reads the menu's files once, at
// its start.
#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZScreen.h"
#include "homescreen.h"

#include <cstdio>

namespace {

/// Without the keyboard: the home screen starts again while another program still says something,
/// which is to be answered.
void presentQuietly(QWidget* widget) {
    ZScreen& screen = ZScreen::instance();
    screen.setMainWidget(widget);
    widget->setFocus();
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
    presentQuietly(new HomeScreen);
    return application.exec();
}
