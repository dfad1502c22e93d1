// SPDX-License-Identifier: MIT
#include "weapon_table.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

// The tool tips of the scoped Nagant and of the Bren are not the names of their variables.
constexpr auto table = std::to_array<Weapon>({
    {WeaponGroup::Allies, "chkm1a1carbine"_L1, "scr_allow_m1carbine"_L1, "M1A1 Carbine"_L1, "M1a1 Carbine updated."_L1,
     "scr_allow_m1carbine"_L1},
    {WeaponGroup::Allies, "chkm1garand"_L1, "scr_allow_m1garand"_L1, "M1 Garand"_L1, "M1 Garand updated."_L1,
     "scr_allow_m1garand"_L1},
    {WeaponGroup::Allies, "chkthompson"_L1, "scr_allow_thompson"_L1, "Thompson"_L1, "Thompson updated."_L1,
     "scr_allow_thompson"_L1},
    {WeaponGroup::Allies, "chkbar"_L1, "scr_allow_bar"_L1, "Browning Auto Rifle"_L1, "Browning Auto Rifle updated."_L1,
     "scr_allow_bar"_L1},
    {WeaponGroup::Allies, "chkspringfield"_L1, "scr_allow_springfield"_L1, "Springfield"_L1, "Springfield updated."_L1,
     "scr_allow_springfield"_L1},
    {WeaponGroup::Allies, "chkgreasegun"_L1, "scr_allow_greasegun"_L1, "Grease gun"_L1, "Grease gun updated."_L1,
     "scr_allow_greasegun"_L1},
    {WeaponGroup::Russian, "chkppsh"_L1, "scr_allow_ppsh"_L1, "PPSh"_L1, "PPSh updated."_L1, "scr_allow_ppsh"_L1},
    {WeaponGroup::Russian, "chknagant"_L1, "scr_allow_nagant"_L1, "Mosin Nagant"_L1, "Mosin Nagant updated."_L1,
     "scr_allow_nagant"_L1},
    {WeaponGroup::Russian, "chknagantsniper"_L1, "scr_allow_nagantsniper"_L1, "Scoped Mosin Nagant"_L1,
     "Scoped Nagant updated."_L1, "scr_allow_nagantscoped"_L1},
    {WeaponGroup::British, "chkenfield"_L1, "scr_allow_enfield"_L1, "Lee Enfield"_L1, "Lee Enfield updated."_L1,
     "scr_allow_enfield"_L1},
    {WeaponGroup::British, "chkenfieldsniper"_L1, "scr_allow_enfieldsniper"_L1, "Lee Enfield Sniper"_L1,
     "Lee Enfield sniper updated."_L1, "scr_allow_enfieldsniper"_L1},
    {WeaponGroup::British, "chksten"_L1, "scr_allow_sten"_L1, "Sten"_L1, "Sten updated."_L1, "scr_allow_sten"_L1},
    {WeaponGroup::British, "chkbren"_L1, "scr_allow_bren"_L1, "Bren LMG"_L1, "Bren LMG updated."_L1,
     "scr_allow_Bren"_L1},
    {WeaponGroup::German, "chkmp40"_L1, "scr_allow_mp40"_L1, "MP40"_L1, "MP40 updated."_L1, "scr_allow_mp40"_L1},
    {WeaponGroup::German, "chkmp44"_L1, "scr_allow_mp44"_L1, "MP44"_L1, "MP44 updated."_L1, "scr_allow_mp44"_L1},
    {WeaponGroup::German, "chkkar98k"_L1, "scr_allow_kar98k"_L1, "Kar98k"_L1, "Kar98k updated."_L1,
     "scr_allow_kar98k"_L1},
    {WeaponGroup::German, "chkkar98ksniper"_L1, "scr_allow_kar98ksniper"_L1, "Scoped Kar98k"_L1,
     "Scoped Kar98k updated."_L1, "scr_allow_kar98ksniper"_L1},
    {WeaponGroup::Others, "chkg43"_L1, "scr_allow_g43"_L1, "G43"_L1, "G43 updated."_L1, "scr_allow_g43"_L1},
    {WeaponGroup::Others, "chkpps42"_L1, "scr_allow_pps42"_L1, "PPS 42"_L1, "PPS42 updated."_L1, "scr_allow_pps42"_L1},
    {WeaponGroup::Others, "chkshotgun"_L1, "scr_allow_shotgun"_L1, "Shotgun"_L1, "Shotgun updated."_L1,
     "scr_allow_shotgun"_L1},
    {WeaponGroup::Others, "chksvt40"_L1, "scr_allow_svt40"_L1, "SVT 40"_L1, "SVT40 updated."_L1, "scr_allow_svt40"_L1},
});

// The shotgun stands before the PPS 42 here, unlike above.
constexpr auto rifles = std::to_array<WeaponSetting>({
    {"chkm1a1carbine"_L1, false},  {"chkm1garand"_L1, false},  {"chkthompson"_L1, false},      {"chkbar"_L1, false},
    {"chkspringfield"_L1, false},  {"chkgreasegun"_L1, false}, {"chkppsh"_L1, false},          {"chknagant"_L1, true},
    {"chknagantsniper"_L1, false}, {"chkenfield"_L1, true},    {"chkenfieldsniper"_L1, false}, {"chksten"_L1, false},
    {"chkbren"_L1, false},         {"chkmp40"_L1, false},      {"chkmp44"_L1, false},          {"chkkar98k"_L1, true},
    {"chkkar98ksniper"_L1, false}, {"chkg43"_L1, false},       {"chkshotgun"_L1, false},       {"chkpps42"_L1, false},
    {"chksvt40"_L1, false},
});

} // namespace

std::span<const Weapon> weapons()
{
    return table;
}

std::span<const WeaponSetting> riflesOnly()
{
    return rifles;
}
