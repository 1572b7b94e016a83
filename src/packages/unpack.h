#pragma once

#include <QString>

struct Package;

/// Unpacks the package into `folder` of the phone; without a folder the archiver unpacks into the
/// working directory. What it replaces is given back where it fails or is cancelled. Shows how it
/// ended; nothing with `quietOnSuccess` where it succeeded.
bool unpack(const Package& package, const QString& folder, bool quietOnSuccess);
