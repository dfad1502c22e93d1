// SPDX-License-Identifier: MIT
#include "checked_actions.h"

#include "base/colour_codes.h"
#include "base/prompts.h"
#include "checked_deeds.h"
#include "rcon/conversation.h"
#include "rcon/reading.h"
#include "rcon/refusals.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostReadings = 3;    // of a list that other commands or boxes get in the way of, or that is not sure
constexpr int longestAnswer = 200; // characters

constexpr auto nothingSent = ": nothing was sent"_L1;
constexpr auto serverLeft = "The server has been left"_L1;
constexpr auto noWay = "The server could not be reached"_L1;

/// What the server said, on one line.
QString words(const QString &reply, const QString &password)
{
    const QString text = withoutPassword(reply, password).simplified().left(longestAnswer);
    return text.isEmpty() ? u"The server has taken it without a word"_s : text;
}

/// What is said of a command that has brought no words of the server.
QString told(Fate fate, bool isOpen)
{
    switch (fate) {
    case Fate::Unsent:
        return QString(isOpen ? noWay : serverLeft) + nothingSent;
    case Fate::HeldUp:
        return u"Another command or a box came between"_s + nothingSent;
    case Fate::Disturbed:
        return isOpen ? u"Another command or a box came before the server's words"_s
                      : QString(serverLeft) + u" before it has answered"_s;
    case Fate::Silent:
    case Fate::Answered:
        break;
    }
    return u"The server has not answered"_s;
}

} // namespace

/// A list that was read anew, or why there is none.
struct CheckedActions::NewerList {
    QList<StatusRow> rows;
    bool isInPieces = false;
    bool isEndSupposed = false;
    QString trouble; ///< empty when the list has come
};

/// What a list says of somebody.
struct CheckedActions::Seen {
    Sighting sighting;
    QString trouble; ///< empty when it can be believed
};

void CheckedActions::act(const CheckedDeed &deed, WantedPlayer wanted, const QString &text)
{
    const Conversation talk(services);
    std::optional<Sighting> sighting = actOnce(deed, wanted, text);
    // While the person thinks about it he can go elsewhere again, so he is looked for anew.
    while (sighting && isWantedThere(deed, wanted, *sighting)) {
        if (!talk.isOpen()) {
            emit answered(QString(serverLeft) + nothingSent);
            return;
        }
        wanted.num = sighting->num;
        sighting = actOnce(deed, wanted, text);
    }
}

// What was found instead of him; nothing when there is nothing to ask.
std::optional<Sighting> CheckedActions::actOnce(const CheckedDeed &deed, const WantedPlayer &wanted,
                                                const QString &text)
{
    const Reading scope(services, {.door = &acting, .note = {}});
    if (!scope) {
        emit answered(services.session.connected ? u"Another checked action goes on"_s + nothingSent : QString());
        return {};
    }
    emit answered({});
    const Conversation talk(services);
    const Seen seen = look(talk, scope, [&](const QList<StatusRow> &rows) { return lookFor(wanted, rows); });
    if (!scope.isLatest())
        return {}; // the one who was let in since tells what became of his
    if (!seen.trouble.isEmpty()) {
        emit answered(seen.trouble + nothingSent);
        return {};
    }
    if (seen.sighting.kind != Sighting::There)
        return seen.sighting;
    carryOut(talk, scope, deed, wanted, text);
    return {};
}

// One reading that nothing has come between. After what has, answers to this one may come still; they are awaited.
CheckedActions::NewerList CheckedActions::readList(const Conversation &talk, const Reading &scope) const
{
    const auto isEnded = [](const QString &reply) { return reply.endsWith("\n\n"_L1); };
    Fate fate = Fate::Disturbed;
    for (int reading = 0; reading < mostReadings && fate == Fate::Disturbed && scope.isLatest(); ++reading) {
        fate = talk.tellOnce(u"status"_s, isEnded);
        if (!talk.isOpen())
            return {.rows = {}, .trouble = serverLeft};
    }
    if (fate == Fate::Silent)
        return {.rows = {}, .trouble = u"No answer to \"status\""_s};
    if (fate == Fate::Unsent)
        return {.rows = {}, .trouble = noWay};
    if (fate != Fate::Answered)
        return {.rows = {}, .trouble = u"Other commands or boxes came between"_s};
    if (const auto rows = wholeTable(talk.reply(), talk.pieces()))
        return {.rows = *rows,
                .isInPieces = talk.pieces().size() > 1,
                .isEndSupposed = isEndSupposed(talk.reply(), talk.pieces()),
                .trouble = {}};
    const bool isList = talk.reply().startsWith("map:"_L1);
    return {.rows = {},
            .trouble = isList ? u"The list of players has not come whole"_s
                              : u"What came for \"status\" is no list of players"_s};
}

// A datagram of a list can be lost without a trace, and he with it, or the first digit of his number. What a list is
// not sure of is believed when the next one says the same.
CheckedActions::Seen CheckedActions::look(const Conversation &talk, const Reading &scope, const Look &lookAt) const
{
    std::optional<Sighting> before;
    for (int reading = 0; reading < mostReadings; ++reading) {
        const NewerList list = readList(talk, scope);
        if (!list.trouble.isEmpty())
            return {.sighting = {}, .trouble = list.trouble};
        const Sighting now = lookAt(list.rows);
        const bool mayBeMissed = now.kind == Sighting::Gone && list.isInPieces;
        if (before == now || (now.isSure && !mayBeMissed && !list.isEndSupposed))
            return {.sighting = now, .trouble = {}};
        before = now;
    }
    return {.sighting = {}, .trouble = u"The lists of players do not agree"_s};
}

void CheckedActions::carryOut(const Conversation &talk, const Reading &scope, const CheckedDeed &deed,
                              const WantedPlayer &wanted, const QString &text)
{
    const QString command = deed.command + wanted.num + (text.isEmpty() ? QString() : u' ' + text);
    if (deed.dismisses)
        emit dismissing(wanted, command);
    const Fate fate = talk.tellOnce(command);
    if (deed.dismisses)
        emit dismissed(command);
    if (!scope.isLatest())
        return;
    emit answered(fate == Fate::Answered ? words(talk.reply(), services.fields.password()) : told(fate, talk.isOpen()));
    if (deed.dismisses && fate != Fate::HeldUp && fate != Fate::Unsent)
        tellWhetherGone(talk, scope, wanted);
}

void CheckedActions::tellWhetherGone(const Conversation &talk, const Reading &scope, const WantedPlayer &wanted)
{
    const auto lookAt = [&](const QList<StatusRow> &rows) {
        const std::optional<bool> isThere = isStillThere(wanted, rows);
        return Sighting{.kind = !isThere ? Sighting::Damaged : (*isThere ? Sighting::There : Sighting::Gone),
                        .num = {}};
    };
    const Seen seen = talk.isOpen() ? look(talk, scope, lookAt) : Seen{.sighting = {}, .trouble = serverLeft};
    if (!scope.isLatest())
        return;
    if (!seen.trouble.isEmpty()) {
        emit answered(seen.trouble + u": whether %1 has gone is not known"_s.arg(wanted.shown));
    } else if (seen.sighting.kind == Sighting::Damaged) {
        emit answered(u"The list does not tell whether %1 has gone"_s.arg(wanted.shown));
    } else if (seen.sighting.kind == Sighting::There) {
        emit answered(wanted.shown + u" is still there"_s);
    } else {
        emit answered(wanted.shown + u" has gone"_s);
        emit left(wanted);
    }
}

// Who goes on under another name is not here any more, and is there still: the list keeps his row.
void CheckedActions::tellHasLeft(const CheckedDeed &deed, const WantedPlayer &wanted, const Sighting &sighting)
{
    const bool isRenamed = !sighting.newNum.isEmpty();
    if (isRenamed)
        emit answered(u"The GUID of %1 is there as %2 in slot %3"_s.arg(wanted.shown, stripcolour(sighting.newName),
                                                                        sighting.newNum) +
                      nothingSent);
    services.prompts.inform(wanted.shown + u" has left."_s, deed.caption);
    if (!isRenamed)
        emit left(wanted);
}

// Says what was found instead of him. True when he stands in another slot and is to be met there.
bool CheckedActions::isWantedThere(const CheckedDeed &deed, const WantedPlayer &wanted, const Sighting &sighting)
{
    const QString title = deed.caption;
    switch (sighting.kind) {
    case Sighting::Elsewhere:
        return services.prompts.ask({title, wanted.shown + u" is in slot %1 now. "_s.arg(sighting.num) + deed.offer,
                                     BoxIcon::Question, BoxButtons::YesNo}) == Answer::Yes;
    case Sighting::Gone:
        tellHasLeft(deed, wanted, sighting);
        return false;
    case Sighting::Two:
        services.prompts.refuse(u"Two players are called %1."_s.arg(wanted.shown), title);
        return false;
    case Sighting::Damaged:
        services.prompts.refuse(u"The row of %1 may be damaged."_s.arg(wanted.shown), title);
        return false;
    case Sighting::There:
        break;
    }
    return false;
}
