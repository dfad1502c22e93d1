// SPDX-License-Identifier: MIT
#include "player_reader.h"

#include "base/fault.h"
#include "getstatus_reply.h"
#include "rcon/conversation.h"
#include "rcon/reading.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "status_table.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostTries = 5; // for a row that is cut short, when nobody is told and can give up

} // namespace

bool PlayerReader::readStatus(const Reading &scope, BroughtBy by, const std::function<bool()> &isTold)
{
    const Conversation talk(services, by);
    const bool hasCome = talk.ask(u"status"_s);
    if (!talk.isOpen() || !scope.isLatest())
        return false;

    StatusTable table;
    if (!table.skipHeading(talk.reply())) {
        if (isTold())
            services.prompts.inform(u"No players on server"_s, u"No players"_s, by);
        return hasCome;
    }
    int tries = 0;
    // Another command that empties the reply ends it, too: its rest will not come.
    while (!table.ended(talk.reply()) && talk.isOpen() && talk.ownsReply() && scope.isLatest()) {
        try {
            emit statusrowread(table.next(talk.reply(), talk.pieces()));
        } catch (const Fault &) {
            if (isTold())
                services.prompts.refuse(u"The server is not responding quickly enough\rTry populate again"_s,
                                        u"Slow Server Response"_s, by);
            else if (++tries > mostTries)
                return false;
            talk.wait(1); // by hand too: between two boxes the person can disconnect or close the window
        }
    }
    return talk.ownsReply() && table.ended(talk.reply());
}

bool PlayerReader::readQuery(const Reading &scope, BroughtBy by)
{
    const bool isTold = !services.session.options.autoqplayer; // a ticked "Auto Update" does not silence this list
    const Conversation talk(services, by);
    talk.clearReply();
    talk.sendQuery(u"getstatus"_s);
    const bool hasCome = talk.awaitAnswer();
    if (!talk.isOpen() || !scope.isLatest())
        return false;
    if (!hasCome) {
        if (isTold)
            services.prompts.refuse(u"No response from server in 5 seconds with standard Query method"_s,
                                    u"No response"_s, by);
        return false;
    }

    GetstatusReply reply(talk.reply());
    if (reply.isEmpty()) {
        if (isTold)
            services.prompts.inform(u"No players on server"_s, u"No players"_s, by);
        return true;
    }
    while (const std::optional<GetstatusRow> row = reply.next())
        emit queryrowread(*row);
    return true;
}
