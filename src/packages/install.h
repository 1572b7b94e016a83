#pragma once

#include <QString>

#include <optional>

class ZPopup;
struct Package;
struct PackageInfo;

/// Asks whether to install the package at `path` (of the machine), telling what is known of it; one
/// that would write outside its folder is refused.
bool askToInstall(const QString& title, const QString& text, const QString& path,
                  const std::optional<PackageInfo>& info);

/// Asks where to, then unpacks the application package while `pleaseWait` is on the screen, and
/// makes the application folder's files executable, whether unpacking succeeded or not. Over an
/// installed application a failure gives the old version back. Failures are shown. False when the
/// user cancelled, or where the package was refused, does not fit or is not the one any more that
/// was read; nothing has happened then.
bool installZpk(const Package& package, ZPopup& pleaseWait, bool quietOnSuccess);

/// Asks whether to install the application package at `path`, then as `installZpk`.
void installZpkFromConsole(const QString& path, ZPopup& pleaseWait);

/// Asks whether and where to, and unpacks the skin package at `path` (of the machine).
void installZskFromConsole(const QString& path, ZPopup& pleaseWait);
