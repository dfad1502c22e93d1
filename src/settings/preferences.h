// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <variant>

class IniText;

/// What the user prefers, each with the value that it has as long as the settings file does not say otherwise.
struct Preferences {
    bool savercon = true;       ///< save the RCON pane at shut-down and before it is cleared on a new connection
    bool savemessages = true;   ///< save the message list likewise
    bool clearrconnew = true;   ///< empty the RCON pane at each new connection
    bool clearmessnew = true;   ///< empty the message list at each new connection
    bool removeid = true;       ///< remove colour codes from player names
    bool usequery = false;      ///< list the players in Query Mode
    bool autoqplayer = false;   ///< refresh the player list automatically
    qint16 autoqplayerint = 10; ///< interval of that refresh
    bool autokick999 = false;   ///< kick players with ping 999 automatically
    qint16 autokick999int = 3;  ///< count setting of that kick
    bool autoconnect = false;   ///< connect at start-up
    QString autoconnectserv;    ///< server to connect to at start-up
    QString autoconnectport;    ///< its port
    QString autoconnectrcon;    ///< its RCON password
    bool automessage = false;   ///< start the message cycler at start-up
    qint16 messageset = 1;      ///< message set of that cycler
    qint16 messagetime = 3;     ///< interval of that cycler
};

/// How one preference stands in the settings file.
struct PreferenceKey {
    using Member = std::variant<bool Preferences::*, qint16 Preferences::*, QString Preferences::*>;

    QStringView key;
    int buffer;    ///< characters; one less is read, so that a number with a buffer of 2 is its first digit
    Member member; ///< the field, and with it the kind of value
};

/// Section of the settings file that holds the preferences.
inline constexpr QStringView preferenceSection = u"options";

/// All preferences in the order in which they are read and saved.
inline constexpr std::array<PreferenceKey, 17> preferenceKeys{{
    {u"savercon", 2, &Preferences::savercon},
    {u"savemessages", 2, &Preferences::savemessages},
    {u"clearrconnew", 2, &Preferences::clearrconnew},
    {u"clearmessnew", 2, &Preferences::clearmessnew},
    {u"removeid", 2, &Preferences::removeid},
    {u"usequery", 2, &Preferences::usequery},
    {u"autoqplayer", 2, &Preferences::autoqplayer},
    {u"autoqplayerint", 2, &Preferences::autoqplayerint},
    {u"autokick999", 2, &Preferences::autokick999},
    {u"autokick999int", 2, &Preferences::autokick999int},
    {u"autoconnect", 2, &Preferences::autoconnect},
    {u"autoconnectserv", 30, &Preferences::autoconnectserv},
    {u"autoconnectport", 7, &Preferences::autoconnectport},
    {u"autoconnectrcon", 20, &Preferences::autoconnectrcon},
    {u"automessage", 2, &Preferences::automessage},
    {u"messageset", 2, &Preferences::messageset},
    {u"messagetime", 2, &Preferences::messagetime},
}};

/// The preferences that `ini` states. A Boolean is true unless it is "0", a number is the digits it begins with (0
/// without any); what is missing or empty keeps its value from above.
[[nodiscard]] Preferences loadPreferences(const IniText &ini);
