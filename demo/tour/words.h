#pragma once

#include <QString>

/// Opens the language file of the walk, which the program should choose by itself. False when
/// there is none.
bool useLanguage(const QString& programFolder, const QString& code);

/// The text of `key` in that file.
QString word(const char* key);
