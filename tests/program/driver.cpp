#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZPopup.h"
#include "database.h"
#include "discovery.h"
#include "install.h"
#include "packageinfo.h"
#include "settings.h"
#include "storage.h"

#include <QTimer>

/// Installs a package on the phone in QUIVER_ROOT as the window does, on whose screen it answers the
/// questions, so that it can be killed on the way: driver PACKAGE.
int main(int argc, char** argv) {
    QString error;
    if (argc != 2 || !preparePhoneRoot(error))
        return 2;
    prepareStorage();
    openAppDb();
    ArchiverPath = qEnvironmentVariable("SEVEN_ZIP");
    discoverApps();
    const ZApplication application(argc, argv, ZApplication::GuiClient);
    QTimer answering;
    QObject::connect(&answering, &QTimer::timeout, [] {
        if (ZPopup* popup = ZPopup::active())
            popup->done(1);
    });
    answering.start(5);
    installZpk(packageAt(argv[1]), true);
    return 0;
}
