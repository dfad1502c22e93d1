// SPDX-License-Identifier: MIT
#include "weapon_table.h"

#include <QCoreApplication>

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
    {WeaponGroup::Allies, "chkm1a1carbine", "scr_allow_m1carbine", QT_TRANSLATE_NOOP("Weapons", "M1A1 Carbine"),
     QT_TRANSLATE_NOOP("Weapons", "M1a1 Carbine updated."), "scr_allow_m1carbine"},
    {WeaponGroup::Allies, "chkm1garand", "scr_allow_m1garand", QT_TRANSLATE_NOOP("Weapons", "M1 Garand"),
     QT_TRANSLATE_NOOP("Weapons", "M1 Garand updated."), "scr_allow_m1garand"},
    {WeaponGroup::Allies, "chkthompson", "scr_allow_thompson", QT_TRANSLATE_NOOP("Weapons", "Thompson"),
     QT_TRANSLATE_NOOP("Weapons", "Thompson updated."), "scr_allow_thompson"},
    {WeaponGroup::Allies, "chkbar", "scr_allow_bar", QT_TRANSLATE_NOOP("Weapons", "Browning Auto Rifle"),
     QT_TRANSLATE_NOOP("Weapons", "Browning Auto Rifle updated."), "scr_allow_bar"},
    {WeaponGroup::Allies, "chkspringfield", "scr_allow_springfield", QT_TRANSLATE_NOOP("Weapons", "Springfield"),
     QT_TRANSLATE_NOOP("Weapons", "Springfield updated."), "scr_allow_springfield"},
    {WeaponGroup::Allies, "chkgreasegun", "scr_allow_greasegun", QT_TRANSLATE_NOOP("Weapons", "Grease gun"),
     QT_TRANSLATE_NOOP("Weapons", "Grease gun updated."), "scr_allow_greasegun"},
    {WeaponGroup::Russian, "chkppsh", "scr_allow_ppsh", QT_TRANSLATE_NOOP("Weapons", "PPSh"),
     QT_TRANSLATE_NOOP("Weapons", "PPSh updated."), "scr_allow_ppsh"},
    {WeaponGroup::Russian, "chknagant", "scr_allow_nagant", QT_TRANSLATE_NOOP("Weapons", "Mosin Nagant"),
     QT_TRANSLATE_NOOP("Weapons", "Mosin Nagant updated."), "scr_allow_nagant"},
    {WeaponGroup::Russian, "chknagantsniper", "scr_allow_nagantsniper",
     QT_TRANSLATE_NOOP("Weapons", "Scoped Mosin Nagant"), QT_TRANSLATE_NOOP("Weapons", "Scoped Nagant updated."),
     "scr_allow_nagantscoped"},
    {WeaponGroup::British, "chkenfield", "scr_allow_enfield", QT_TRANSLATE_NOOP("Weapons", "Lee Enfield"),
     QT_TRANSLATE_NOOP("Weapons", "Lee Enfield updated."), "scr_allow_enfield"},
    {WeaponGroup::British, "chkenfieldsniper", "scr_allow_enfieldsniper",
     QT_TRANSLATE_NOOP("Weapons", "Lee Enfield Sniper"), QT_TRANSLATE_NOOP("Weapons", "Lee Enfield sniper updated."),
     "scr_allow_enfieldsniper"},
    {WeaponGroup::British, "chksten", "scr_allow_sten", QT_TRANSLATE_NOOP("Weapons", "Sten"),
     QT_TRANSLATE_NOOP("Weapons", "Sten updated."), "scr_allow_sten"},
    {WeaponGroup::British, "chkbren", "scr_allow_bren", QT_TRANSLATE_NOOP("Weapons", "Bren LMG"),
     QT_TRANSLATE_NOOP("Weapons", "Bren LMG updated."), "scr_allow_Bren"},
    {WeaponGroup::German, "chkmp40", "scr_allow_mp40", QT_TRANSLATE_NOOP("Weapons", "MP40"),
     QT_TRANSLATE_NOOP("Weapons", "MP40 updated."), "scr_allow_mp40"},
    {WeaponGroup::German, "chkmp44", "scr_allow_mp44", QT_TRANSLATE_NOOP("Weapons", "MP44"),
     QT_TRANSLATE_NOOP("Weapons", "MP44 updated."), "scr_allow_mp44"},
    {WeaponGroup::German, "chkkar98k", "scr_allow_kar98k", QT_TRANSLATE_NOOP("Weapons", "Kar98k"),
     QT_TRANSLATE_NOOP("Weapons", "Kar98k updated."), "scr_allow_kar98k"},
    {WeaponGroup::German, "chkkar98ksniper", "scr_allow_kar98ksniper", QT_TRANSLATE_NOOP("Weapons", "Scoped Kar98k"),
     QT_TRANSLATE_NOOP("Weapons", "Scoped Kar98k updated."), "scr_allow_kar98ksniper"},
    {WeaponGroup::Others, "chkg43", "scr_allow_g43", QT_TRANSLATE_NOOP("Weapons", "G43"),
     QT_TRANSLATE_NOOP("Weapons", "G43 updated."), "scr_allow_g43"},
    {WeaponGroup::Others, "chkpps42", "scr_allow_pps42", QT_TRANSLATE_NOOP("Weapons", "PPS 42"),
     QT_TRANSLATE_NOOP("Weapons", "PPS42 updated."), "scr_allow_pps42"},
    {WeaponGroup::Others, "chkshotgun", "scr_allow_shotgun", QT_TRANSLATE_NOOP("Weapons", "Shotgun"),
     QT_TRANSLATE_NOOP("Weapons", "Shotgun updated."), "scr_allow_shotgun"},
    {WeaponGroup::Others, "chksvt40", "scr_allow_svt40", QT_TRANSLATE_NOOP("Weapons", "SVT 40"),
     QT_TRANSLATE_NOOP("Weapons", "SVT40 updated."), "scr_allow_svt40"},
});

} // namespace

const QList<Weapon> &weapons()
{
    static const QList<Weapon> table = [] {
        const auto translated = [](const char *text) { return QCoreApplication::translate("Weapons", text); };
        QList<Weapon> list;
        for (const Row &row : rows)
            list.append({row.group, QString::fromLatin1(row.box), QString::fromLatin1(row.variable),
                         translated(row.caption), translated(row.confirmation), QString::fromLatin1(row.toolTip)});
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
