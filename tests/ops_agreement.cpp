#include "ops_agreement.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZConfig.h"
#include "appregistry.h"
#include "discovery.h"
#include "paths.h"
#include "settings.h"
#include "storage.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

// What every identifier that the program draws begins with.
const QString ownUuid = "8e10aded-f8ee-";

class MenuFiles {
public:
    bool shows(const ZPK_App& app) const {
        const QString group = plainUuid(*app.uuid);
        const auto value = [&](const char* key) {
            return m_installed.readEntry(group, key, QString());
        };
        return value("Directory") == app.path && value("Name") == app.name.trimmed() &&
               value("Icon").startsWith(app.path + '/') && timesListed(group + ';') == 1;
    }

    bool hides(const ZPK_App& app) const {
        const QString group = plainUuid(*app.uuid);
        return !m_installed.hasGroup(group) && timesListed(group) == 0;
    }

    qsizetype timesListed(const QString& text) const {
        return m_tree.readEntry(MenuUuid, "Items", QString()).count(text);
    }

    qsizetype ownGroups() const { return m_installed.groups().filter(ownUuid).size(); }

private:
    ZConfig m_installed{hostPath(Path::installedDb), true};
    ZConfig m_tree{hostPath(Path::userMenuTree), true};
};

qsizetype applicationsIn(const QString& folder) {
    qsizetype count = 0;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(toBytes(hostPath(folder)).toStdString(), none))
        count += fs::exists(entry.path() / (entry.path().filename().string() + ".cfg"));
    return count;
}

} // namespace

QStringList disagreements() {
    QStringList found;
    const MenuFiles menu;
    for (const auto& [key, app] : AppMap) {
        const QString folder = app->path.mid(app->path.lastIndexOf('/') + 1);
        const QString place = appsFolder(app->location) + '/' + folder;
        const QByteArray descriptor = toBytes(hostPath(place + '/' + folder + ".cfg"));
        if (app->path != place || !fs::exists(descriptor.toStdString()))
            found.append("folder of " + key + ": " + app->path);
        const QByteArrayList row = {app->uuid->toByteArray(), app->name.toLatin1(),
                                    QByteArray::number(app->location),
                                    QByteArray::number(app->registeredInMenu)};
        const TableRows rows =
            query("SELECT UUID, Name, Location, (SELECT COUNT(*) FROM App_Menu WHERE app_id = id) "
                  "FROM AppReg WHERE PathName = ?",
                  toBytes(app->path));
        if (rows != TableRows{row})
            found.append(QString("database of %1: %2 rows").arg(key).arg(rows.size()));
        if (!(app->registeredInMenu ? menu.shows(*app) : menu.hides(*app)))
            found.append("phone menu of " + key);
    }
    return found;
}

QStringList leftovers() {
    QStringList found;
    const MenuFiles menu;
    const auto compare = [&](const char* what, qsizetype count, qsizetype expected) {
        if (count != expected)
            found.append(QString("%1: %2, not %3").arg(what).arg(count).arg(expected));
    };
    const auto size = qsizetype(AppMap.size());
    const qsizetype inMenu = std::count_if(AppMap.begin(), AppMap.end(), [](const auto& entry) {
        return entry.second->registeredInMenu;
    });
    compare("folders", applicationsIn(Path::phoneApps) + applicationsIn(Path::cardApps), size);
    compare("rows", query("SELECT 1 FROM AppReg").size(), size);
    compare("links", query("SELECT 1 FROM App_Menu").size(), inMenu);
    compare("groups", menu.ownGroups(), inMenu);
    compare("items", menu.timesListed(ownUuid), inMenu);
    return found;
}

TableRows query(const char* sql, const QByteArray& parameter) {
    TableRows rows;
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open(toBytes(hostPath(Path::database)).constData(), &database);
    sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
    sqlite3_bind_text(statement, 1, parameter.constData(), -1, SQLITE_STATIC);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        rows.append(QByteArrayList());
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            rows.last().append(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return rows;
}

Snapshot snapshot(const QByteArray& folder) {
    Snapshot files;
    std::error_code none;
    for (const auto& entry : fs::recursive_directory_iterator(folder.toStdString(), none)) {
        const QByteArray path = QByteArray::fromStdString(entry.path()).mid(folder.size());
        if (entry.is_directory()) {
            files[path] = "/";
            continue;
        }
        std::ifstream file(entry.path(), std::ios::binary);
        files[path] =
            QByteArray::fromStdString(std::string(std::istreambuf_iterator<char>(file), {}));
    }
    return files;
}

QByteArrayList differences(const Snapshot& first, const Snapshot& second) {
    QByteArrayList paths;
    for (const QByteArray& path : first.keys() + second.keys()) {
        if (first.value(path) != second.value(path) && !paths.contains(path))
            paths.append(path);
    }
    return paths;
}
