#pragma once

#include <QString>

class ZPopup;

/// Asks where to, then unpacks the application package at `path` (of the machine) while
/// `pleaseWait` is on the screen, and makes the application folder's files executable, whether
/// unpacking succeeded or not. Failures are shown. False when the user cancelled; nothing has
/// happened then.
bool installZpk(const QString& path, ZPopup& pleaseWait, bool quietOnSuccess);

/// Asks whether to install the application package at `path`, then as `installZpk`.
void installZpkFromConsole(const QString& path, ZPopup& pleaseWait);

/// Asks whether and where to, and unpacks the skin package at `path` (of the machine).
void installZskFromConsole(const QString& path, ZPopup& pleaseWait);
