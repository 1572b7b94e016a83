#pragma once

#include "AM_AppRegistry.h"
#include "ZConfig.h"

/// What one row of the menu shows: a folder, or an application where `app` is set.
struct MenuEntry {
    QString name;
    QString detail;
    QString icon; ///< a phone path, or the name of one of the platform's icons
    QString folder;
    const AM_AppObject* app = nullptr;
};

/// The phone's main menu, as its files were when this was made: the tree of folders, and the
/// registry of the applications in them.
class PhoneMenu {
public:
    /// The folder that holds all others.
    static const QString root;

    PhoneMenu();

    QString folderName(const QString& folder) const;
    QString folderIcon(const QString& folder) const;

    /// What lies in `folder`, in the order of the file. Items that are neither a folder nor an
    /// application of the registry are left out.
    QList<MenuEntry> entries(const QString& folder) const;

private:
    QStringList items(const QString& folder) const;
    bool isKnown(const QString& item) const;
    QString countText(const QString& folder) const;

    ZConfig m_tree;
    AM_AppRegistry m_registry;
};
