#pragma once

#include <QByteArray>
#include <QString>

/// An old version waits under these names while it is replaced: NAME as ".NAME.before", and as
/// ".NAME.left" while what the new one lacks goes over to that. Where there was none, the empty
/// folder ".NAME.none" stands while the first one comes, and ".NAME.copy" while one comes from the
/// other storage; ".NAME.links" is on its way to be a ".NAME.before".
inline const QByteArray asideBefore = ".before";
inline const QByteArray asideLeft = ".left";
inline const QByteArray asideNone = ".none";
inline const QByteArray asideCopy = ".copy";
inline const QByteArray asideLinks = ".links";

/// The path in the folder `root` that `name` waits at, with one of these ends.
QByteArray asidePath(const QByteArray& root, const QByteArray& name, const QByteArray& end);

/// NAME of a name with that end; empty where it has another form.
QByteArray nameOfAside(const QByteArray& name, const QByteArray& end);

/// True for a folder whose name is short enough to be put aside.
bool canBePutAside(const QString& name);

/// True for a name that only such a folder may have.
bool isNameOfAside(const QString& name);
