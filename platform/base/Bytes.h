#pragma once

#include <QByteArray>
#include <QString>

/// Text of `bytes` read as UTF-8. A byte that is not part of valid UTF-8 becomes the lone surrogate
/// U+DC00 + byte, so that `toBytes` gives back exactly what was read, whatever it was. File names
/// and the phone's INI files need that.
QString fromBytes(const QByteArray& bytes);

/// UTF-8 of `text`; the lone surrogates made by `fromBytes` become the bytes that they stand for.
QByteArray toBytes(const QString& text);
