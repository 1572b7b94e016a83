// Measures an installation from the answer to the last question to its end, without a display:
// install PACKAGE prints on standard error, in milliseconds, the whole time, the part of it that
// popups were waited for, and the longest time that the event loop stood still.

#include "install.h"
#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "ZSingleSelectDlg.h"
#include "database.h"
#include "dialogs.h"
#include "language.h"
#include "packageinfo.h"
#include "settings.h"
#include "storage.h"

#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

/// Answers what comes up at once, and keeps the time.
class Watch {
public:
    Watch() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tick(); });
        m_timer.start(1);
    }

    void print() const {
        fprintf(stderr, "%.1f %.1f %.1f\n", milliseconds(m_total.nsecsElapsed()),
                milliseconds(m_popups), milliseconds(m_longestGap));
    }

private:
    static double milliseconds(qint64 nanoseconds) { return double(nanoseconds) / 1e6; }

    void tick() {
        const qint64 passed = m_total.isValid() ? m_tick.nsecsElapsed() : 0;
        m_tick.start();
        m_longestGap = qMax(m_longestGap, passed);
        ZPopup* popup = ZPopup::active();
        if (!popup)
            return;
        m_popups += passed;
        if (qobject_cast<ZSingleSelectDlg*>(popup))
            m_total.start();
        popup->done(1);
    }

    QTimer m_timer;
    QElapsedTimer m_total;
    QElapsedTimer m_tick;
    qint64 m_popups = 0;
    qint64 m_longestGap = 0;
};

} // namespace

int main(int argc, char** argv) {
    QString error;
    if (argc < 2 || !preparePhoneRoot(error))
        return 1;
    const ZApplication application(argc, argv, ZApplication::GuiClient);
    AppName = "quiver";
    ArchiverPath = qEnvironmentVariable("SEVEN_ZIP");
    prepareStorage();
    selectLanguageFile(QCoreApplication::applicationDirPath());
    ZScreen::instance().present();
    const Package package = packageAt(fromBytes(argv[1]));
    if (!package.info)
        return 1;
    const Watch watch;
    if (!installZpk(package, false))
        return 1;
    watch.print();
    return EXIT_SUCCESS;
}
