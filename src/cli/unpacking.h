#pragma once

#include "packageinfo.h"

/// Installing packages, for the commands that do it.

/// The package at `path` (of the machine), without its icon and, where `withDescriptor` is false,
/// without its descriptor, which takes the archiver another run.
Package readFile(const QString& path, bool withDescriptor);

/// As `readFile` for a package that is to be installed. None, with the failure told, where it
/// cannot be.
std::optional<Package> readForInstallation(const QString& path, bool withDescriptor);

bool isSkin(const Package& package);

/// Unpacks the package into `folder` (of the phone), where nothing is against it. An application is
/// entered into the database, or what is known of the one that it replaces is brought in line. What
/// was done, or why it was not, is told.
void installPackage(const Package& package, const QString& folder);

/// Makes the files in the folder at `path` (of the machine) executable, as far as the umask allows.
void makeExecutable(const QString& path);
