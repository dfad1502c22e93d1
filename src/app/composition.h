// SPDX-License-Identifier: MIT
#pragma once

#include "main_window.h"
#include "output/output.h"
#include "rcon/connecting.h"
#include "rcon/exchange.h"
#include "rcon/server_fields.h"
#include "rcon/server_link.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/udp_client.h"
#include "settings/ini_file.h"

/// The whole program put together: everything there is one of, and the main window that uses it.
struct Composition {
    /// `inipath` is the settings file.
    Composition(Prompts &prompts, const Clock &clock, const QString &inipath)
        : ini(inipath),
          output(prompts, clock),
          exchange(session, udpclient, fields, output, prompts, clock),
          link(session.rconcollect, session.rconbusy, udpclient, exchange),
          services{session, fields, link, output, prompts, ini, clock},
          connecting(services),
          window(services, connecting, exchange, udpclient)
    {
    }

    Session session;
    ServerFields fields;
    UDPClient udpclient;
    IniFile ini;
    Output output;
    Exchange exchange;
    ServerLink link;
    Services services;
    Connecting connecting;
    MainWindow window;
};
