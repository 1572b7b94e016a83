#pragma once

#include "RES_ICON_Reader.h"
#include "ZKbMainWidget.h"
#include "storage.h"

#include <QSet>
#include <QTimer>

#include <memory>

class ZListBox;
class ZNavTabWidget;
class ZOptionsMenu;
class ZSoftKey;
struct FolderEntry;
struct Package;
struct PackageInfo;
struct ZPK_App;

/// The main window: the list of applications and the package browser, with their options menus.
/// Every user action is a slot, which asks, calls one operation and brings the list up to date. The
/// slots are spread over the files of this folder by subject.
class zBaseGUI : public ZKbMainWidget {
    Q_OBJECT

public:
    zBaseGUI();
    ~zBaseGUI() override;

    int getStepInScrollPanel() const override;
    bool showToolBar() const override;
    QSize sizeHint() const override;

    ZSoftKey* getSoftKey() const { return m_softKey; }

    ZOptionsMenu* getMainMenu() const { return m_mainMenu; }

    ZOptionsMenu* getPackageMenu() const { return m_packageMenu; }

    ZOptionsMenu* getMultiSelectMenu() const { return m_multiSelectMenu; }

    ZOptionsMenu* getSaveAsMenu() const { return m_saveAsMenu; }

    ZOptionsMenu* getViewMenu() const { return m_viewMenu; }

    /// The menu of the tab in front.
    ZOptionsMenu* getCurrentMenu() const;

    /// Fills the application list from `AppMap`; with `showProgress` after a new discovery, with
    /// the loading notice in the title. Always true.
    bool refreshList(bool showProgress);

    /// The application shown at `row` under the view filters of this moment; null where there is
    /// none.
    ZPK_App* getApp(int row);

    /// The application of the highlighted row; null where there is none.
    ZPK_App* currentApp();

    /// Shows a folder (absolute, or relative to the one on the screen) in the package browser; an
    /// empty `path` lists the one on the screen again.
    void loadFolder(const QString& path);

    ZListBox* appList() const { return m_appList; }

    ZListBox* packageList() const { return m_packageList; }

    ZNavTabWidget* tabWidget() const { return m_tabs; }

    /// Drops keys and touches on the way from an announcement to its work, and where the phone is
    /// no longer as the screen shows it.
    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    void quit();
    void firstRefresh();
    void tabSelected(const QString& label);
    void app_selected(int row);
    void zpk_highlighted(int row);
    void zpk_selected(int row);
    void zpkOptM_Install();
    void zpkOptM_GoToSD();
    void zpkOptM_GoToPH();
    void zpkOptM_ShowAll();
    void mainOptM_Move();
    void mainOptM_Rename();
    void mainOptM_Delete();
    void mainOptMMS_Move();
    void mainOptMMS_Delete();
    void mainOptMMS_SelectAll();
    void mainOptMMS_UnselectAll();
    void mainOptM_Properties();
    void mainOptM_RegisterAppMenu();
    void mainSubOptM_SaveAs_PH();
    void mainSubOptM_SaveAs_SD();
    void mainSubOptM_SaveAs_FM();
    void mainSubOptM_ViewSDPH();
    void mainSubOptM_ViewRegistered();
    void mainOptM_MultiSelect();
    void mainOptM_Refresh();
    void OptM_About();
    void cmd_InstallZPK();
    void cmd_Move(ZPK_App* app, int row);
    void cmd_MultiMove();
    bool cmd_Delete(ZPK_App* app);
    void cmd_MultiDelete();
    void cmd_SaveAs(ZPK_App* app, SAVE_LOCATION where);

private:
    /// The view submenu's check entries, read afresh each time.
    struct ViewFilter {
        bool card;
        bool phone;
        bool registeredOnly;

        bool shows(const ZPK_App& app) const;
    };

    /// Starts `work` when the question before it has left the screen. Until then nothing that the
    /// user does counts: it was meant for a screen that is about to change.
    void announce(void (zBaseGUI::*work)());
    /// The phone is for other programs, too, while nobody uses the window. Its next use takes it
    /// back: false where what the user sees was no longer true, or another program is at work.
    bool takePhone();
    void yieldPhone();
    void showChanges();
    void makeMenus();
    void makeSoftKey();
    /// Into the mode in which several rows can be selected, or out of it. The list is filled anew.
    void setMultiSelect(bool on);
    ZListBox* addListPage(const QString& iconName, const QString& label);
    ViewFilter viewFilter();
    struct RowIcons;
    RowIcons rowIcons() const;
    void appendApp(const ZPK_App& app, const RowIcons& icons);
    void enableMainMenu();
    void showEmptyNotice();
    int checkedCount() const;
    void showCheckedCount();
    int rowOf(const ZPK_App& app);
    void updateRow(int row, const ZPK_App& app);
    void removeRow(int row);
    void checkAll(bool checked);
    bool isMovedAppShown();
    /// Lists again where the folder on the screen was deleted or moved.
    void followBrowsedFolder();
    QString browserFolder() const;
    void appendEntry(const FolderEntry& entry);
    void confirmInstall();
    void markNextPackage();
    void markPackagesAgain();
    void readPackageMark(const QString& name);
    void showPackageMark(const QString& name, const PackageInfo& info);

    RES_ICON_Reader m_icons;
    ZNavTabWidget* m_tabs = nullptr;
    ZSoftKey* m_softKey = nullptr;
    ZOptionsMenu* m_mainMenu = nullptr;
    ZOptionsMenu* m_multiSelectMenu = nullptr;
    ZOptionsMenu* m_viewMenu = nullptr;
    ZOptionsMenu* m_saveAsMenu = nullptr;
    ZOptionsMenu* m_packageMenu = nullptr;
    ZListBox* m_appList = nullptr;
    ZListBox* m_packageList = nullptr;
    bool m_multiSelect = false;
    bool m_isAnnounced = false;
    bool m_hasPhone = true;
    bool m_isTaking =
        false; ///< the phone; what is pressed meanwhile is for the notice on the screen
    QTimer m_idle;
    QByteArray m_appsState;         ///< when the phone was yielded
    QSet<QString> m_markedPackages; ///< of the browser's folder, those looked at already
    bool m_isReadingPackage = false;
    std::unique_ptr<Package> m_confirmedPackage; ///< to be installed next; none where nothing is
};
