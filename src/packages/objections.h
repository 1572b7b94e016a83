#pragma once

class QString;
struct Package;

/// The key of the text that tells why a package is not to be installed; null where nothing is
/// against it.

/// For what it is: no regular file, at which the archiver would wait for ever, or one that would
/// write outside its folder. A file that is not there is the archiver's matter.
const char* objectionTo(const Package& package);

/// For what lies in the folder `folder` (of the phone) already, or because the file is not the one
/// any more that was read. Without a folder only the latter is looked at.
const char* objectionThere(const Package& package, const QString& folder);
