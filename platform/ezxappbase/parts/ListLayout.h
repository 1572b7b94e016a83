#pragma once

#include <QString>

/// How the rows of a list box are laid out.
class ListLayout {
public:
    /// `columns` as `ZListBox` takes them.
    explicit ListLayout(const QString& columns) : m_columns(columns) {}

    bool hasCheckBoxes() const { return m_columns.startsWith("%C"); }

    int iconColumn() const { return hasCheckBoxes() ? 1 : 0; }

    int textColumn() const { return iconColumn() + 1; }

    bool isCompact() const { return m_isCompact; }

    /// Pixels by which the highlighted row's name has moved to the left, to show all of it.
    int nameOffset() const { return m_nameOffset; }

protected:
    QString m_columns;
    bool m_isCompact = false;
    int m_nameOffset = 0;
};
