#pragma once

#include "ZConfig.h"
#include "ZPK_App.h"
#include "database.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>
#include <map>

/// Something that is not as it should be.
struct Finding {
    QString kind;    ///< one of a few words, an interface
    QString subject; ///< what it is about: an application, a path or an identifier
    QString text;
    QString repair;             ///< what would mend it
    std::function<void()> mend; ///< does that
};

using Findings = QList<Finding>;

/// A phone as it is found: read once, held against itself by each of the checks.
struct PhoneState {
    std::map<QString, std::unique_ptr<ZPK_App>> apps; ///< by their paths
    QList<AppRow> rows;
    ZConfig installed; ///< the applications of the phone's menu
    ZConfig tree;      ///< the folders of the menu
};

PhoneState readState();

/// What lies at `path` (of the phone) cannot be looked at: it is on a card that is out.
bool isOnAbsentCard(const QString& path);

/// The folder at `path` (of the phone) is there.
bool isThere(const QString& path);

/// Each holds one part of the phone against the others and appends what it finds.
void checkFolders(Findings& findings);
void checkRows(const PhoneState& state, Findings& findings);
void checkMenu(const PhoneState& state, Findings& findings);

/// The application folder at `path` (of the machine), whose findings name `subject`. Those that
/// cannot be mended in it are mended by `setAside`.
void checkAppFolder(const QString& path, const QString& subject,
                    const std::function<void()>& setAside, Findings& findings);

/// Takes the application's entry out of the phone's menu and its rows out of the database.
void forget(const QString& path, const QList<AppRow>& rows);

/// Takes the entry of the identifier `uuid` (without braces) out of the phone's menu.
void removeEntry(const QString& uuid);
