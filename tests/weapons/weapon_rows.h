// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// One weapon as the person and the server see it.
struct WeaponRow {
    QString group;
    QString box;
    QString variable;
    QString caption;
    QString confirmation;
    QString toolTip;
};

/// All weapons, by group as they stand on the page.
inline QList<WeaponRow> weaponRows()
{
    using namespace Qt::StringLiterals;
    return {
        {u"British"_s, u"chkenfieldsniper"_s, u"scr_allow_enfieldsniper"_s, u"Lee Enfield Sniper"_s,
         u"Lee Enfield sniper updated."_s, u"scr_allow_enfieldsniper"_s},
        {u"British"_s, u"chkenfield"_s, u"scr_allow_enfield"_s, u"Lee Enfield"_s, u"Lee Enfield updated."_s,
         u"scr_allow_enfield"_s},
        {u"British"_s, u"chksten"_s, u"scr_allow_sten"_s, u"Sten"_s, u"Sten updated."_s, u"scr_allow_sten"_s},
        {u"British"_s, u"chkbren"_s, u"scr_allow_bren"_s, u"Bren LMG"_s, u"Bren LMG updated."_s, u"scr_allow_Bren"_s},
        {u"Russian"_s, u"chkppsh"_s, u"scr_allow_ppsh"_s, u"PPSh"_s, u"PPSh updated."_s, u"scr_allow_ppsh"_s},
        {u"Russian"_s, u"chknagant"_s, u"scr_allow_nagant"_s, u"Mosin Nagant"_s, u"Mosin Nagant updated."_s,
         u"scr_allow_nagant"_s},
        {u"Russian"_s, u"chknagantsniper"_s, u"scr_allow_nagantsniper"_s, u"Scoped Mosin Nagant"_s,
         u"Scoped Nagant updated."_s, u"scr_allow_nagantscoped"_s},
        {u"Allies"_s, u"chkgreasegun"_s, u"scr_allow_greasegun"_s, u"Grease gun"_s, u"Grease gun updated."_s,
         u"scr_allow_greasegun"_s},
        {u"Allies"_s, u"chkm1a1carbine"_s, u"scr_allow_m1carbine"_s, u"M1A1 Carbine"_s, u"M1a1 Carbine updated."_s,
         u"scr_allow_m1carbine"_s},
        {u"Allies"_s, u"chkm1garand"_s, u"scr_allow_m1garand"_s, u"M1 Garand"_s, u"M1 Garand updated."_s,
         u"scr_allow_m1garand"_s},
        {u"Allies"_s, u"chkthompson"_s, u"scr_allow_thompson"_s, u"Thompson"_s, u"Thompson updated."_s,
         u"scr_allow_thompson"_s},
        {u"Allies"_s, u"chkbar"_s, u"scr_allow_bar"_s, u"Browning Auto Rifle"_s, u"Browning Auto Rifle updated."_s,
         u"scr_allow_bar"_s},
        {u"Allies"_s, u"chkspringfield"_s, u"scr_allow_springfield"_s, u"Springfield"_s, u"Springfield updated."_s,
         u"scr_allow_springfield"_s},
        {u"German"_s, u"chkmp40"_s, u"scr_allow_mp40"_s, u"MP40"_s, u"MP40 updated."_s, u"scr_allow_mp40"_s},
        {u"German"_s, u"chkmp44"_s, u"scr_allow_mp44"_s, u"MP44"_s, u"MP44 updated."_s, u"scr_allow_mp44"_s},
        {u"German"_s, u"chkkar98k"_s, u"scr_allow_kar98k"_s, u"Kar98k"_s, u"Kar98k updated."_s, u"scr_allow_kar98k"_s},
        {u"German"_s, u"chkkar98ksniper"_s, u"scr_allow_kar98ksniper"_s, u"Scoped Kar98k"_s,
         u"Scoped Kar98k updated."_s, u"scr_allow_kar98ksniper"_s},
        {u"Others"_s, u"chksvt40"_s, u"scr_allow_svt40"_s, u"SVT 40"_s, u"SVT40 updated."_s, u"scr_allow_svt40"_s},
        {u"Others"_s, u"chkshotgun"_s, u"scr_allow_shotgun"_s, u"Shotgun"_s, u"Shotgun updated."_s,
         u"scr_allow_shotgun"_s},
        {u"Others"_s, u"chkg43"_s, u"scr_allow_g43"_s, u"G43"_s, u"G43 updated."_s, u"scr_allow_g43"_s},
        {u"Others"_s, u"chkpps42"_s, u"scr_allow_pps42"_s, u"PPS 42"_s, u"PPS42 updated."_s, u"scr_allow_pps42"_s},
    };
}

/// The boxes in the order in which they are read and sent.
inline QStringList readingOrder()
{
    return QStringLiteral("chkm1a1carbine chkm1garand chkthompson chkbar chkspringfield chkgreasegun chkppsh chknagant "
                          "chknagantsniper chkenfield chkenfieldsniper chksten chkbren chkmp40 chkmp44 chkkar98k "
                          "chkkar98ksniper chkg43 chkpps42 chkshotgun chksvt40")
        .split(QLatin1Char(' '));
}

inline WeaponRow weaponRow(const QString &box)
{
    for (const WeaponRow &row : weaponRows()) {
        if (row.box == box)
            return row;
    }
    failTest(QStringLiteral("no weapon of the name ") + box);
}

/// The command that sends a box's value.
inline QByteArray weaponCommand(const QString &box, bool allowed)
{
    return weaponRow(box).variable.toLatin1() + (allowed ? "\"1\"" : "\"0\"");
}
