#pragma once

class QString;
struct Package;
struct ZPK_App;

/// The key of the text that tells why a package is not to be installed; null where nothing is
/// against it.

/// For what it is: no regular file, at which the archiver would wait for ever, or one that would
/// write outside its folder. A file that is not there is the archiver's matter.
const char* objectionTo(const Package& package);

/// For what lies in the folder `folder` (of the phone) already, or because the file is not the one
/// any more that was read. Without a folder only the latter is looked at.
const char* objectionThere(const Package& package, const QString& folder);

/// The key of the text that tells why the system would not run the application's program; null
/// where it would, or where the command line does not plainly name a file.
const char* objectionToLaunch(const ZPK_App& app);
