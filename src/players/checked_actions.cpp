// SPDX-License-Identifier: MIT
#include "checked_actions.h"

#include "base/prompts.h"
#include "checked_deeds.h"
#include "rcon/conversation.h"
#include "rcon/reading.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostReadings = 3;    // of a list that does not come, or not whole
constexpr int longestAnswer = 200; // characters

/// What the server said, on one line.
QString words(QString reply, const QString &password)
{
    if (!password.isEmpty())
        reply.replace(password, QString(password.size(), u'*'));
    const QString text = reply.simplified().left(longestAnswer);
    return text.isEmpty() ? u"The server has taken it without a word"_s : text;
}

} // namespace

void CheckedActions::act(const CheckedDeed &deed, WantedPlayer wanted, const QString &text)
{
    const Conversation talk(services);
    std::optional<Sighting> sighting = actOnce(deed, wanted, text);
    // While the person thinks about it he can go elsewhere again, so he is looked for anew.
    while (sighting && isWantedThere(deed, wanted, *sighting) && talk.isOpen()) {
        wanted.num = sighting->num;
        sighting = actOnce(deed, wanted, text);
    }
}

// What was found instead of him; nothing when there is nothing to ask.
std::optional<Sighting> CheckedActions::actOnce(const CheckedDeed &deed, const WantedPlayer &wanted,
                                                const QString &text)
{
    const Reading scope(services, {.door = &acting, .note = {}});
    if (!scope)
        return {};
    emit answered({});
    const Conversation talk(services);
    const std::optional<QList<StatusRow>> rows = readList(talk, scope);
    if (!talk.isOpen() || !scope.isLatest())
        return {};
    if (!rows) {
        emit answered(u"The list of players has not come: nothing was sent"_s);
        return {};
    }
    const Sighting sighting = lookFor(wanted, *rows);
    if (sighting.kind != Sighting::There)
        return sighting;
    carryOut(talk, scope, deed, wanted, text);
    return {};
}

std::optional<QList<StatusRow>> CheckedActions::readList(const Conversation &talk, const Reading &scope)
{
    const auto isEnded = [](const QString &reply) { return reply.endsWith("\n\n"_L1); };
    for (int reading = 0; reading < mostReadings && talk.isOpen() && scope.isLatest(); ++reading) {
        if (!talk.tellOnce(u"status"_s, isEnded))
            continue; // nobody heard it, or another command has emptied the reply
        if (auto rows = wholeTable(talk.reply(), talk.pieces()))
            return rows;
    }
    return {};
}

void CheckedActions::carryOut(const Conversation &talk, const Reading &scope, const CheckedDeed &deed,
                              const WantedPlayer &wanted, const QString &text)
{
    const QString command = deed.command + wanted.num + (text.isEmpty() ? QString() : u' ' + text);
    if (deed.dismisses)
        emit dismissing(wanted, command);
    const bool isAnswered = talk.tellOnce(command);
    if (!talk.isOpen() || !scope.isLatest())
        return;
    emit answered(isAnswered ? words(talk.reply(), services.fields.password()) : u"The server has not answered"_s);
    if (deed.dismisses)
        tellWhetherGone(talk, scope, wanted);
}

void CheckedActions::tellWhetherGone(const Conversation &talk, const Reading &scope, const WantedPlayer &wanted)
{
    const std::optional<QList<StatusRow>> rows = readList(talk, scope);
    if (!talk.isOpen() || !scope.isLatest())
        return;
    const auto kind = rows ? std::optional(lookFor(wanted, *rows).kind) : std::nullopt;
    if (kind == Sighting::Gone) {
        emit answered(wanted.shown + u" has gone"_s);
        emit left(wanted);
    } else if (kind && kind != Sighting::Damaged) {
        emit answered(wanted.shown + u" is still there"_s);
    } else {
        emit answered(u"The list does not tell whether %1 has gone"_s.arg(wanted.shown));
    }
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
        services.prompts.inform(wanted.shown + u" has left."_s, title);
        emit left(wanted);
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
