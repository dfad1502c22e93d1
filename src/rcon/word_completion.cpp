// SPDX-License-Identifier: MIT
#include "word_completion.h"

#include "command_line.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostLinesOffered = 20;

bool takesVariable(QStringView command)
{
    constexpr std::array<QLatin1StringView, 3> others{"reset"_L1, "toggle"_L1, "vstr"_L1};
    const auto isCommand = [command](auto each) { return command.compare(each, Qt::CaseInsensitive) == 0; };
    return isSetter(command) || std::ranges::any_of(others, isCommand);
}

TypedWord wholeLine(const QString &line, qsizetype cursor)
{
    return {TypedWord::Wanted::Line, 0, line.size(), line.first(cursor)};
}

bool isWanted(const Completion &word, TypedWord::Wanted wanted)
{
    return wanted == TypedWord::Wanted::CommandOrVariable ||
           (wanted == TypedWord::Wanted::Variable && word.kind == Completion::Kind::Variable);
}

QList<Completion> linesLike(const QString &begun, const QString &line, const QStringList &history)
{
    QList<Completion> found;
    for (auto each = history.crbegin(); each != history.crend() && found.size() < mostLinesOffered; ++each) {
        const Completion one{*each, Completion::Kind::Line};
        if (*each != line && each->startsWith(begun, Qt::CaseInsensitive) && !found.contains(one))
            found.append(one);
    }
    return found;
}

} // namespace

TypedWord typedWord(const QString &line, qsizetype cursor)
{
    const QStringView before = QStringView(line).first(cursor);
    const auto isSpace = [](QChar each) { return each.isSpace(); };
    const qsizetype begin = std::find_if(before.crbegin(), before.crend(), isSpace).base() - before.cbegin();
    const qsizetype end = std::find_if(line.cbegin() + cursor, line.cend(), isSpace) - line.cbegin();
    const QStringView word = QStringView(line).sliced(begin, end - begin);
    const QStringView command = before.first(begin).trimmed();
    if (word.contains(u'"'))
        return wholeLine(line, cursor);
    const QString typed = before.sliced(begin).toString();
    if (command.isEmpty())
        return {TypedWord::Wanted::CommandOrVariable, begin, end, typed};
    if (takesVariable(command))
        return {TypedWord::Wanted::Variable, begin, end, typed};
    return wholeLine(line, cursor);
}

QList<Completion> completions(const TypedWord &word, const QString &line, const QList<Completion> &words,
                              const QStringList &history)
{
    QList<Completion> beginning;
    QList<Completion> holding;
    for (const Completion &each : words) {
        if (!isWanted(each, word.wanted))
            continue;
        const qsizetype at = each.text.indexOf(word.typed, 0, Qt::CaseInsensitive);
        if (at == 0)
            beginning.append(each);
        else if (at > 0)
            holding.append(each);
    }
    QList<Completion> lines = linesLike(line.first(word.begin) + word.typed, line, history);
    lines.removeIf([&beginning](const Completion &each) {
        return std::ranges::any_of(beginning, [&](const Completion &other) { return other.text == each.text; });
    });
    return word.typed.isEmpty() ? lines + beginning : beginning + lines + holding;
}

// By keys in lower case: comparing without regard to letter case takes many times as long.
void sortWords(QList<Completion> &words)
{
    using Key = std::pair<Completion::Kind, QString>;
    std::vector<std::pair<Key, Completion>> keyed;
    keyed.reserve(static_cast<std::size_t>(words.size()));
    for (const Completion &word : std::as_const(words))
        keyed.emplace_back(Key{word.kind, word.text.toLower()}, word);
    std::ranges::stable_sort(keyed, {}, &std::pair<Key, Completion>::first);
    const auto twice = std::ranges::unique(keyed, {}, &std::pair<Key, Completion>::first);
    keyed.erase(twice.begin(), twice.end());
    words.clear();
    words.reserve(static_cast<qsizetype>(keyed.size()));
    for (const auto &each : keyed)
        words.append(each.second);
}
