#include "words.h"

#include "ZConfig.h"

#include <QFileInfo>

#include <memory>

namespace {

/// One walk has one language, and every step of it has words.
std::unique_ptr<ZConfig> languageFile;

} // namespace

bool useLanguage(const QString& programFolder, const QString& code) {
    const QString path = QString("%1/quiver_%2.lng").arg(programFolder, code);
    languageFile = std::make_unique<ZConfig>(path, true);
    return QFileInfo::exists(path);
}

QString word(const char* key) {
    return languageFile->readEntry("WORDS", key, QString("(no text for %1)").arg(key));
}
