#include "batch.h"

#include "Waiting.h"
#include "dialogs.h"
#include "output.h"
#include "terminal.h"

#include <optional>

void doToEach(const std::vector<ZPK_App*>& apps, const std::function<bool(ZPK_App& app)>& work,
              const std::function<QString(const ZPK_App& app)>& done) {
    // One of several is brought to its end; a single one is cancelled on the way.
    std::optional<WorkCancel> cancel;
    if (apps.size() > 1)
        cancel.emplace(WorkCancel::AfterPart);
    const int total = int(apps.size());
    for (int i = 0; i < total; ++i) {
        ZPK_App* app = apps.at(i);
        const QString name = app->shownName().trimmed();
        if (isInterrupted()) {
            fail(name, "cancelled");
            continue;
        }
        const QString line = done(*app); // the record may be gone afterwards
        const WorkPart part(i + 1, total);
        showWorking(name);
        const bool isDone = work(*app);
        hideWorking();
        const QString reason = takeFailure();
        if (!isDone) {
            fail(name, reason.isEmpty() ? "not done" : reason);
            continue;
        }
        succeed(name, line);
        if (!reason.isEmpty())
            tell(name + ": " + reason);
    }
}
