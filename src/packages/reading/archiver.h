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

/// Bytes of memory that this machine has.
qint64 machineMemory();

/// What a command that packs `bytes` bytes must end with on a machine with `memory` bytes, where
/// the archiver would otherwise ask for more than there is and do nothing; empty where there is
/// enough.
QString smallMemorySwitch(qint64 bytes, qint64 memory);

/// As `packCommand`, but the same files give the same package, whenever they were written and
/// however many processors there are.
QString packExactlyCommand(const QString& package, const QString& name);
