// The home screen of the demo phone: its application manager, which reads the menu's files once, at
// its start.
#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "homescreen.h"

#include <cstdio>

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
    application.setMainWidget(new HomeScreen);
    return application.exec();
}
