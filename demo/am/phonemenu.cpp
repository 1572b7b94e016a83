#include "phonemenu.h"

#include "AM_Files.h"
#include "PhoneRoot.h"

#include <algorithm>

const QString PhoneMenu::root = "00000000-0000-0000-0000-000000000000";

PhoneMenu::PhoneMenu() : m_tree(hostPath(userMenuTreeFile), true), m_registry(nullptr, nullptr) {
    m_registry.init();
}

QString PhoneMenu::folderName(const QString& folder) const {
    return m_tree.readEntry(folder, "Name", "Menu");
}

QString PhoneMenu::folderIcon(const QString& folder) const {
    return m_tree.readEntry(folder, "Icon", QString());
}

QStringList PhoneMenu::items(const QString& folder) const {
    return m_tree.readEntry(folder, "Items", QString()).split(';', Qt::SkipEmptyParts);
}

bool PhoneMenu::isKnown(const QString& item) const {
    return m_tree.hasGroup(item) || m_registry.getRegistryObject(item);
}

QString PhoneMenu::countText(const QString& folder) const {
    const QStringList all = items(folder);
    const auto count =
        std::count_if(all.begin(), all.end(), [this](auto& item) { return isKnown(item); });
    if (count == 0)
        return "Empty";
    return count == 1 ? QString("1 entry") : QString("%1 entries").arg(count);
}

QList<MenuEntry> PhoneMenu::entries(const QString& folder) const {
    QList<MenuEntry> result;
    for (const QString& item : items(folder)) {
        if (m_tree.hasGroup(item))
            result.append({folderName(item), countText(item), folderIcon(item), item});
        else if (const AM_AppObject* app = m_registry.getRegistryObject(item))
            result.append({app->name(), app->vendor(), app->icon(), QString(), app});
    }
    return result;
}
