// Measures the window without a display: a key until the list is painted again, and a refresh with
// a new discovery. window ROOT prints the two in microseconds, medians of many.

#include "PhoneRoot.h"
#include "ZApplication.h"
#include "ZListBox.h"
#include "ZScreen.h"
#include "database.h"
#include "language.h"
#include "settings.h"
#include "storage.h"
#include "zBaseGUI.h"

#include <QElapsedTimer>
#include <QKeyEvent>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

template<typename Work>
double median(int runs, Work work) {
    std::vector<double> microseconds;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        microseconds.push_back(double(timer.nsecsElapsed()) / 1000);
    }
    std::nth_element(microseconds.begin(), microseconds.begin() + runs / 2, microseconds.end());
    return microseconds[runs / 2];
}

void pressDown(zBaseGUI& window) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QCoreApplication::sendEvent(window.appList(), &press);
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char** argv) {
    QString error;
    if (!preparePhoneRoot(error))
        return 1;
    AppName = "quiver";
    ArchiverPath = defaultArchiver;
    prepareStorage();
    openAppDb();
    ZApplication application(argc, argv, ZApplication::GuiClient);
    zBaseGUI window;
    application.setMainWidget(&window);
    window.refreshList(true);
    QCoreApplication::processEvents();

    const double key = median(200, [&] { pressDown(window); });
    const double refresh = median(9, [&] {
        window.refreshList(true);
        QCoreApplication::processEvents();
    });
    fprintf(stderr, "%.1f %.1f\n", key, refresh);
    return 0;
}
