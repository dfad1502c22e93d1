// SPDX-License-Identifier: MIT
#include "shown_command.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Where the first command of `line` ends: at a semicolon or a line end outside quotes.
qsizetype commandEnd(QStringView line)
{
    bool isQuoted = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        const QChar each = line.at(at);
        if (each == u'"')
            isQuoted = !isQuoted;
        else if ((each == u';' && !isQuoted) || each == u'\n' || each == u'\r')
            return at;
    }
    return line.size();
}

bool isBlank(QChar each)
{
    return each.isSpace() || each < u' ';
}

/// Takes blanks and comments off `rest`. One without an end hides nothing: the safer reading is that there is none. Of
/// one with a semicolon in it only the end is left.
void skipBlanks(QStringView &rest)
{
    for (bool isSkipping = true; isSkipping;) {
        rest = rest.sliced(std::ranges::find_if_not(rest, isBlank) - rest.begin());
        const qsizetype end = rest.startsWith("/*"_L1) ? rest.indexOf("*/"_L1, 2) : 0;
        isSkipping = rest.startsWith("/*"_L1) || rest.startsWith("*/"_L1);
        if (isSkipping)
            rest = rest.sliced(std::max<qsizetype>(end, 0) + 2);
    }
}

/// How many characters the word at the beginning of `rest` has.
qsizetype wordSize(QStringView rest)
{
    qsizetype size = 0;
    const auto beginsComment = [rest](qsizetype at) {
        return rest.at(at) == u'/' && at + 1 < rest.size() && rest.at(at + 1) == u'*';
    };
    while (size < rest.size() && !isBlank(rest.at(size)) && rest.at(size) != u'"' && !beginsComment(size))
        ++size;
    return size;
}

/// Takes the first word off `rest`, with the blanks and comments before it. Quotes around a word are no part of it, and
/// one behind it begins the next.
QStringView takeWord(QStringView &rest)
{
    skipBlanks(rest);
    if (rest.startsWith(u'"')) {
        const qsizetype close = rest.indexOf(u'"', 1);
        const QStringView word = rest.sliced(1, (close < 0 ? rest.size() : close) - 1);
        rest = rest.sliced(close < 0 ? rest.size() : close + 1);
        return word;
    }
    const QStringView word = rest.first(wordSize(rest));
    rest = rest.sliced(word.size());
    return word;
}

bool isSetter(QStringView word)
{
    constexpr std::array<QLatin1StringView, 4> setters{"set"_L1, "seta"_L1, "sets"_L1, "setu"_L1};
    return std::ranges::any_of(setters, [word](auto each) { return word.compare(each, Qt::CaseInsensitive) == 0; });
}

/// Takes the name of the variable off `rest`, which is a command that sets one.
QStringView takeVariable(QStringView &rest)
{
    QStringView variable = takeWord(rest);
    if (variable.startsWith(u'/') || variable.startsWith(u'\\'))
        variable = variable.sliced(1); // as it is typed into the game's own console
    return isSetter(variable) ? takeWord(rest) : variable;
}

/// How many characters at the end of the command are the value of a password; 0 when it sets none.
qsizetype passwordValue(QStringView command)
{
    QStringView rest = command;
    const QStringView variable = takeVariable(rest);
    return variable.endsWith("password"_L1, Qt::CaseInsensitive) ? rest.trimmed().size() : 0;
}

bool endsLine(QChar each)
{
    return each == u'\n' || each == u'\r';
}

void star(QString &text, qsizetype from, qsizetype to)
{
    std::replace_if(
        text.begin() + from, text.begin() + to, [](QChar each) { return each != u'"'; }, u'*');
}

/// Puts asterisks over the values of passwords in `line`, which is the part of `text` that begins at `begin`.
void starLine(QString &text, qsizetype begin, QStringView line)
{
    const qsizetype lineEnd = line.trimmed().end() - line.begin();
    for (qsizetype at = 0; at < line.size();) {
        const QStringView rest = line.sliced(at);
        const qsizetype end = commandEnd(rest);
        const QStringView command = rest.first(end).trimmed();
        if (const qsizetype value = passwordValue(command); value > 0) {
            const qsizetype valueEnd = command.data() - line.data() + command.size();
            star(text, begin + valueEnd - value, begin + (at == 0 ? lineEnd : valueEnd));
        }
        at += end + 1;
    }
}

/// Adds the value of the password that `command` sets, if any: as a whole, and its first word.
void addPasswords(QStringList &found, QStringView command)
{
    constexpr qsizetype fewest = 4; // letters
    const QStringView value = command.last(passwordValue(command)).trimmed();
    if (value.isEmpty())
        return;
    QStringView rest = command;
    const bool isConsoles = takeVariable(rest).compare("rcon_password"_L1, Qt::CaseInsensitive) == 0;
    QStringView words = value;
    const QString first = takeWord(words).toString();
    const QString whole = value.toString().remove(u'"').trimmed();
    if (!whole.isEmpty() && (isConsoles || whole.size() >= fewest))
        found.append(whole);
    if (first != whole && first.size() >= fewest)
        found.append(first);
}

} // namespace

QString shownCommand(const QString &comm, const QString &password, const QString &instead)
{
    QString hidden = comm; // first of all, because the password may hold what parts commands
    if (!password.isEmpty())
        hidden.replace(password, u"***"_s);
    QString shown;
    for (QStringView rest = hidden; !rest.isEmpty();) {
        const qsizetype end = commandEnd(rest);
        const QStringView command = rest.first(end).trimmed();
        const qsizetype value = passwordValue(command);
        QString text = command.first(command.size() - value).trimmed().toString();
        if (value > 0 && !instead.isEmpty())
            text += u' ' + instead;
        shown += text + rest.sliced(end, std::min<qsizetype>(1, rest.size() - end)).toString();
        rest = rest.sliced(std::min(end + 1, rest.size()));
    }
    return shown;
}

QString starredCommand(const QString &comm, const QString &password)
{
    QString starred = comm;
    for (qsizetype at = 0; at < comm.size();) {
        const QStringView rest = QStringView(comm).sliced(at);
        const qsizetype end = std::ranges::find_if(rest, endsLine) - rest.begin();
        starLine(starred, at, rest.first(end));
        at += end + 1;
    }
    if (!password.isEmpty())
        starred.replace(password, QString(password.size(), u'*'));
    return starred;
}

QStringList passwordsSetBy(const QString &comm)
{
    QStringList found;
    for (const QStringView line : QStringView(comm).split(u'\n')) {
        if (commandEnd(line) < line.size())
            addPasswords(found, line.trimmed()); // a server may take all of it for one command
        for (QStringView rest = line; !rest.isEmpty();) {
            const qsizetype end = commandEnd(rest);
            addPasswords(found, rest.first(end).trimmed());
            rest = rest.sliced(std::min(end + 1, rest.size()));
        }
    }
    found.removeDuplicates();
    return found;
}

bool holdsPassword(const QString &comm, const QString &password)
{
    if (!password.isEmpty() && comm.contains(password))
        return true;
    const auto partsWords = [](QChar each) {
        return isBlank(each) || each == u'"' || each == u';' || each == u'/'; // also a comment right behind it
    };
    for (QStringView rest = comm; !rest.isEmpty();) {
        const qsizetype end = std::ranges::find_if(rest, partsWords) - rest.begin();
        if (rest.first(end).endsWith("password"_L1, Qt::CaseInsensitive))
            return true;
        rest = rest.sliced(std::min(end + 1, rest.size()));
    }
    return false;
}
