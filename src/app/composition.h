// SPDX-License-Identifier: MIT
#pragma once

#include "main_window.h"
#include "output/output.h"
#include "rcon/exchange.h"
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
          exchange(session, udpclient, output, prompts, clock),
          services{session, udpclient, exchange, output, prompts, ini, clock},
          window(services)
    {
    }

    Session session;
    UDPClient udpclient;
    IniFile ini;
    Output output;
    Exchange exchange;
    Services services;
    MainWindow window;
};
