// SPDX-License-Identifier: MIT
#include "read_values.h"

#include "command_line.h"
#include "server_listing.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A hostile server must not fill the memory. The game itself has 4,096 variables at most.
constexpr qsizetype mostValues = 20'000;
constexpr qsizetype longestText = 1024;
constexpr qsizetype longestLine = 4096;
constexpr qsizetype flagColumns = 7;

QString bounded(QStringView text)
{
    return text.first(std::min(text.size(), longestText)).toString();
}

/// A description has the colour of the text behind a value.
QString withoutColour(QStringView text)
{
    return bounded(text.endsWith("^7"_L1) ? text.chopped(2) : text);
}

/// Takes the text in quotes off the end of `line`, which the quotes close; null when there is none behind `label`.
QString takeQuoted(QStringView &line, QLatin1StringView label)
{
    const qsizetype at = line.lastIndexOf(label);
    if (at < 0)
        return {};
    const QStringView quoted = line.sliced(at + label.size()).trimmed();
    if (quoted.size() < 2 || !quoted.startsWith(u'"') || !quoted.endsWith(u'"'))
        return {};
    line = line.first(at);
    return withoutColour(quoted.sliced(1, quoted.size() - 2));
}

} // namespace

void ReadValues::take(const QString &text, bool mayLackLast, std::chrono::microseconds at)
{
    QStringView rest = text;
    for (qsizetype end = rest.indexOf(u'\n'); end >= 0; end = rest.indexOf(u'\n')) {
        begun += rest.first(end);
        rest = rest.sliced(end + 1);
        const QString line = std::exchange(begun, {});
        if (!std::exchange(isDamaged, false) && line.size() <= longestLine)
            takeLine(line, at);
    }
    if (begun.size() <= longestLine)
        begun += rest;
    isDamaged = isDamaged || mayLackLast;
}

void ReadValues::beginReply()
{
    begun.clear();
    described.clear();
    isDamaged = false;
}

void ReadValues::forget()
{
    beginReply();
    values.clear();
}

const ReadValue *ReadValues::find(const QString &name) const
{
    const auto found = values.constFind(name.toLower());
    return found == values.constEnd() ? nullptr : &*found;
}

void ReadValues::takeLine(QStringView line, std::chrono::microseconds at)
{
    constexpr QLatin1StringView domain("  Domain is ");
    if (line.endsWith(u'\r'))
        line.chop(1);
    if (line.startsWith(domain)) {
        if (const auto value = values.find(described); value != values.end())
            value->domain = bounded(line.sliced(domain.size()));
    } else if (line.startsWith(u'"')) {
        takeDescribed(line, at);
    } else if (!line.startsWith("latched:"_L1)) {
        described.clear();
        takeListed(line, at);
    }
}

/// SU A    NAME "VALUE"
void ReadValues::takeListed(QStringView line, std::chrono::microseconds at)
{
    if (line.size() <= flagColumns || line.at(flagColumns) != u' ' || !areFlags(line.first(flagColumns)))
        return;
    const QStringView named = line.sliced(flagColumns + 1);
    const qsizetype quote = named.indexOf(" \""_L1);
    if (quote < 0 || !named.endsWith(u'"') || named.size() < quote + 3)
        return;
    ReadValue read{bounded(named.sliced(quote + 2).chopped(1)), {}, {}, at};
    if (const ReadValue *before = find(named.first(quote).toString())) {
        read.stock = before->stock;
        read.domain = before->domain;
    }
    keep(named.first(quote), read);
}

/// "NAME" is: "VALUE^7" default: "VALUE^7"
void ReadValues::takeDescribed(QStringView line, std::chrono::microseconds at)
{
    ReadValue read{{}, {}, {}, at};
    read.stock = takeQuoted(line, " default:"_L1);
    const qsizetype close = line.indexOf(u'"', 1);
    if (close < 0)
        return;
    const QStringView name = line.sliced(1, close - 1);
    QStringView rest = line.sliced(close + 1);
    if (!rest.startsWith(" is:"_L1))
        return;
    rest = rest.sliced(4).trimmed();
    if (rest.size() < 2 || !rest.startsWith(u'"') || !rest.endsWith(u'"'))
        return;
    read.value = withoutColour(rest.sliced(1, rest.size() - 2));
    keep(name, read);
    described = name.toString().toLower();
}

void ReadValues::keep(QStringView name, const ReadValue &value)
{
    const QString key = name.toString().toLower();
    const bool hasRoom = values.size() < mostValues || values.contains(key);
    if (hasRoom && isWord(name) && !isPasswordVariable(name))
        values.insert(key, value);
}
