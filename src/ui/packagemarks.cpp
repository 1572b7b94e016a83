#include "PhoneRoot.h"
#include "Waiting.h"
#include "ZListBox.h"
#include "ZPK_App.h"
#include "browser.h"
#include "language.h"
#include "packageinfo.h"
#include "settings.h"
#include "version.h"
#include "zBaseGUI.h"

namespace {

struct Mark {
    const char* key = nullptr;
    bool isStrong = false;
};

Mark markOf(const PackageInfo& info) {
    if (!info.app)
        return {"TXT_MARK_NO_APP"};
    const std::optional<QString> installed = installedVersion(info.folder);
    if (!installed)
        return {};
    const int difference = compareVersions(info.app->version, *installed);
    if (difference > 0)
        return {"TXT_MARK_NEWER", true};
    return {difference == 0 ? "TXT_MARK_SAME" : "TXT_MARK_OLDER"};
}

} // namespace

/// Packages are read one after the other, those in sight only: a folder may hold thousands.
void zBaseGUI::markNextPackage() {
    if (m_isReadingPackage || !m_packageList->isVisible())
        return;
    const QRect sight = m_packageList->viewport()->rect().adjusted(1, 1, -1, -1);
    const int first = qMax(0, m_packageList->indexAt(sight.topLeft()).row());
    const int under = m_packageList->indexAt(sight.bottomLeft()).row();
    const int last = under < 0 ? m_packageList->count() - 1 : under;
    for (int row = first; row <= last; ++row) {
        const QString name = m_packageList->item(row)->subItemText(m_packageList->textColumn());
        if (!isPackageName(name) || m_markedPackages.contains(name))
            continue;
        readPackageMark(name);
        return;
    }
}

void zBaseGUI::readPackageMark(const QString& name) {
    m_isReadingPackage = true;
    m_markedPackages.insert(name);
    const QString folder = browserFolder();
    const auto info = std::make_shared<std::optional<PackageInfo>>();
    startBeside([info, archiver = ArchiverPath,
                 path = hostPath(folder + '/' + name)] { *info = readPackage(archiver, path); },
                this,
                [this, info, folder, name] {
                    m_isReadingPackage = false;
                    if (*info && folder == browserFolder())
                        showPackageMark(name, **info);
                    markNextPackage();
                });
}

void zBaseGUI::showPackageMark(const QString& name, const PackageInfo& info) {
    const int column = m_packageList->textColumn();
    const Mark mark = markOf(info);
    for (int row = 0; row < m_packageList->count(); ++row) {
        ZListBoxItem* item = m_packageList->item(row);
        if (item->subItemText(column) != name)
            continue;
        ZListItem line = item->subItems(column).first();
        line.badge = mark.key ? ::tr(mark.key) : QString();
        line.strongBadge = mark.isStrong;
        item->setSubItem(column, line);
    }
}

void zBaseGUI::markPackagesAgain() {
    m_markedPackages.clear();
    QMetaObject::invokeMethod(this, &zBaseGUI::markNextPackage, Qt::QueuedConnection);
}
