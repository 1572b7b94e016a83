#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/// The text of an INI file: group headers "[name]" and "key = value" lines, UTF-8. Blanks around
/// group names, keys and values are not part of them. Lines that begin with "#" or ";" are
/// comments.
///
/// All that is not edited stays byte for byte where it was: other groups, unknown keys, order,
/// comments, blank lines, line ends. Where a group or a key stands twice, the first one is read.
class IniText {
public:
    explicit IniText(const QByteArray& text = QByteArray());

    bool hasGroup(const QString& group) const;

    /// The value of `key` in `group`, or `fallback` where either is missing.
    QString readEntry(const QString& group, const QString& key, const QString& fallback) const;

    /// Sets `key` in `group` to `value`; line breaks in it become blanks. A key that is there is
    /// changed in its place; a new key goes to the end of its group, a new group to the end of the
    /// file. `key` holds no "=" and does not begin as a comment or a header does.
    void writeEntry(const QString& group, const QString& key, const QString& value);
    void writeEntry(const QString& group, const QString& key, const char* value);
    void writeEntry(const QString& group, const QString& key, int value);

    /// Removes every group of that name: its header, its keys, the comments between them and the
    /// blank lines behind.
    void removeGroup(const QString& group);

    /// The names of all groups in file order, each once.
    QList<QString> groups() const;

    /// The text with its edits.
    QByteArray text() const;

protected:
    bool m_changed = false;

private:
    struct Section {
        QByteArray name;
        QList<QByteArray> lines; // with their line ends; the header is the first one
    };

    const QByteArray* findLine(const QString& group, const QString& key) const;
    QByteArray* findLine(const QString& group, const QString& key);
    Section& sectionForWriting(const QByteArray& name);
    void insertLine(Section& section, const QByteArray& content);
    void endLastLine();

    QByteArray m_lineEnd = "\n";
    QList<Section> m_sections; // the first one is what stands before the first header
    QHash<QByteArray, QList<qsizetype>> m_index; // name to places in m_sections
};
