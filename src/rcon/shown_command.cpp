// SPDX-License-Identifier: MIT
#include "shown_command.h"

#include "command_line.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// How many characters at the end of the command are the value of a password; 0 when it sets none.
qsizetype passwordValue(QStringView command)
{
    QStringView rest = command;
    const QStringView variable = takeVariable(rest);
    return isPasswordVariable(variable) ? rest.trimmed().size() : 0;
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
        return each.isSpace() || each < u' ' || each == u'"' || each == u';' ||
               each == u'/'; // also a comment right behind it
    };
    for (QStringView rest = comm; !rest.isEmpty();) {
        const qsizetype end = std::ranges::find_if(rest, partsWords) - rest.begin();
        if (isPasswordVariable(rest.first(end)))
            return true;
        rest = rest.sliced(std::min(end + 1, rest.size()));
    }
    return false;
}
