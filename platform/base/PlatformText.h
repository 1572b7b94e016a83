#pragma once

#include <QCoreApplication>

/// The text of a label that the platform itself shows: the running program's translation of `key`
/// (context "ezxappbase"), or `english` where it has none.
inline QString platformText(const char* key, const char* english) {
    const QString text = QCoreApplication::translate("ezxappbase", key);
    return text == QLatin1String(key) ? QString::fromLatin1(english) : text;
}
