// SPDX-License-Identifier: MIT
#include "rotation_text.h"

#include "rcon/command_line.h"

#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto gametypeKeyword = "gametype"_L1;
constexpr auto mapKeyword = "map"_L1;

bool isWord(QStringView word, QLatin1StringView keyword)
{
    return word.compare(keyword, Qt::CaseInsensitive) == 0;
}

bool isKeyword(QStringView word)
{
    return isWord(word, gametypeKeyword) || isWord(word, mapKeyword);
}

QList<QStringView> wordsOf(QStringView text)
{
    QList<QStringView> words;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype begin = at;
        while (at < text.size() && !text.at(at).isSpace())
            ++at;
        if (at > begin)
            words.append(text.sliced(begin, at - begin));
        ++at;
    }
    return words;
}

/// Takes one word after the other, as the game does. What lies between two maps has one order, whatever the text's: odd
/// words, game types without a map, and the game type of the next map. So it stays the same when it is written.
class RowReader final {
public:
    void keyword(QStringView word, QStringView value)
    {
        if (!isWord(word, mapKeyword)) {
            endNamed();
            named = value.toString();
            return;
        }
        const bool names = !named.isEmpty();
        if (names)
            gametype = std::exchange(named, {});
        endOdd();
        rows.append({.gametype = gametype, .map = value.toString(), .namesGametype = names, .odd = {}});
    }
    void oddWord(QStringView word) { odd.append(word.toString()); }
    /// The last word is a keyword without its value.
    void loneKeyword(QStringView word)
    {
        endNamed();
        unused.append(word.toString().toLower());
    }
    QList<RotationRow> end()
    {
        endNamed();
        endOdd();
        return rows;
    }

private:
    /// A game type that has been named, but no map for it.
    void endNamed()
    {
        if (!named.isEmpty())
            unused.append(gametypeKeyword + u' ' + std::exchange(named, {}));
    }
    void endOdd()
    {
        QStringList all = std::exchange(unused, {});
        if (!odd.isEmpty())
            all.prepend(std::exchange(odd, {}).join(u' '));
        for (const QString &words : all)
            rows.append({.gametype = {}, .map = {}, .odd = words});
    }

    QList<RotationRow> rows;
    QString gametype;
    QString named;
    QStringList odd;
    QStringList unused;
};

/// The game type that holds on behind odd words; it was `before`.
QString gametypeBehind(const QString &odd, const QString &before)
{
    const QList<QStringView> words = wordsOf(odd);
    return words.size() == 2 && isWord(words.first(), gametypeKeyword) ? words.last().toString() : before;
}

/// The commands in a line of a CFG file: outside quotation marks a semicolon ends one, and two slashes end them all.
QList<QStringView> commandsIn(QStringView line)
{
    QList<QStringView> commands;
    qsizetype begin = 0;
    qsizetype at = 0;
    bool isQuoted = false;
    for (; at < line.size() && (isQuoted || !line.sliced(at).startsWith("//"_L1)); ++at) {
        if (line.at(at) == u'"') {
            isQuoted = !isQuoted;
        } else if (line.at(at) == u';' && !isQuoted) {
            commands.append(line.sliced(begin, at - begin));
            begin = at + 1;
        }
    }
    commands.append(line.sliced(begin, at - begin));
    return commands;
}

/// What a command of a CFG file sets the rotation to, if it does.
QString valueIn(QStringView command)
{
    QStringView value = command;
    if (!isWord(takeVariable(value), "sv_maprotation"_L1))
        return {};
    const qsizetype open = value.indexOf(u'"');
    if (open < 0)
        return value.trimmed().toString();
    const qsizetype close = value.indexOf(u'"', open + 1);
    return value.sliced(open + 1, (close < 0 ? value.size() : close) - open - 1).trimmed().toString();
}

} // namespace

QList<RotationRow> rotationRows(QStringView text)
{
    const QList<QStringView> words = wordsOf(text);
    RowReader reader;
    for (qsizetype at = 0; at < words.size(); ++at) {
        if (!isKeyword(words.at(at)))
            reader.oddWord(words.at(at));
        else if (at + 1 == words.size())
            reader.loneKeyword(words.at(at));
        else {
            reader.keyword(words.at(at), words.at(at + 1));
            ++at;
        }
    }
    return reader.end();
}

QString rotationText(const QList<RotationRow> &rows)
{
    QStringList words;
    QString gametype;
    for (const RotationRow &row : rows) {
        if (row.isOdd()) {
            words.append(row.odd);
            gametype = gametypeBehind(row.odd, gametype);
            continue;
        }
        if (!row.gametype.isEmpty() && (row.namesGametype || row.gametype != gametype)) {
            words.append(gametypeKeyword + u' ' + row.gametype);
            gametype = row.gametype;
        }
        words.append(mapKeyword + u' ' + row.map);
    }
    return words.join(u' ');
}

QString rotationCommand(const QString &rotation)
{
    return u"sv_maprotationcurrent \""_s + rotation + u'"';
}

QString rotationConfigLine(const QString &rotation)
{
    return u"set sv_maprotation \""_s + rotation + u'"';
}

QString rotationInFile(QStringView file)
{
    QString found;
    for (const QStringView line : file.tokenize(u'\n')) {
        for (const QStringView command : commandsIn(line)) {
            if (const QString value = valueIn(command); !value.isEmpty())
                found = value;
        }
    }
    if (!found.isEmpty())
        return found;
    const QList<RotationRow> rows = rotationRows(file);
    const bool isRotation = std::ranges::any_of(rows, [](const RotationRow &row) { return !row.isOdd(); }) &&
                            isKeyword(wordsOf(file).constFirst());
    return isRotation ? rotationText(rows) : QString();
}
