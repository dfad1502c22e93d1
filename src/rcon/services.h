// SPDX-License-Identifier: MIT
#pragma once

class Clock;
class Exchange;
class IniFile;
class Output;
class Prompts;
class UDPClient;
struct Session;

/// What pages and panels need of the rest of the program; made once, outlives them all.
struct Services {
    Session &session;
    UDPClient &udpclient;
    Exchange &exchange;
    Output &output;
    Prompts &prompts;
    IniFile &ini;
    const Clock &clock;
};
