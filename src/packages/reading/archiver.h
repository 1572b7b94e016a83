#pragma once

#include <QString>

/// The command lines of the archiver, for the shell. Paths are the machine's and must fit in single
/// quotes.

/// Unpacks `package` into `folder`; into the working directory where that is empty.
QString unpackCommand(const QString& package, const QString& folder);

/// Tells whether `package` can be unpacked whole.
QString testCommand(const QString& package);

/// Packs the folder `name` of the working directory into `package`.
QString packCommand(const QString& package, const QString& name);

/// As `packCommand`, but the same files give the same package, whenever they were written and
/// however many processors there are.
QString packExactlyCommand(const QString& package, const QString& name);
