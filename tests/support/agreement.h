#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QStringList>

/// What the places that tell of an application (its folder, its record in `AppMap`, the database,
/// the phone's two menu files) say against each other; empty where all agree.
QStringList disagreements();

/// Which of these places hold more, or fewer, applications than `AppMap`.
QStringList leftovers();

using TableRows = QList<QByteArrayList>;

/// The rows of a query on the application database, read past the program's own connection.
TableRows query(const char* sql, const QByteArray& parameter = QByteArray());

/// Everything below a folder (of the machine): path to content, a folder's being "/".
using Snapshot = QMap<QByteArray, QByteArray>;
Snapshot snapshot(const QByteArray& folder);

/// The paths at which two of them differ.
QByteArrayList differences(const Snapshot& first, const Snapshot& second);
