#include "aside.h"

#include "Bytes.h"

#include <climits>

QByteArray asidePath(const QByteArray& root, const QByteArray& name, const QByteArray& end) {
    return root + "/." + name + end;
}

QByteArray nameOfAside(const QByteArray& name, const QByteArray& end) {
    return name.startsWith('.') && name.endsWith(end) ? name.mid(1, name.size() - 1 - end.size())
                                                      : QByteArray();
}

bool canBePutAside(const QString& name) {
    return asidePath(QByteArray(), toBytes(name), asideBefore).size() <= NAME_MAX;
}

bool isNameOfAside(const QString& name) {
    const QByteArray bytes = toBytes(name);
    const auto endsSo = [&](const QByteArray& end) { return !nameOfAside(bytes, end).isEmpty(); };
    return endsSo(asideBefore) || endsSo(asideLeft) || endsSo(asideNone) || endsSo(asideCopy) ||
           endsSo(asideLinks);
}
