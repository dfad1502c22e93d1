// SPDX-License-Identifier: MIT
#pragma once

#include "fast_clock.h"
#include "scripted_prompts.h"

#include "output/message_list.h"
#include "output/output.h"
#include "output/rcon_pane.h"
#include "rcon/exchange.h"
#include "rcon/server_fields.h"
#include "rcon/server_link.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/udp_client.h"
#include "settings/ini_file.h"

#include <QApplication>

/// What the program has to talk to a server, without its windows.
struct ServerSide {
    int argc = 1;
    char name[5] = "fuzz";
    char *argv[2] = {name, nullptr};
    QApplication application{argc, argv};
    ScriptedPrompts prompts;
    FastClock clock;
    Session session;
    UDPClient udpclient;
    IniFile ini{QString()};
    ServerFields fields;
    RconPane txtoutput;
    MessageList lstmessages;
    Output output{prompts, clock};
    Exchange exchange{session, udpclient, fields, output, prompts, clock};
    ServerLink link{session.rconcollect, session.rconbusy, udpclient, exchange};
    struct Attached {
        Attached(Output &output, RconPane &pane, MessageList &list) { output.attach(pane, list); }
    } attached{output, txtoutput, lstmessages};
    Services services{session, fields, link, output, prompts, ini, clock};
};
