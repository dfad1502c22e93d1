// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "settings/ini_text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int everything = 1'000'000; // characters
constexpr int usual = 200;

/// A name of the program's own making: plain letters and digits.
QString plainName(const QByteArray &line)
{
    QByteArray name("n");
    std::ranges::copy_if(line, std::back_inserter(name), [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
    });
    return QString::fromLatin1(name);
}

QString oneLine(QString value)
{
    return value.replace(u'\r', u' ').replace(u'\n', u' ').replace(QChar(u'\0'), u' ');
}

/// What has been taken out of `before` to get `after`, as one piece.
QByteArray removed(const QByteArray &before, const QByteArray &after)
{
    const auto starts = std::ranges::mismatch(before, after).in1 - before.begin();
    const qsizetype most = std::min(before.size(), after.size()) - starts;
    qsizetype ends = 0;
    while (ends < most && before.at(before.size() - 1 - ends) == after.at(after.size() - 1 - ends))
        ++ends;
    return before.sliced(starts, before.size() - starts - ends);
}

void change(const QByteArray &file, const IniEntry &entry)
{
    IniText text(file);
    const IniEntry otherKey{entry.section, entry.key + u'x', {}};
    const IniEntry otherSection{entry.section + u'x', entry.key, {}};
    const auto read = [](const IniText &from, const IniEntry &at) {
        return from.value(at.section, at.key, everything);
    };
    const QStringList others{read(text, otherKey), read(text, otherSection)};

    text.set(entry);
    const QByteArray bytes = text.bytes();
    const QString value = oneLine(entry.value);
    require(read(text, entry) == value, "a value comes back as it was, on one line");
    require(text.value(entry.section, entry.key, usual) == value.left(usual - 1), "a buffer keeps a place for the end");
    require(text.value(entry.section.toUpper(), entry.key.toLower(), everything) == value, "case does not count");
    require(QStringList{read(text, otherKey), read(text, otherSection)} == others, "other keys keep their values");
    require(removed(file, bytes).count('\n') <= 1, "one line is changed at most");

    IniText again(bytes);
    require(again.bytes() == bytes, "what was written is kept when it is read");
    require(read(again, entry) == value, "a fresh reading gives the value, too");
    again.set(entry);
    require(again.bytes() == bytes, "to set the same value again changes nothing");
}

} // namespace

// The first three lines are section, key and value, the rest is a settings file.
void fuzz(const QByteArray &input)
{
    const QList<QByteArray> lines = input.split('\n');
    const QByteArray file = lines.mid(std::min<qsizetype>(lines.size(), 3)).join('\n');
    require(IniText(input).bytes() == input, "bytes that are not changed are kept");
    require(IniText(file).bytes() == file, "bytes that are not changed are kept");
    const IniEntry entry{plainName(lines.value(0)), plainName(lines.value(1)), fromAnsi(lines.value(2))};
    change(file, entry);
    change(file, {entry.section, entry.key, fromAnsi(file)});
}
