// SPDX-License-Identifier: MIT
#include "saved_servers.h"

#include "base/wire_text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int buffer = 200;

QString numbered(const QString &name, qsizetype number)
{
    return name + QString::number(number);
}

QList<IniEntry> serverEntries(qsizetype number, const SavedServer &server)
{
    return {{u"servers"_s, numbered(u"server"_s, number), server.server},
            {u"ports"_s, numbered(u"port"_s, number), server.port},
            {u"rcon"_s, numbered(u"rcon"_s, number), server.password}};
}

} // namespace

SavedServers readSavedServers(const IniText &ini)
{
    SavedServers saved;
    for (qint32 number = 1;; ++number) {
        const QString server = ini.value(u"servers"_s, numbered(u"server"_s, number), buffer);
        if (trimBlanks(server).isEmpty()) {
            saved.servercount = server.isEmpty() ? number - 1 : number;
            return saved;
        }
        saved.servers.append({server, ini.value(u"ports"_s, numbered(u"port"_s, number), buffer),
                              ini.value(u"rcon"_s, numbered(u"rcon"_s, number), buffer)});
    }
}

QList<IniEntry> savedServerEntries(const QStringList &rows, const QStringList &passwords, qint32 servercount)
{
    QList<IniEntry> entries;
    for (qsizetype index = 0; index < rows.size(); ++index) {
        const auto [server, port] = splitServerRow(rows.at(index));
        entries += serverEntries(index + 1, {server, port, passwords.value(index)});
    }
    for (qsizetype number = rows.size() + 1; number <= servercount; ++number)
        entries += serverEntries(number, {});
    return entries;
}

QString savedServerRow(const QString &server, const QString &port)
{
    return server + u':' + port;
}

std::pair<QString, QString> splitServerRow(const QString &row)
{
    return {row.section(u':', 0, 0), row.section(u':', 1)};
}

qsizetype findServerRow(const QStringList &rows, const QString &part)
{
    for (qsizetype index = 0; index < rows.size(); ++index) {
        if (rows.at(index).contains(part, Qt::CaseInsensitive))
            return index;
    }
    return -1;
}

bool comboRemembers(const QStringList &entries, const QString &text)
{
    // The search for the text ends one entry early and takes that end for a hit, so that only an empty list grows.
    return !text.isEmpty() && entries.isEmpty();
}
