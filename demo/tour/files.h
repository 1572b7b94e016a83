#pragma once

#include "walk.h"

/// What there is in the phone's files. Every path is the phone's own.

/// A file with something in it.
Check isFile(const QString& path);

Check isExecutable(const QString& path);

/// The folder holds just these entries.
Check isFolderOf(const QString& path, const QStringList& names);

/// The descriptor's first line gives the application this name.
Check descriptorNames(const QString& path, const QString& name);

/// The phone's registry knows the application `name` of `folder`, and the program's menu folder
/// holds it once.
Check inMenu(const QString& name, const QString& folder);

/// The registry and the program's menu folder hold what the demo phone has come with.
Check menuIsAsItWas();
