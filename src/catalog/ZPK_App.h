#pragma once

#include <QString>
#include <QUuid>

#include <cstdint>
#include <memory>

/// One installed application. Texts are as its descriptor gives them, untrimmed.
struct ZPK_App {
    QString name;
    QString author;
    QString version;
    QString exec; ///< the program to start, relative to the folder
    QString icon; ///< the icon file, relative to the folder
    QString path; ///< the application's folder, a path of the phone
    QString comment;
    std::uint32_t uiWord = 0;      ///< the user interface's own
    bool registeredInMenu = false; ///< it stands in the phone's menu
    int location = 0;              ///< 0 phone memory, 1 memory card
    std::unique_ptr<QUuid> uuid;   ///< its identifier in the database

    /// What people see: the name, or where that is blank the folder's.
    QString shownName() const {
        return name.trimmed().isEmpty() ? path.mid(path.lastIndexOf('/') + 1) : name;
    }
};
