// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "settings/saved_servers.h"

#include <algorithm>

namespace {

constexpr qsizetype longest = 199; // characters

void examine(const SavedServers &saved)
{
    const qsizetype beyond = saved.servercount - saved.servers.size();
    require(beyond == 0 || beyond == 1, "all servers are counted, and one name of blanks behind them");
    for (const SavedServer &server : saved.servers) {
        require(!trimBlanks(server.server).isEmpty(), "a saved server has a name");
        require(std::max({server.server.size(), server.port.size(), server.password.size()}) <= longest,
                "no value is longer than the buffer");
    }
}

/// Writes the list back as the program does, and reads it again.
void writeBack(IniText ini, const SavedServers &saved)
{
    QStringList rows;
    QStringList passwords;
    for (const SavedServer &server : saved.servers) {
        rows.append(savedServerRow(server.server, server.port));
        passwords.append(server.password);
        require(findServerRow(rows, rows.last()) <= rows.size() - 1 && findServerRow(rows, rows.last()) >= 0,
                "a row is found by its own text");
    }
    for (const IniEntry &entry : savedServerEntries(rows, passwords, saved.servercount))
        ini.set(entry);
    require(readSavedServers(ini).servers == saved.servers, "a list that is written back reads the same");

    if (rows.isEmpty())
        return;
    rows.removeLast();
    for (const IniEntry &entry : savedServerEntries(rows, passwords, saved.servercount))
        ini.set(entry);
    require(readSavedServers(ini).servers == saved.servers.first(rows.size()),
            "a shorter list leaves no server behind");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const IniText ini(input);
    const SavedServers saved = readSavedServers(ini);
    examine(saved);
    const auto hasColon = [](const SavedServer &server) { return server.server.contains(u':'); };
    if (std::ranges::none_of(saved.servers, hasColon)) // a row is parted at its first colon
        writeBack(ini, saved);
}
