// Discovers the applications of the phone at QUIVER_ROOT twice. On standard error: how many there
// are, and how many milliseconds each discovery took.

#include "discovery.h"
#include "PhoneRoot.h"
#include "database.h"
#include "storage.h"

#include <QElapsedTimer>

#include <cstdio>

namespace {

double discoveryTime() {
    QElapsedTimer timer;
    timer.start();
    discoverApps();
    return timer.nsecsElapsed() / 1e6;
}

} // namespace

int main() {
    QString error;
    if (!preparePhoneRoot(error)) {
        fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    prepareStorage();
    if (!openAppDb())
        return 1;
    const double first = discoveryTime();
    const double second = discoveryTime();
    fprintf(stderr, "%zu %.3f %.3f\n", AppMap.size(), first, second);
    return closeAppDb() ? 0 : 1;
}
