#pragma once

#include <QString>

/// The first language that the session asks for (LC_ALL, LC_MESSAGES, LANG, and LANGUAGE as
/// gettext has it) with texts beside the phone's program at `program`, a code such as "de"; empty
/// where there is none.
QString sessionLanguage(const QString& program);

/// Gives the phone at `root` the session's language, unless its user has chosen one since that was
/// done last. An empty `language`, or settings that cannot be written, change nothing.
void followSessionLanguage(const QString& root, const QString& language);
