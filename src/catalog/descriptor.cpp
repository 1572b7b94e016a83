#include "descriptor.h"

#include "Bytes.h"
#include "PhoneRoot.h"
#include "RegularFile.h"

#include <QList>

#include <cstdio>

namespace {

constexpr qint64 largestFile = 16 * 1024 * 1024;

/// `value` cut to the longest value that a descriptor may hold, without half a character at its
/// end.
QByteArray limited(const QByteArray& value) {
    if (value.size() <= longestValue)
        return value;
    qsizetype end = longestValue;
    while (end > longestValue - 4 && (static_cast<uchar>(value.at(end)) & 0xC0) == 0x80)
        --end;
    return value.left(end);
}

/// The whole file at `path`, which messages call `name`.
std::optional<QByteArray> readFile(const QString& path, const QString& name) {
    QByteArray content;
    switch (readRegularFile(path, largestFile, content)) {
    case Reading::Unreadable:
        printf("DEBUG:: Error while opening file (%s)\n", toBytes(name).constData());
        return std::nullopt;
    case Reading::TooLarge:
        puts("DEBUG:: Error while allocating memory for file");
        return std::nullopt;
    case Reading::Partial:
        printf("DEBUG:: Error while reading file (%s)\n", toBytes(name).constData());
        break;
    case Reading::Whole:
        break;
    }
    return content;
}

} // namespace

std::optional<QByteArray> readWholeFile(const QString& path) {
    return readFile(path, path);
}

QByteArray findValue(const QByteArray& text, const QByteArray& prefix) {
    qsizetype start = 0;
    while (!QByteArrayView(text).sliced(start).startsWith(prefix)) {
        start = text.indexOf('\n', start) + 1;
        if (start == 0)
            return QByteArray();
    }
    const qsizetype end = text.indexOf('\n', start);
    const qsizetype value = start + prefix.size();
    return limited(text.mid(value, end < 0 ? -1 : end - value));
}

QByteArray replaceKeyLine(const QByteArray& text, const QByteArray& key, const QByteArray& value) {
    QByteArray newText;
    for (const QByteArray& line : text.split('\n')) {
        if (line.startsWith(key) && !line.isEmpty())
            newText += key + " = " + value + '\n';
        else if (!line.isEmpty())
            newText += line + '\n';
    }
    return newText;
}

std::unique_ptr<ZPK_App> parseDescriptor(const QByteArray& text) {
    const auto value = [&](const char* prefix) { return fromBytes(findValue(text, prefix)); };
    auto app = std::make_unique<ZPK_App>();
    app->name = value("Name = ");
    app->author = value("Author = ");
    app->version = value("Version = ");
    app->exec = value("Exec = ");
    app->icon = value("Icon = ");
    app->comment = value("Comment = ");
    return app;
}

std::unique_ptr<ZPK_App> readDescriptor(const QString& folderName) {
    return folderName.isEmpty() ? nullptr : readDescriptor(currentFolder(), folderName);
}

std::unique_ptr<ZPK_App> readDescriptor(const QString& parent, const QString& folderName) {
    const QString file = folderName + ".cfg";
    const std::optional<QByteArray> text = readFile(folderName + '/' + file, file);
    if (!text)
        return nullptr;
    auto app = parseDescriptor(*text);
    app->path = parent + '/' + folderName;
    return app;
}
