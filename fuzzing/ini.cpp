// Input: group|key|value|the text of an INI file, which is read and edited.
#include "IniText.h"

#include "Bytes.h"
#include "input.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace {

using Entries = std::map<std::pair<QByteArrayView, QByteArrayView>, QByteArrayView>;

const QByteArray byteOrderMark = "\xEF\xBB\xBF";

QByteArray onOneLine(QByteArray text) {
    return text.replace("\r\n", " ").replace('\n', ' ').replace('\r', ' ').trimmed();
}

bool isHeader(QByteArrayView trimmed) {
    return trimmed.size() > 1 && trimmed.startsWith('[') && trimmed.endsWith(']');
}

/// The first value of every key in every group of `text`, read in the plainest way.
Entries entriesOf(QByteArrayView text) {
    Entries entries;
    std::optional<QByteArrayView> group;
    bool isFirst = true;
    while (!text.isEmpty()) {
        QByteArrayView line = takeLine(text).trimmed();
        if (isFirst && line.startsWith(byteOrderMark))
            line = line.sliced(byteOrderMark.size()).trimmed();
        isFirst = false;
        const qsizetype equals = line.indexOf('=');
        if (isHeader(line))
            group = line.sliced(1, line.size() - 2).trimmed();
        else if (group && equals >= 0 && !line.startsWith('#') && !line.startsWith(';'))
            entries.insert(
                {{*group, line.first(equals).trimmed()}, line.sliced(equals + 1).trimmed()});
    }
    return entries;
}

bool canBeKey(const QByteArray& key) {
    return !key.contains('=') && !key.startsWith('#') && !key.startsWith(';') &&
           !key.startsWith('[');
}

/// What changes lies within one line, or between two.
bool differInOneLine(const QByteArray& before, const QByteArray& after) {
    const auto head = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto tail = std::mismatch(before.rbegin(), std::make_reverse_iterator(head.first),
                                    after.rbegin(), std::make_reverse_iterator(head.second));
    return std::find(head.first, tail.first.base(), '\n') == tail.first.base();
}

/// `part` holds nothing but lines of `whole`, in their order.
bool areLinesOf(QByteArrayView part, QByteArrayView whole) {
    while (!part.isEmpty()) {
        const QByteArrayView line = takeLine(part);
        bool isThere = false;
        while (!isThere && !whole.isEmpty())
            isThere = takeLine(whole) == line;
        if (!isThere)
            return false;
    }
    return true;
}

/// The comments right above a header, which tell of the group below.
QByteArray commentsOnGroups(QByteArrayView text) {
    QByteArray comments;
    QByteArrayView before;
    while (!text.isEmpty()) {
        const QByteArrayView line = takeLine(text);
        if (isHeader(line.trimmed()) && before.trimmed().startsWith('#'))
            comments.append(before).append('\n');
        before = line;
    }
    return comments;
}

/// A group, a key and its value, as a file holds them.
struct Edit {
    QByteArray group;
    QByteArray key;
    QByteArray value;
};

void write(IniText& ini, const QList<QByteArray>& input) {
    ini.writeEntry(fromBytes(input[0]), fromBytes(input[1]), fromBytes(input[2]));
}

void checkReading(const QByteArray& text, const Entries& entries) {
    const IniText ini(text);
    require(ini.text() == text, "a text that is only read stays as it is");
    for (const auto& [place, value] : entries) {
        const QString group = fromBytes(place.first.toByteArray());
        const QString key = fromBytes(place.second.toByteArray());
        require(toBytes(ini.readEntry(group, key, "none")) == value, "a key's first value is read");
    }
}

void checkWriting(const QByteArray& text, Entries entries, const QList<QByteArray>& input,
                  const Edit& edit) {
    IniText ini(text);
    write(ini, input);
    const QByteArray written = ini.text();
    if (entries.contains({edit.group, edit.key}))
        require(written.count('\n') == text.count('\n') &&
                    written.count("\r\n") == text.count("\r\n"),
                "a line keeps its end");
    entries[{edit.group, edit.key}] = edit.value;
    require(entriesOf(written) == entries, "a value is read back, all others stay");
    require(differInOneLine(text, written), "an edit touches one line");
    write(ini, input);
    require(ini.text() == written, "what is there is not written again");
    IniText later(written);
    write(later, input);
    require(later.text() == written, "what stands in the file is not written again");
}

void checkRemoval(const QByteArray& text, Entries entries, const QList<QByteArray>& input,
                  const Edit& edit) {
    const QString group = fromBytes(edit.group);
    IniText ini(text);
    ini.removeGroup(group);
    const QByteArray rest = ini.text();
    std::erase_if(entries, [&](const auto& entry) { return entry.first.first == edit.group; });
    require(entriesOf(rest) == entries, "a removed group goes, all others stay");
    require(areLinesOf(rest, text), "a removal takes whole lines");
    require(areLinesOf(commentsOnGroups(text), rest), "a group keeps the comment above it");
    require(!IniText(rest).hasGroup(group), "a removed group is gone");
    write(ini, input);
    const QByteArray written = ini.text();
    entries[{edit.group, edit.key}] = edit.value;
    require(entriesOf(written) == entries, "a group can come again");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QList<QByteArray> input = pieces(data, size, 4);
    const QByteArray& text = input[3];
    const Entries entries = entriesOf(text);
    checkReading(text, entries);
    const Edit edit = {onOneLine(input[0]), onOneLine(input[1]), onOneLine(input[2])};
    // A mark inside the text would come to the front, and mean something there, by a removal.
    if (!canBeKey(edit.key) || text.indexOf(byteOrderMark, 1) > 0)
        return 0;
    checkWriting(text, entries, input, edit);
    checkRemoval(text, entries, input, edit);
    return 0;
}
