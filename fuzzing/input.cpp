#include "input.h"

#include <cstdio>
#include <cstdlib>

QList<QByteArray> pieces(const uint8_t* data, size_t size, qsizetype count) {
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QList<QByteArray> found;
    qsizetype start = 0;
    while (found.size() < count - 1) {
        const qsizetype bar = input.indexOf('|', start);
        const qsizetype end = bar < 0 ? input.size() : bar;
        found.append(input.mid(start, end - start));
        start = end + 1;
    }
    found.append(input.mid(start));
    return found;
}

QByteArrayView takeLine(QByteArrayView& text) {
    const qsizetype end = text.indexOf('\n');
    const QByteArrayView line = text.first(end < 0 ? text.size() : end);
    text = text.sliced(end < 0 ? text.size() : end + 1);
    return line;
}

void require(bool holds, const char* what) {
    if (holds)
        return;
    fprintf(stderr, "Broken: %s\n", what);
    abort();
}
