// SPDX-License-Identifier: MIT
#pragma once

#include "fast_clock.h"
#include "scripted_prompts.h"

#include "output/output.h"
#include "rcon/exchange.h"
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
    Output output{prompts, clock};
    Exchange exchange{session, udpclient, output, prompts, clock};
    Services services{session, udpclient, exchange, output, prompts, ini, clock};
};
