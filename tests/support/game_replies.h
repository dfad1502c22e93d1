// SPDX-License-Identifier: MIT
#pragma once

#include "practice/practice_server.h"

/// A public status reply with this information string.
inline QByteArray statusResponse(const QByteArray &information)
{
    return QByteArray(4, '\xFF') + "statusResponse\n" + information + "\n0 50 \"Ann\"\n";
}

/// Has the server answer the four questions of connecting with short texts that a test can write out.
inline void answerBriefly(PracticeServer &server)
{
    server.answer("status", {"map: mp_carentan\nnum score\n\n"});
    server.answerRaw("getstatus", {statusResponse("\\g_gametype\\sd\\mapname\\mp_carentan\\protocol\\118")});
    server.answer("dvarlist sv_maprotation",
                  {"S       sv_mapRotation \"gametype sd map mp_decoy\"\n\n1 total dvars\n"});
    server.answer("fdir *.cfg", {"---------------\n/server.cfg\n/match.cfg\n2 files listed\n"});
}

/// The settings under which connecting neither saves nor clears anything.
inline const QByteArray keepsOutput = "[options]\r\nclearrconnew=0\r\nclearmessnew=0\r\n";
