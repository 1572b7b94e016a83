// Input: a mount table.
#include "input.h"
#include "storage.h"

namespace {

constexpr qsizetype longestLine = 4000; // the system's own reader cuts longer ones

/// A name as the table writes it, with its blanks and backslashes in octal.
QByteArray decoded(QByteArray name) {
    QByteArray text;
    while (!name.isEmpty()) {
        qsizetype taken = 1;
        char byte = name.front();
        for (const auto& [code, meaning] :
             {std::pair("\\040", ' '), std::pair("\\011", '\t'), std::pair("\\012", '\n'),
              std::pair("\\134", '\\'), std::pair("\\\\", '\\')}) {
            if (!name.startsWith(code))
                continue;
            taken = qsizetype(qstrlen(code));
            byte = meaning;
        }
        text += byte;
        name.remove(0, taken);
    }
    return text;
}

QList<QByteArray> secondFields(const QByteArray& table) {
    QList<QByteArray> folders;
    for (QByteArray line : table.split('\n')) {
        QList<QByteArray> fields = line.replace('\t', ' ').split(' ');
        fields.removeAll(QByteArray());
        if (!fields.isEmpty() && !fields.first().startsWith('#'))
            folders.append(decoded(fields.value(1)));
    }
    return folders;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QByteArray table = pieces(data, size, 1).first();
    // The system's reader hides what it mounts by itself; a byte 0 ends a line, and then some.
    if (table.isEmpty() || table.contains('\0') || table.contains("autofs"))
        return 0;
    FILE* file = fmemopen(table.data(), size, "r");
    const QList<QByteArray> folders = mountPoints(file);
    fclose(file);
    if (table.size() < longestLine)
        require(folders == secondFields(table), "what is mounted stands in the second field");
    return 0;
}
