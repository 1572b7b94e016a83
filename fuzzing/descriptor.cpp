// Input: key|value|the text of a descriptor, which is read and gets the value.
#include "descriptor.h"

#include "Bytes.h"
#include "input.h"

#include <vector>

namespace {

constexpr qsizetype longestValue = 127;
constexpr qsizetype longestCharacter = 4;

/// What follows `prefix` in the first line that begins with it.
QByteArrayView restOfLine(QByteArrayView text, QByteArrayView prefix) {
    while (!text.isEmpty()) {
        const QByteArrayView line = takeLine(text);
        if (line.startsWith(prefix))
            return line.sliced(prefix.size());
    }
    return {};
}

/// The lines of `text` that hold something and do not begin with `key`.
std::vector<QByteArrayView> linesWithout(QByteArrayView key, QByteArrayView text) {
    std::vector<QByteArrayView> lines;
    while (!text.isEmpty()) {
        const QByteArrayView line = takeLine(text);
        if (!line.isEmpty() && !line.startsWith(key))
            lines.push_back(line);
    }
    return lines;
}

void checkValue(const QByteArray& value, QByteArrayView rest) {
    require(rest.startsWith(value), "a value is the beginning of what stands in the line");
    require(value.size() <= longestValue, "a value has its longest length");
    if (value.size() == rest.size())
        return;
    require(rest.size() > longestValue, "what fits is whole");
    require(value.size() >= longestValue - longestCharacter, "a value is as long as it can be");
    require(value.isValidUtf8() || !rest.isValidUtf8(), "no character is cut in two");
}

void checkRecord(const QByteArray& text) {
    const auto app = parseDescriptor(text);
    const QString fields[] = {app->name, app->author, app->version,
                              app->exec, app->icon,   app->comment};
    const char* prefixes[] = {
        "Name = ", "Author = ", "Version = ", "Exec = ", "Icon = ", "Comment = "};
    for (size_t i = 0; i < std::size(fields); ++i)
        checkValue(toBytes(fields[i]), restOfLine(text, prefixes[i]));
}

void checkReplacing(const QByteArray& text, const QByteArray& key, const QByteArray& value) {
    const QByteArray once = replaceKeyLine(text, key, value);
    require(replaceKeyLine(once, key, value) == once, "the same value again changes nothing");
    require(linesWithout(key, once) == linesWithout(key, text), "other lines stay");
    const auto all = linesWithout("\n", once);
    require(all.size() == linesWithout("\n", text).size(), "no line comes or goes");
    if (all.size() != linesWithout(key, once).size())
        checkValue(findValue(once, key + " = "), value);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QList<QByteArray> input = pieces(data, size, 3);
    checkRecord(input[2]);
    if (input[0].contains('\n') || input[1].contains('\n'))
        return 0;
    checkValue(findValue(input[2], input[0]), restOfLine(input[2], input[0]));
    checkReplacing(input[2], input[0], input[1]);
    return 0;
}
