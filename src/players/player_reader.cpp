// SPDX-License-Identifier: MIT
#include "player_reader.h"

#include "base/fault.h"
#include "base/prompts.h"
#include "getstatus_reply.h"
#include "rcon/conversation.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "status_table.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostTries = 5; // for a row that is cut short, when nobody is told and can give up

} // namespace

void PlayerReader::readStatus(bool isTold)
{
    const Conversation talk(services);
    talk.ask(u"status"_s);
    if (!talk.isOpen())
        return;

    StatusTable table;
    if (!table.skipHeading(talk.reply())) {
        if (isTold)
            services.prompts.inform(u"No players on server"_s, u"No players"_s);
        return;
    }
    int tries = 0;
    while (!table.ended(talk.reply())) {
        try {
            emit statusrowread(table.next(talk.reply()));
        } catch (const Fault &) {
            if (!isTold && ++tries > mostTries)
                return;
            if (isTold)
                services.prompts.refuse(u"The server is not responding quickly enough\rTry populate again"_s,
                                        u"Slow Server Response"_s);
            talk.wait(1); // by hand too: between two boxes the person can disconnect or close the window
            if (!talk.isOpen() || !talk.ownsReply())
                return; // also when another command has emptied the reply: its rest will not come
        }
    }
}

void PlayerReader::readQuery()
{
    const bool isTold = !services.session.options.autoqplayer; // a ticked "Auto Update" does not silence this list
    const Conversation talk(services);
    talk.clearReply();
    const bool hasCome = talk.query(u"getstatus"_s);
    if (!talk.isOpen())
        return;
    if (!hasCome) {
        if (isTold)
            services.prompts.refuse(u"No response from server in 5 seconds with standard Query method"_s,
                                    u"No response"_s);
        return;
    }

    GetstatusReply reply(talk.reply());
    if (reply.isEmpty()) {
        if (isTold)
            services.prompts.inform(u"No players on server"_s, u"No players"_s);
        return;
    }
    while (const std::optional<GetstatusRow> row = reply.next())
        emit queryrowread(*row);
}
