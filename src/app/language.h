#pragma once

#include "ZConfig.h"

#include <QString>

#include <memory>

/// The language file in use; none until one has been chosen.
inline std::unique_ptr<ZConfig> LanguageConfig;

/// Chooses and opens the language file in `folder`, a folder of the machine. True when it is one
/// for the phone's own language; false when the English one was taken instead, or none was found.
bool selectLanguageFile(const QString& folder);

/// The code of the chosen file, such as "de" or "en_US"; "en" where there is none.
QString languageCode();

/// Reads the customization file in `folder`, a folder of the machine, into `ArchiverPath` and
/// `MenuUuid`. False when there is none.
bool loadCustomization(const QString& folder);

/// Sets the archiver, the language file and the menu folder as the files beside the program or,
/// where there are none, the phone's own say. The environment variable QUIVER_ARCHIVER stands above
/// them: the phone's files name an archiver of the phone, which the machine need not have.
void loadSettings();

/// The text of `key` in the phone's language; the key itself where no text is known.
QString tr(const char* key);

/// Makes Qt's own translation calls, those of the platform's dialogs among them, look texts up as
/// `tr` does. Needs the application object.
void installTranslator();
