// SPDX-License-Identifier: MIT
#include "connection_check.h"

#include "rcon/refusals.h"
#include "rcon/reply_piece.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What is to be done about a refusal. Of a wrong password it is told when it can never be right, whatever the server's
/// is.
QString adviceAbout(RefusalKind refusal, const QString &password)
{
    switch (refusal) {
    case RefusalKind::Wrong:
        if (password.contains(u' ') || password.contains(u'"'))
            return u"The password has a blank or a quote, and with these it never fits: servers split the line there."_s;
        return u"The password in the connection fields is not the server's: see rcon_password in its configuration."_s;
    case RefusalKind::Unset:
        return u"No RCON password is set on the server, so it takes no commands: whoever runs it has to set "
               "rcon_password."_s;
    case RefusalKind::TooShort:
        break;
    }
    return u"The server wants a longer RCON password: whoever runs it has to set one."_s;
}

QString quoted(const QString &words, const QString &password)
{
    constexpr qsizetype longest = 200;
    return u'"' + withoutPassword(words, password).simplified().left(longest) + u'"';
}

/// "2 of 1303 bytes and 1 of 412", in the order of their coming.
QString sizesText(const QList<qsizetype> &sizes)
{
    QStringList runs;
    for (qsizetype at = 0; at < sizes.size();) {
        const auto behind =
            std::find_if(sizes.begin() + at, sizes.end(), [&](qsizetype size) { return size != sizes.at(at); });
        const qsizetype count = behind - sizes.begin() - at;
        runs.append(u"%1 of %2 bytes"_s.arg(count).arg(sizes.at(at)));
        at += count;
    }
    constexpr qsizetype mostRuns = 8;
    if (runs.size() > mostRuns)
        runs = runs.first(mostRuns) << u"and so on"_s;
    return runs.join(u", "_s);
}

bool hasEnd(const QString &listing)
{
    const QString line = listing.trimmed().section(u'\n', -1);
    return line.contains("total dvar"_L1) || line.contains("dvar index"_L1);
}

} // namespace

std::optional<CheckStep> fieldsStep(const QString &server, const QString &port, const QString &password)
{
    bool isNumber = false;
    const int number = port.toInt(&isNumber);
    if (server.isEmpty() || password.isEmpty())
        return CheckStep{u"Server: the connection fields are not filled in"_s,
                         u"Type the server's name or address, its port and its RCON password."_s};
    if (!isNumber || number < 1 || number > 65535)
        return CheckStep{u"Server: \"%1\" is no port"_s.arg(port),
                         u"A port is a number from 1 to 65535; most servers have 28960."_s};
    return {};
}

CheckStep lookUpStep(const QString &server, const QString &address, qint64 milliseconds)
{
    if (address.isEmpty())
        return {u"Name: no address was found for %1 in %2 ms"_s.arg(server).arg(milliseconds),
                u"Look at the spelling of the name, and whether this computer reaches the Internet."_s};
    if (address == server)
        return {u"Name: %1 is an address, and nothing had to be looked up"_s.arg(server),
                u"If the server has moved, ask whoever runs it for the new address."_s};
    return {u"Name: %1 has the address %2, found in %3 ms"_s.arg(server, address).arg(milliseconds),
            u"If this is not where the server runs, its name leads to an old place."_s};
}

CheckStep queryStep(const Asked &query)
{
    if (!query.couldBeSent)
        return {u"Public query: it could not be sent"_s,
                u"This computer has no way to the server: look at its network."_s};
    if (!query.answeredAfter)
        return {u"Public query: no answer"_s,
                u"The server does not run, loads a map, has another port, or something on the way blocks it."_s};
    return {u"Public query: answered in %1 ms"_s.arg(*query.answeredAfter), u"The server runs and can be reached."_s};
}

CheckStep consoleStep(const Asked &console, const QString &words, const QString &password, bool isQueryAnswered)
{
    if (!console.couldBeSent)
        return {u"Console: the command could not be sent"_s,
                u"This computer has no way to the server: look at its network."_s};
    if (!console.answeredAfter && isQueryAnswered)
        return {
            u"Console: silent although the public query answers"_s,
            u"Try again later: another administrator's tool may be using up the server's limit, or RCON is blocked."_s};
    if (!console.answeredAfter)
        return {u"Console: no answer"_s, u"Nothing comes from this server: see to the public query first."_s};
    if (const std::optional<RefusalKind> refusal = refusalIn(words))
        return {u"Console: refused with "_s + quoted(words, password), adviceAbout(*refusal, password)};
    const QString answered = u"Console: answered in %1 ms"_s.arg(*console.answeredAfter);
    if (words.contains(askedVariable, Qt::CaseInsensitive))
        return {answered, u"The RCON password is right."_s};
    if (words.trimmed().isEmpty())
        return {answered + u" without a word"_s,
                u"This does not tell whether the RCON password is right: send a command and see what it does."_s};
    return {answered + u" with "_s + quoted(words, password),
            u"This is no answer to what was asked, and it could not be judged whether the RCON password is right."_s};
}

CheckStep endlessStep(const QList<qsizetype> &sizes)
{
    return {u"Long reply: it had no end; it came in %1 datagrams: %2"_s.arg(sizes.size()).arg(sizesText(sizes)),
            u"No server says that much of its own accord: look for what else sends from its address."_s};
}

CheckStep listingStep(const QList<qsizetype> &sizes, const QString &text)
{
    const QString title = u"Long reply: "_s;
    if (sizes.isEmpty())
        return {
            title + u"it did not come"_s,
            u"Short answers come and long ones do not: something on the way drops large datagrams, or the server was "
            "asked too often."_s};
    const QString came = sizes.size() == 1 ? u"in one datagram of %1 bytes"_s.arg(sizes.first())
                                           : u"in %1 datagrams: %2"_s.arg(sizes.size()).arg(sizesText(sizes));
    if (text.trimmed().startsWith("Unknown command"_L1, Qt::CaseInsensitive))
        return {title + u"the server does not know \"dvarlist\""_s,
                u"The program reads settings by this command: on this server many of its boxes stay empty, and whether "
                "long replies arrive cannot be told."_s};
    if (text.trimmed().isEmpty())
        return {
            title + u"it was empty"_s,
            u"The server took \"dvarlist\" and had nothing to say, so whether long replies arrive cannot be told."_s};
    if (!hasEnd(text))
        return {title + u"its end is missing; it came "_s + came,
                u"Datagrams get lost on the way: lists may lack rows, so read them twice before acting on them."_s};
    if (sizes.first(sizes.size() - 1).contains(ReplyPiece::losingSize))
        return {title + u"it came whole "_s + came,
                u"Servers that cut like this lose a character at each border: use \"Check and kick\" and its like for "
                "players."_s};
    if (sizes.size() == 1)
        return {title + u"it came whole "_s + came,
                u"What fits into one datagram arrives; whether several do cannot be told here."_s};
    return {title + u"it came whole "_s + came, u"Lists and settings can be relied on."_s};
}

CheckStep noListingStep()
{
    return {u"Long reply: not asked for"_s, u"This needs a console that answers."_s};
}

bool refusesInAnyWording(const QString &words)
{
    return refusalIn(words).has_value();
}

QString checkText(const QString &heading, const QList<CheckStep> &steps)
{
    QString text = heading + u'\n';
    for (const CheckStep &step : steps)
        text += u'\n' + step.result + u"\n    "_s + step.advice + u'\n';
    return text;
}
