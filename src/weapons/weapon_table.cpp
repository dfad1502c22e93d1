// SPDX-License-Identifier: MIT
#include "weapon_table.h"

#include <array>

namespace {

struct Row {
    WeaponGroup group;
    const char *box;
    const char *variable;
    const char *caption;
    const char *confirmation;
    const char *toolTip;
};

// What a tool tip or a line says need not be what the variable is called: the scoped Nagant and the Bren differ.
constexpr auto rows = std::to_array<Row>({
    {WeaponGroup::Allies, "chkm1a1carbine", "scr_allow_m1carbine", "M1A1 Carbine", "M1a1 Carbine updated.",
     "scr_allow_m1carbine"},
    {WeaponGroup::Allies, "chkm1garand", "scr_allow_m1garand", "M1 Garand", "M1 Garand updated.", "scr_allow_m1garand"},
    {WeaponGroup::Allies, "chkthompson", "scr_allow_thompson", "Thompson", "Thompson updated.", "scr_allow_thompson"},
    {WeaponGroup::Allies, "chkbar", "scr_allow_bar", "Browning Auto Rifle", "Browning Auto Rifle updated.",
     "scr_allow_bar"},
    {WeaponGroup::Allies, "chkspringfield", "scr_allow_springfield", "Springfield", "Springfield updated.",
     "scr_allow_springfield"},
    {WeaponGroup::Allies, "chkgreasegun", "scr_allow_greasegun", "Grease gun", "Grease gun updated.",
     "scr_allow_greasegun"},
    {WeaponGroup::Russian, "chkppsh", "scr_allow_ppsh", "PPSh", "PPSh updated.", "scr_allow_ppsh"},
    {WeaponGroup::Russian, "chknagant", "scr_allow_nagant", "Mosin Nagant", "Mosin Nagant updated.",
     "scr_allow_nagant"},
    {WeaponGroup::Russian, "chknagantsniper", "scr_allow_nagantsniper", "Scoped Mosin Nagant", "Scoped Nagant updated.",
     "scr_allow_nagantscoped"},
    {WeaponGroup::British, "chkenfield", "scr_allow_enfield", "Lee Enfield", "Lee Enfield updated.",
     "scr_allow_enfield"},
    {WeaponGroup::British, "chkenfieldsniper", "scr_allow_enfieldsniper", "Lee Enfield Sniper",
     "Lee Enfield sniper updated.", "scr_allow_enfieldsniper"},
    {WeaponGroup::British, "chksten", "scr_allow_sten", "Sten", "Sten updated.", "scr_allow_sten"},
    {WeaponGroup::British, "chkbren", "scr_allow_bren", "Bren LMG", "Bren LMG updated.", "scr_allow_Bren"},
    {WeaponGroup::German, "chkmp40", "scr_allow_mp40", "MP40", "MP40 updated.", "scr_allow_mp40"},
    {WeaponGroup::German, "chkmp44", "scr_allow_mp44", "MP44", "MP44 updated.", "scr_allow_mp44"},
    {WeaponGroup::German, "chkkar98k", "scr_allow_kar98k", "Kar98k", "Kar98k updated.", "scr_allow_kar98k"},
    {WeaponGroup::German, "chkkar98ksniper", "scr_allow_kar98ksniper", "Scoped Kar98k", "Scoped Kar98k updated.",
     "scr_allow_kar98ksniper"},
    {WeaponGroup::Others, "chkg43", "scr_allow_g43", "G43", "G43 updated.", "scr_allow_g43"},
    {WeaponGroup::Others, "chkpps42", "scr_allow_pps42", "PPS 42", "PPS42 updated.", "scr_allow_pps42"},
    {WeaponGroup::Others, "chkshotgun", "scr_allow_shotgun", "Shotgun", "Shotgun updated.", "scr_allow_shotgun"},
    {WeaponGroup::Others, "chksvt40", "scr_allow_svt40", "SVT 40", "SVT40 updated.", "scr_allow_svt40"},
});

} // namespace

const QList<Weapon> &weapons()
{
    static const QList<Weapon> table = [] {
        QList<Weapon> list;
        for (const Row &row : rows)
            list.append({row.group, QString::fromLatin1(row.box), QString::fromLatin1(row.variable),
                         QString::fromLatin1(row.caption), QString::fromLatin1(row.confirmation),
                         QString::fromLatin1(row.toolTip)});
        return list;
    }();
    return table;
}

const QList<WeaponSetting> &riflesOnly()
{
    using namespace Qt::StringLiterals;
    static const QList<WeaponSetting> settings{
        {u"chkm1a1carbine"_s, false}, {u"chkm1garand"_s, false},      {u"chkthompson"_s, false},
        {u"chkbar"_s, false},         {u"chkspringfield"_s, false},   {u"chkgreasegun"_s, false},
        {u"chkppsh"_s, false},        {u"chknagant"_s, true},         {u"chknagantsniper"_s, false},
        {u"chkenfield"_s, true},      {u"chkenfieldsniper"_s, false}, {u"chksten"_s, false},
        {u"chkbren"_s, false},        {u"chkmp40"_s, false},          {u"chkmp44"_s, false},
        {u"chkkar98k"_s, true},       {u"chkkar98ksniper"_s, false},  {u"chkg43"_s, false},
        {u"chkshotgun"_s, false},     {u"chkpps42"_s, false},         {u"chksvt40"_s, false},
    };
    return settings;
}
