#pragma once

#include "AM_Files.h"
#include "PhoneSettings.h"

#include <QString>

/// Every fixed path of the program, each as the phone knows it (`hostPath` gives the machine's).
namespace Path {

inline const QString mountTable = "/etc/mtab";
inline const QString commandLog = "/tmp/quiver_exec.log";
inline const QString platformSettings = phoneSettingsFile;
inline const QString installedDb = installedDbFile;
inline const QString userMenuTree = userMenuTreeFile;

inline const QString systemFolder = "/ezxlocal/quiver";
inline const QString database = "/ezxlocal/quiver/AppMan.db";
inline const QString menuEdit = "/ezxlocal/quiver/menu-edit";

inline const QString cardMount = "/mmc/mmca1";
inline const QString extMount = "/mmc/mmcb1";
inline const QString phoneFiles = "/ezxlocal/download/mystuff";
inline const QString phoneApps = "/ezxlocal/download/mystuff/quiver";
inline const QString cardApps = "/mmc/mmca1/quiver";
inline const QString phonePackages = "/ezxlocal/download/mystuff/zpk_files";
inline const QString cardPackages = "/mmc/mmca1/zpk_files";
inline const QString phoneSkins = "/ezxlocal/download/mystuff/skins";
inline const QString cardSkins = "/mmc/mmca1/skins";
inline const QString extSkins = "/mmc/mmcb1/skins";

} // namespace Path
