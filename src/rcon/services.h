// SPDX-License-Identifier: MIT
#pragma once

class Clock;
class IniFile;
class Output;
class Prompts;
class ServerFields;
class ServerLink;
struct Session;

/// What pages and panels need of the rest of the program; made once, outlives them all. They speak to the server by
/// `Conversation` and `Reading`, which take this.
struct Services {
    Session &session;
    ServerFields &fields;
    ServerLink &link;
    Output &output;
    Prompts &prompts;
    IniFile &ini;
    const Clock &clock;
};
