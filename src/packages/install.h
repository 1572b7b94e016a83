#pragma once

#include <QString>

struct Package;

/// Asks where to, then unpacks the application package while a notice is on the screen, and makes
/// the application folder's files executable, whether unpacking succeeded or not. Over an installed
/// application a failure gives the old version back. Failures are shown. False when the user
/// cancelled, or where the package was refused, does not fit or is not the one any more that was
/// read; nothing has happened then.
bool installZpk(const Package& package, bool quietOnSuccess);

/// Asks whether to install the application package at `path` (of the machine), then as
/// `installZpk`.
void installZpkFromConsole(const QString& path);

/// Asks whether and where to, and unpacks the skin package at `path` (of the machine).
void installZskFromConsole(const QString& path);
