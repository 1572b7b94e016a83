#include "agreement.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "ZConfig.h"
#include "appregistry.h"
#include "discovery.h"
#include "paths.h"
#include "settings.h"
#include "storage.h"

#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

// What every identifier that the program draws begins with.
const QString ownUuid = "8e10aded-f8ee-";

QString menuItems() {
    return ZConfig(hostPath(Path::userMenuTree), true).readEntry(MenuUuid, "Items", QString());
}

/// A value of the menu files is one line.
QString onOneLine(QString text) {
    return text.replace('\n', ' ').replace('\r', ' ');
}

bool isInMenuFiles(const ZPK_App& app) {
    const QString group = plainUuid(*app.uuid);
    const ZConfig installed(hostPath(Path::installedDb), true);
    return installed.readEntry(group, "Directory", QString()) == onOneLine(app.path).trimmed() &&
           installed.readEntry(group, "Name", QString()) == onOneLine(app.name).trimmed() &&
           installed.readEntry(group, "Icon", QString()).startsWith(onOneLine(app.path) + '/') &&
           menuItems().count(group + ';') == 1;
}

bool isInNoMenuFile(const ZPK_App& app) {
    const QString group = plainUuid(*app.uuid);
    return !ZConfig(hostPath(Path::installedDb), true).hasGroup(group) &&
           !menuItems().contains(group);
}

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
    for (const auto& [key, app] : AppMap) {
        const QString folder = app->path.mid(app->path.lastIndexOf('/') + 1);
        const QString place = appsFolder(app->location) + '/' + folder;
        const QByteArray descriptor = toBytes(hostPath(place + '/' + folder + ".cfg"));
        if (app->path != place || !fs::exists(descriptor.toStdString()))
            found.append("folder of " + key + ": " + app->path);
        const QByteArrayList row = {app->uuid->toByteArray(), app->name.toLatin1(),
                                    QByteArray::number(app->location),
                                    QByteArray::number(app->registeredInMenu)};
        if (query("SELECT UUID, Name, Location, (SELECT COUNT(*) FROM App_Menu WHERE app_id = id) "
                  "FROM AppReg WHERE PathName = ?",
                  toBytes(app->path)) != TableRows{row})
            found.append("database row of " + key);
        if (!(app->registeredInMenu ? isInMenuFiles(*app) : isInNoMenuFile(*app)))
            found.append("phone menu of " + key);
    }
    return found;
}

QStringList leftovers() {
    const auto size = qsizetype(AppMap.size());
    qsizetype registered = 0;
    for (const auto& [key, app] : AppMap)
        registered += app->registeredInMenu;
    const QStringList groups = ZConfig(hostPath(Path::installedDb), true).groups();
    const std::tuple<const char*, qsizetype, qsizetype> places[] = {
        {"folders", applicationsIn(Path::phoneApps) + applicationsIn(Path::cardApps), size},
        {"rows", query("SELECT 1 FROM AppReg").size(), size},
        {"links", query("SELECT 1 FROM App_Menu").size(), registered},
        {"groups", groups.filter(ownUuid).size(), registered},
        {"items", menuItems().count(ownUuid), registered}};
    QStringList found;
    for (const auto& [what, count, expected] : places) {
        if (count != expected)
            found.append(QString("%1: %2, not %3").arg(what).arg(count).arg(expected));
    }
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
        std::ifstream file(entry.is_directory() ? fs::path() : entry.path(), std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(file), {}};
        files[QByteArray::fromStdString(entry.path()).mid(folder.size())] =
            entry.is_directory() ? "/" : QByteArray::fromStdString(content);
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
