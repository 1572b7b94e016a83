#pragma once

#include "packageinfo.h"

#include <QList>

/// Installing packages, for the commands that do it.

/// The package at `path` (of the machine), without its icon and, where `withDescriptor` is false,
/// without its descriptor, which takes the archiver another run.
Package readFile(const QString& path, bool withDescriptor);

/// As `readFile` for a package that is to be installed. None, with the failure told, where it
/// cannot be.
std::optional<Package> readForInstallation(const QString& path, bool withDescriptor);

bool isSkin(const Package& package);

struct Plan {
    Package package;
    QString folder; ///< of the phone; the package is unpacked into it
};

/// Unpacks the packages where nothing is against it, until Ctrl-C. Applications are entered into
/// the database, or what is known of those that they replace is brought in line. What was done, or
/// why it was not, is told.
void installAll(const QList<Plan>& plans);

/// Makes the files in the folder at `path` (of the machine) executable, as far as the umask allows.
void makeExecutable(const QString& path);
