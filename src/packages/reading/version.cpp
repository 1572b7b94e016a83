#include "version.h"

#include "Bytes.h"

namespace {

struct Version {
    QByteArray epoch;
    QByteArray upstream;
    QByteArray revision;
};

Version split(const QString& text) {
    QByteArray rest = toBytes(text.trimmed());
    Version version;
    const qsizetype colon = rest.indexOf(':');
    version.epoch = rest.left(qMax<qsizetype>(colon, 0));
    rest = rest.mid(colon + 1);
    const qsizetype dash = rest.lastIndexOf('-');
    version.upstream = dash < 0 ? rest : rest.left(dash);
    version.revision = dash < 0 ? QByteArray() : rest.mid(dash + 1);
    return version;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The rank of the character at `at` among those that are not digits: "~" sorts before the end,
/// letters before the others.
int rank(const QByteArray& text, qsizetype at) {
    if (at >= text.size() || isDigit(text.at(at)))
        return 0;
    const char c = text.at(at);
    if (c == '~')
        return -1;
    return isLetter(c) ? c : static_cast<uchar>(c) + 256;
}

/// The digits from `at` on, without zeros before them; `at` is behind them afterwards.
QByteArray takeNumber(const QByteArray& text, qsizetype& at) {
    const qsizetype start = at;
    while (at < text.size() && isDigit(text.at(at)))
        ++at;
    qsizetype first = start;
    while (first < at && text.at(first) == '0')
        ++first;
    return text.mid(first, at - first);
}

int compareNumbers(const QByteArray& a, const QByteArray& b) {
    return a.size() != b.size() ? int(a.size() - b.size()) : a.compare(b);
}

int compareParts(const QByteArray& a, const QByteArray& b) {
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() || j < b.size()) {
        while ((i < a.size() && !isDigit(a.at(i))) || (j < b.size() && !isDigit(b.at(j)))) {
            const int difference = rank(a, i) - rank(b, j);
            if (difference != 0)
                return difference;
            ++i;
            ++j;
        }
        const int difference = compareNumbers(takeNumber(a, i), takeNumber(b, j));
        if (difference != 0)
            return difference;
    }
    return 0;
}

} // namespace

int compareVersions(const QString& a, const QString& b) {
    const Version left = split(a);
    const Version right = split(b);
    for (const auto part : {&Version::epoch, &Version::upstream, &Version::revision}) {
        const int difference = compareParts(left.*part, right.*part);
        if (difference != 0)
            return difference;
    }
    return 0;
}
