// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What the game knows of somebody whether he is on the server or not.
struct Regular {
    QString name;
    QString guid;
    QString address; ///< with the port behind a colon, or a word like "loopback"
    int qport = 0;
    int rate = 25000;
};

/// Somebody on the server.
struct Player {
    enum class State { Playing, Connecting, Leaving };

    int slot = 0;
    int score = 0;
    int ping = 50; ///< milliseconds; 999 when the client does not answer
    QString guid;  ///< decimal digits; "0" where the game could not find it out
    QString name;
    int lastmsg = 50; ///< milliseconds since the last sign of life
    QString address;
    int qport = 0;
    int rate = 25000; ///< bytes a second
    State state = State::Playing;
    int hangingFor = 0; ///< seconds at ping 999; 0 when all is well
};
