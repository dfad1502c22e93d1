// SPDX-License-Identifier: MIT
#include "stock_game.h"

using namespace Qt::StringLiterals;

QStringList stockMaps()
{
    return {u"mp_breakout"_s,  u"mp_brecourt"_s, u"mp_burgundy"_s, u"mp_carentan"_s,
            u"mp_dawnville"_s, u"mp_decoy"_s,    u"mp_downtown"_s, u"mp_farmhouse"_s,
            u"mp_leningrad"_s, u"mp_matmata"_s,  u"mp_toujane"_s,  u"mp_trainstation"_s};
}
