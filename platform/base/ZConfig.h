#pragma once

#include "IniText.h"

/// An INI file of the phone. The files belong to the phone; a program edits a few of their lines,
/// as `IniText` does it.
class ZConfig : public IniText {
public:
    /// Reads the file at `path` (a path of the machine). A file that is missing, unreadable or not
    /// a regular file reads as an empty one. With `readOnly`, nothing is ever written.
    ZConfig(const QString& path, bool readOnly);

    /// Writes the file back where something changed, keeping its owner and mode: afterwards either
    /// the old file or the new one is there, whole. False when it cannot be written, or could not
    /// be read at the start, so that nothing unread is lost.
    bool flush();

    /// True where the file has been changed since it was read; nothing is written over that.
    bool isOutdated() const;

private:
    void load();

    QString m_path;
    QByteArray m_state; ///< of the file when it was read
    bool m_writable;
};
