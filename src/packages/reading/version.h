#pragma once

#include <QString>

/// Compares two versions as Debian does (epoch, upstream version and revision; "~" sorts before the
/// end, numbers by their value): negative where `a` is the older one, 0 where they are the same,
/// positive where it is the newer one.
int compareVersions(const QString& a, const QString& b);
