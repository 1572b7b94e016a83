#pragma once

/// The files of the application manager, as the phone knows them: the applications that were
/// installed, and those that the phone came with.
constexpr const char* installedDbFile = "/ezxlocal/download/appwrite/am/InstalledDB";
constexpr const char* builtInDbFile = "/ezx_user/download/appwrite/am/BuiltInDB";
