#include "IniText.h"

#include "Bytes.h"

namespace {

/// Editors of some desktops put it before the first line.
const char byteOrderMark[] = "\xEF\xBB\xBF";

bool isComment(QByteArrayView trimmed) {
    return trimmed.startsWith('#') || trimmed.startsWith(';');
}

bool isHeader(QByteArrayView trimmed) {
    return trimmed.size() >= 2 && trimmed.startsWith('[') && trimmed.endsWith(']');
}

/// Place of the "=" in a "key = value" line, -1 in any other line.
qsizetype equalsSign(QByteArrayView line) {
    const QByteArrayView trimmed = line.trimmed();
    return isComment(trimmed) || isHeader(trimmed) ? -1 : line.indexOf('=');
}

QByteArrayView keyOf(QByteArrayView line) {
    return line.first(qMax<qsizetype>(equalsSign(line), 0)).trimmed();
}

QByteArrayView valueOf(QByteArrayView line) {
    return line.sliced(equalsSign(line) + 1).trimmed();
}

QByteArray lineEndOf(QByteArrayView line) {
    if (line.endsWith("\r\n"))
        return "\r\n";
    return line.endsWith('\n') ? "\n" : "";
}

/// Place behind the last key of a section's lines, or behind its header where it has none: what
/// follows (blank lines, a comment above the next header) is not the group's own.
qsizetype endOfKeys(const QList<QByteArray>& lines) {
    qsizetype end = lines.size();
    while (end > 1 && equalsSign(lines.at(end - 1)) < 0)
        --end;
    return end;
}

/// As `endOfKeys`, with the blank lines that set the group apart from the next one.
qsizetype endOfGroup(const QList<QByteArray>& lines) {
    qsizetype end = endOfKeys(lines);
    while (end < lines.size() && lines.at(end).trimmed().isEmpty())
        ++end;
    return end;
}

QByteArray onOneLine(const QString& text) {
    return toBytes(text).replace("\r\n", " ").replace('\n', ' ').replace('\r', ' ');
}

} // namespace

IniText::IniText(const QByteArray& text) {
    m_sections.append(Section());
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype newline = text.indexOf('\n', start);
        const qsizetype next = newline < 0 ? text.size() : newline + 1;
        const QByteArray line = text.mid(start, next - start);
        QByteArrayView trimmed = QByteArrayView(line).trimmed();
        if (start == 0 && trimmed.startsWith(byteOrderMark))
            trimmed = trimmed.sliced(qstrlen(byteOrderMark)).trimmed();
        if (isHeader(trimmed)) {
            const QByteArray name = trimmed.sliced(1, trimmed.size() - 2).trimmed().toByteArray();
            m_index[name].append(m_sections.size());
            m_sections.append(Section{name, {}});
        }
        if (start == 0 && newline >= 0)
            m_lineEnd = lineEndOf(line);
        m_sections.last().lines.append(line);
        start = next;
    }
}

bool IniText::hasGroup(const QString& group) const {
    return m_index.contains(toBytes(group).trimmed());
}

QList<QString> IniText::groups() const {
    QList<QString> names;
    for (qsizetype i = 1; i < m_sections.size(); ++i) {
        const QByteArray& name = m_sections.at(i).name;
        if (m_index.value(name).value(0) == i)
            names.append(fromBytes(name));
    }
    return names;
}

const QByteArray* IniText::findLine(const QString& group, const QString& key) const {
    const auto places = m_index.constFind(toBytes(group).trimmed());
    const QByteArray wanted = toBytes(key).trimmed();
    if (places == m_index.constEnd())
        return nullptr;
    for (const qsizetype place : *places) {
        const QList<QByteArray>& lines = m_sections.at(place).lines;
        for (qsizetype i = 1; i < lines.size(); ++i) {
            if (equalsSign(lines.at(i)) >= 0 && keyOf(lines.at(i)) == wanted)
                return &lines.at(i);
        }
    }
    return nullptr;
}

QByteArray* IniText::findLine(const QString& group, const QString& key) {
    return const_cast<QByteArray*>(std::as_const(*this).findLine(group, key));
}

QString IniText::readEntry(const QString& group, const QString& key,
                           const QString& fallback) const {
    const QByteArray* line = findLine(group, key);
    return line ? fromBytes(valueOf(*line).toByteArray()) : fallback;
}

void IniText::writeEntry(const QString& group, const QString& key, const QString& value) {
    const QByteArray section = onOneLine(group).trimmed();
    const QByteArray name = onOneLine(key);
    const QByteArray text = onOneLine(value);
    const QByteArray content = name + " = " + text;
    QByteArray* line = findLine(fromBytes(section), fromBytes(name));
    if (!line) {
        insertLine(sectionForWriting(section), content);
    } else if (valueOf(*line) != text.trimmed()) {
        *line = content + lineEndOf(*line);
        m_changed = true;
    }
}

void IniText::writeEntry(const QString& group, const QString& key, const char* value) {
    writeEntry(group, key, QString::fromUtf8(value));
}

void IniText::writeEntry(const QString& group, const QString& key, int value) {
    writeEntry(group, key, QString::number(value));
}

IniText::Section& IniText::sectionForWriting(const QByteArray& name) {
    const QList<qsizetype> places = m_index.value(name);
    if (!places.isEmpty())
        return m_sections[places.first()];
    endLastLine();
    m_index[name].append(m_sections.size());
    m_sections.append(Section{name, {'[' + name + ']' + m_lineEnd}});
    return m_sections.last();
}

void IniText::insertLine(Section& section, const QByteArray& content) {
    const qsizetype at = endOfKeys(section.lines);
    QByteArray& before = section.lines[at - 1];
    if (lineEndOf(before).isEmpty())
        before += m_lineEnd;
    section.lines.insert(at, content + lineEndOf(section.lines.at(at - 1)));
    m_changed = true;
}

void IniText::endLastLine() {
    for (auto section = m_sections.rbegin(); section != m_sections.rend(); ++section) {
        if (section->lines.isEmpty())
            continue;
        QByteArray& last = section->lines.last();
        if (lineEndOf(last).isEmpty())
            last += m_lineEnd;
        return;
    }
}

void IniText::removeGroup(const QString& group) {
    const QList<qsizetype> places = m_index.take(toBytes(group).trimmed());
    for (const qsizetype place : places) {
        QList<QByteArray>& lines = m_sections[place].lines;
        lines.remove(0, endOfGroup(lines));
        m_changed = true;
    }
}

QByteArray IniText::text() const {
    QByteArray text;
    for (const Section& section : m_sections) {
        for (const QByteArray& line : section.lines)
            text += line;
    }
    return text;
}
