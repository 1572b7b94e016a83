#pragma once

#include <QString>

/// The program-wide settings. Each is set once at start-up and read everywhere.

/// File name of the program; it names the language and customization files.
inline QString AppName;

/// Folder of the program on the machine, as it was started; empty where it was started by its bare
/// name.
inline QString AppPath;

/// The archiver where no customization file names another.
inline const QString defaultArchiver = "/usr/local/Overhaul/p7zip/7z";

/// The 7z program, a path of the machine.
inline QString ArchiverPath;

/// The folder of the phone's menu that receives registered applications: a UUID without braces.
inline QString MenuUuid = "7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5";
