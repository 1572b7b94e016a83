#pragma once

/// The files of the application manager, as the phone knows them: the applications that were
/// installed, those that the phone came with, and the folders of the menu.
constexpr const char* installedDbFile = "/ezxlocal/download/appwrite/am/InstalledDB";
constexpr const char* builtInDbFile = "/ezx_user/download/appwrite/am/BuiltInDB";
constexpr const char* userMenuTreeFile = "/ezxlocal/download/appwrite/am/UserMenuTree";
