#include "Bytes.h"
#include "PhoneRoot.h"
#include "Waiting.h"
#include "ZListBox.h"
#include "descriptor.h"
#include "dialogs.h"
#include "discovery.h"
#include "language.h"
#include "launch.h"
#include "menu.h"
#include "objections.h"
#include "operations.h"
#include "paths.h"
#include "shell.h"
#include "zBaseGUI.h"

#include <QApplication>

#include <cstdio>

namespace {

bool confirm(const char* textKey, const QString& name = QString()) {
    const QString text = tr(textKey);
    return askYesNo(tr("POP_CONFIRM_TITLE"), name.isNull() ? text : text + '\n' + name);
}

/// The application after a yes; null after a no, or where it is not there any more.
ZPK_App* confirmed(const char* textKey, const ZPK_App& app) {
    const QString path = app.path;
    return confirm(textKey, app.shownName()) ? appAt(path) : nullptr;
}

void tellIfStopped(int number, int total) {
    if (number < total)
        showNotice(tr("POP_CANCELLED_TITLE"),
                   tr("POP_STOPPED_TEXT").arg(QString::number(number), QString::number(total)));
}

} // namespace

void zBaseGUI::quit() {
    puts("DEBUG:: SoftKey Quit");
    if (m_multiSelect) {
        setMultiSelect(false);
        return;
    }
    if (menuChanged && confirm("POP_CONFIRM_REFRESH_MENU")) {
        QString restart = "busybox killall am flawplayer messaging";
        runShellCommand(restart, false);
    }
    qApp->quit();
}

void zBaseGUI::app_selected(int) {
    const ZPK_App* app = m_multiSelect ? nullptr : currentApp();
    if (!app)
        return;
    const QString command = hostPath(app->path) + '/' + app->exec + " &";
    printf("DEBUG:: %s\n", toBytes(command).constData());
    const QString title = ::tr("POP_ERROR_TITLE") + ": " + app->shownName();
    if (const char* objection = objectionToLaunch(*app))
        showFailure(title, ::tr(objection));
    else
        launch(command, this, [title](const QString& words) { showFailure(title, words); });
}

void zBaseGUI::mainOptM_Move() {
    ZPK_App* app = currentApp();
    if (!app)
        return;
    app = confirmed("POP_CONFIRM_MOVE_TEXT", *app);
    if (!app)
        return;
    cmd_Move(app, -1);
    puts("DEBUG:: Move APP");
}

void zBaseGUI::mainOptM_Delete() {
    ZPK_App* app = currentApp();
    if (!app)
        return;
    app = confirmed("POP_CONFIRM_DELETE_TEXT", *app);
    if (!app)
        return;
    const int row = rowOf(*app);
    // What could not be deleted keeps its row.
    if (cmd_Delete(app))
        removeRow(row);
    puts("DEBUG:: Delete APP");
}

void zBaseGUI::mainOptM_RegisterAppMenu() {
    ZPK_App* app = currentApp();
    if (!app)
        return;
    const bool isRegistered = app->registeredInMenu;
    app = confirmed(
        isRegistered ? "POP_CONFIRM_UNREGISTER_APP_MENU" : "POP_CONFIRM_REGISTER_APP_MENU", *app);
    if (!app || refuseWithoutFolder(*app))
        return;
    if (const QString obstacle = menuObstacle(); !obstacle.isEmpty())
        return showError(obstacle);
    isRegistered ? unregisterAppFromMenu(*app) : registerAppInMenu(*app);
    if (isInMenuFiles(*app->uuid) == isRegistered)
        showError(::tr("POP_ERROR_NOT_WRITTEN_TEXT"));
    else
        showNotice(::tr("POP_OK_TITLE"), ::tr("POP_OK_TEXT"));
    refreshList(false);
    if (!isRegistered)
        puts("DEBUG:: Register APP to Menu");
}

void zBaseGUI::mainOptM_Rename() {
    ZPK_App* app = currentApp();
    if (!app)
        return;
    const QString path = app->path;
    const std::optional<QString> name =
        askText(::tr("POP_RENAME_TITLE"), ::tr("POP_RENAME_TEXT") + ' ' + app->shownName(),
                app->name, int(longestValue));
    app = appAt(path);
    if (!name || !app)
        return;
    renameApp(*app, *name);
    updateRow(rowOf(*app), *app);
}

void zBaseGUI::mainSubOptM_SaveAs_PH() {
    cmd_SaveAs(currentApp(), SAVE_PH);
    puts("DEBUG:: Save APP to PH");
}

void zBaseGUI::mainSubOptM_SaveAs_SD() {
    cmd_SaveAs(currentApp(), SAVE_SD);
    puts("DEBUG:: Save APP to SD");
}

void zBaseGUI::mainSubOptM_SaveAs_FM() {
    cmd_SaveAs(currentApp(), SAVE_FM);
    loadFolder(QString());
    puts("DEBUG:: Save APP to FM");
}

void zBaseGUI::OptM_About() {
    const QString version = QString("Quiver v" QUIVER_VERSION " (%1)\n\n").arg(__DATE__);
    showNotice(::tr("FT_ABOUT"), version + ::tr("TXT_ABOUT"), "Mpkgbox_Small.g");
    puts("DEBUG:: About Quiver");
}

void zBaseGUI::cmd_Move(ZPK_App* app, int row) {
    if (!app)
        return;
    if (!m_multiSelect) {
        showWorking(app->shownName());
        row = row == -1 ? rowOf(*app) : row;
    }
    if (moveApp(*app, m_multiSelect)) {
        if (row == -1)
            refreshList(false);
        else if (isMovedAppShown())
            updateRow(row, *app);
        else
            removeRow(row);
    }
    if (!m_multiSelect)
        hideWorking();
    followBrowsedFolder();
}

bool zBaseGUI::cmd_Delete(ZPK_App* app) {
    if (!app)
        return false;
    if (!m_multiSelect)
        showWorking(app->shownName());
    const bool isDeleted = deleteApp(*app, m_multiSelect);
    if (!m_multiSelect)
        hideWorking();
    followBrowsedFolder();
    return isDeleted;
}

void zBaseGUI::cmd_SaveAs(ZPK_App* app, SAVE_LOCATION where) {
    if (!app || (where == SAVE_SD && !SdPresent))
        return;
    printf("DEBUG::  Save Location : %d \n", where);
    followBrowsedFolder();
    const QString folders[] = {Path::phonePackages, Path::cardPackages, browserFolder()};
    const FolderGuard guard;
    showWorking(app->shownName());
    saveApp(*app, hostPath(folders[where]), m_multiSelect);
    hideWorking();
}

void zBaseGUI::mainOptMMS_Move() {
    if (m_appList->count() == 0 || !confirm("POP_CONFIRM_MOVE_MULTIPLE_TEXT"))
        return;
    announce(&zBaseGUI::cmd_MultiMove);
    puts("DEBUG:: Move Multiple APP");
}

void zBaseGUI::mainOptMMS_Delete() {
    if (m_appList->count() == 0 || !confirm("POP_CONFIRM_DELETE_MULTIPLE_TEXT"))
        return;
    announce(&zBaseGUI::cmd_MultiDelete);
    puts("DEBUG:: Delete Multiple APP");
}

void zBaseGUI::mainOptMMS_SelectAll() {
    checkAll(true);
}

void zBaseGUI::mainOptMMS_UnselectAll() {
    checkAll(false);
}

void zBaseGUI::checkAll(bool checked) {
    for (int row = 0; row < m_appList->count(); ++row)
        m_appList->item(row)->setChecked(checked);
}

/// Rows stay where they are during the batch, so they are counted on; the record of a row is found
/// by what has gone before it.
void zBaseGUI::cmd_MultiDelete() {
    const int rows = m_appList->count();
    if (rows == 0)
        return;
    showWorking(::tr("APP_DELETE"));
    const int total = checkedCount();
    WorkCancel cancel(WorkCancel::AfterPart);
    int number = 0;
    int removed = 0;
    for (int i = 0; i < rows && !cancel.isRequested(); ++i) {
        ZPK_App* app = m_appList->item(i)->isChecked() ? getApp(i - removed) : nullptr;
        if (!app)
            continue;
        const WorkPart part(++number, total);
        const ErrorSubject subject(app->shownName());
        printf("DEBUG:: Delete APP (%s)\n", toBytes(app->name).constData());
        // Counted only when it is really gone, or the next row would be taken for another one.
        removed += cmd_Delete(app) ? 1 : 0;
    }
    hideWorking();
    setMultiSelect(false);
    tellIfStopped(number, total);
}

/// A moved application may leave the list, and its row with it.
void zBaseGUI::cmd_MultiMove() {
    if (m_appList->count() == 0)
        return;
    showWorking(::tr("APP_MOVE"));
    const int total = checkedCount();
    WorkCancel cancel(WorkCancel::AfterPart);
    int number = 0;
    for (int row = 0; row < m_appList->count() && !cancel.isRequested();) {
        const int before = m_appList->count();
        ZPK_App* app = m_appList->item(row)->isChecked() ? getApp(row) : nullptr;
        if (app) {
            const WorkPart part(++number, total);
            const ErrorSubject subject(app->shownName());
            printf("DEBUG:: Move APP (%s)\n", toBytes(app->name).constData());
            cmd_Move(app, row);
        }
        if (m_appList->count() == before)
            ++row;
    }
    hideWorking();
    setMultiSelect(false);
    tellIfStopped(number, total);
}
