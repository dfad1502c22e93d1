// SPDX-License-Identifier: MIT
#include "ini_text.h"

#include "base/wire_text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");

QByteArrayView withoutLineEnd(QByteArrayView line)
{
    if (!line.endsWith('\n'))
        return line;
    line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return line;
}

QByteArrayView withoutBlanks(QByteArrayView text)
{
    while (text.startsWith(' '))
        text = text.sliced(1);
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

bool isBlank(QByteArrayView line)
{
    return withoutBlanks(withoutLineEnd(line)).isEmpty();
}

QByteArray oneLine(QByteArray text)
{
    std::ranges::replace_if(
        text, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\0'; }, ' ');
    return text;
}

QByteArray oneLine(const QString &text)
{
    return oneLine(toAnsi(text));
}

QString comparable(QByteArrayView name)
{
    return fromAnsi(withoutBlanks(name).toByteArray()).toLower();
}

bool isHeader(QByteArrayView line)
{
    return withoutBlanks(line).startsWith('[') && line.contains(']');
}

QByteArrayView sectionName(QByteArrayView header)
{
    const qsizetype start = header.indexOf('[') + 1;
    return header.sliced(start, header.indexOf(']') - start);
}

bool isEntry(QByteArrayView line)
{
    return !withoutBlanks(line).startsWith(';') && line.contains('=');
}

QByteArrayView keyName(QByteArrayView line)
{
    return withoutBlanks(line.first(line.indexOf('=')));
}

QByteArrayView valueText(QByteArrayView line)
{
    return withoutLineEnd(line.sliced(line.indexOf('=') + 1));
}

QByteArrayView asRead(QByteArrayView value)
{
    const QByteArrayView text = withoutBlanks(value);
    if (text.isEmpty())
        return value; // A value of blanks only is kept as it is.
    const bool quoted = text.size() > 1 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return quoted ? text.sliced(1, text.size() - 2) : text;
}

QByteArray asWritten(const QByteArray &value)
{
    return asRead(value) == value ? value : '"' + value + '"';
}

void endLine(QByteArray &line)
{
    if (!line.isEmpty() && !line.endsWith('\n'))
        line += "\r\n";
}

} // namespace

IniText::IniText(const QByteArray &bytes) : sections(1)
{
    qsizetype from = bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    mark = bytes.first(from);
    while (from < bytes.size()) {
        const qsizetype end = bytes.indexOf('\n', from);
        const qsizetype next = end < 0 ? bytes.size() : end + 1;
        append(bytes.sliced(from, next - from));
        from = next;
    }
}

QString IniText::value(const QString &section, const QString &key, int buffer) const
{
    const auto heading = headings.constFind(comparable(oneLine(section)));
    if (heading == headings.cend())
        return {};
    const Section &found = sections.at(*heading);
    const auto line = found.keys.constFind(comparable(oneLine(key)));
    if (line == found.keys.cend())
        return {};
    // A file that has been copied between systems may have carriage returns inside its lines. They become blanks here,
    // so that a value that was read can be written back.
    const QByteArray text = oneLine(valueText(found.lines.at(*line)).toByteArray());
    return fromAnsi(asRead(text).toByteArray()).left(std::max(buffer - 1, 0));
}

void IniText::set(const IniEntry &entry)
{
    Section &section = obtainSection(oneLine(entry.section));
    const QByteArray key = withoutBlanks(oneLine(entry.key)).toByteArray();
    const QByteArray valueAndEnd = '=' + asWritten(oneLine(entry.value)) + "\r\n";

    const auto known = section.keys.constFind(comparable(key));
    if (known != section.keys.cend()) {
        QByteArray &line = section.lines[*known];
        line = keyName(line).toByteArray() + valueAndEnd;
        return;
    }
    endLine(section.lines.last());
    section.keys.insert(comparable(key), section.lines.size());
    section.lines.append(key + valueAndEnd);
}

bool IniText::removeSection(const QString &section)
{
    const QString name = comparable(oneLine(section));
    if (!headings.contains(name))
        return false;
    sections.removeIf([&name](const Section &each) {
        return !each.lines.isEmpty() && isHeader(each.lines.first()) &&
               comparable(sectionName(each.lines.first())) == name;
    });
    headings.clear();
    for (qsizetype index = sections.size() - 1; index >= 0; --index) {
        const Section &each = sections.at(index);
        if (!each.lines.isEmpty() && isHeader(each.lines.first()))
            headings.insert(comparable(sectionName(each.lines.first())), index); // the first of a name counts
    }
    return true;
}

QByteArray IniText::bytes() const
{
    QByteArray all = mark;
    for (const Section &section : sections)
        all += section.lines.join() + section.blanklines;
    return all;
}

void IniText::append(const QByteArray &line)
{
    if (isHeader(line)) {
        const QString name = comparable(sectionName(line));
        if (!headings.contains(name))
            headings.insert(name, sections.size());
        sections.append({{line}, {}, {}});
        return;
    }

    Section &section = sections.last();
    if (isBlank(line)) {
        section.blanklines += line;
        return;
    }
    if (!section.blanklines.isEmpty())
        section.lines.append(std::exchange(section.blanklines, {}));
    if (isEntry(line) && !section.keys.contains(comparable(keyName(line))))
        section.keys.insert(comparable(keyName(line)), section.lines.size());
    section.lines.append(line);
}

IniText::Section &IniText::obtainSection(const QByteArray &name)
{
    const auto known = headings.constFind(comparable(name));
    if (known != headings.cend())
        return sections[*known];

    Section &before = sections.last();
    if (!before.blanklines.isEmpty())
        endLine(before.blanklines);
    else if (!before.lines.isEmpty())
        endLine(before.lines.last());
    append('[' + withoutBlanks(name).toByteArray() + "]\r\n");
    return sections.last();
}
