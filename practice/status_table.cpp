// SPDX-License-Identifier: MIT
#include "status_table.h"

#include "colours.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace {

constexpr auto heading = "num score ping guid   name            lastmsg address               qport rate\n"
                         "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"_L1;

QString number(int value, int width)
{
    return QString::number(value).rightJustified(width);
}

QString padding(qsizetype length, qsizetype width)
{
    return QString().fill(u' ', qMax<qsizetype>(width - length, 0));
}

QString pingText(const Player &player)
{
    switch (player.state) {
    case Player::State::Connecting:
        return u"CNCT"_s;
    case Player::State::Leaving:
        return u"ZMBI"_s;
    case Player::State::Playing:
        break;
    }
    return number(player.ping, 4);
}

QString row(const Player &player)
{
    QString text = number(player.slot, 3) + u' ' + number(player.score, 5) + u' ' + pingText(player) + u' ';
    text += player.guid.rightJustified(6) + u' ';
    // Colour codes take no room on the console, so they do not count when the column is filled up.
    text += player.name + u"^7"_s + padding(withoutColours(player.name).size(), 16) + number(player.lastmsg, 7) + u' ';
    text += player.address + padding(player.address.size(), 22);
    return text + number(player.qport, 5) + u' ' + number(player.rate, 5) + u'\n';
}

QMap<QString, QString> information(const Dvars &dvars)
{
    QMap<QString, QString> info;
    for (const Dvar &dvar : dvars.serverInfo())
        info.insert(dvar.name, QString(dvar.value).remove(u'\\'));
    return info;
}

} // namespace

QString statusTable(const QString &map, const QList<Player> &players)
{
    QString text = u"map: "_s + map + u'\n' + heading;
    for (const Player &player : players)
        text += row(player);
    return text + u'\n';
}

QString statusResponseText(const Dvars &dvars, const QList<Player> &players)
{
    QMap<QString, QString> info = information(dvars);
    info.insert(u"pswrd"_s, dvars.value(u"g_password"_s).isEmpty() ? u"0"_s : u"1"_s);
    QString text = u"statusResponse\n"_s;
    for (const auto &[key, value] : info.asKeyValueRange()) {
        if (!value.isEmpty())
            text += u'\\' + key + u'\\' + value;
    }
    text += u'\n';
    for (const Player &player : players) {
        if (player.state != Player::State::Leaving)
            text += u"%1 %2 "_s.arg(player.score).arg(player.ping) + u'"' + player.name + u"\"\n"_s;
    }
    return text;
}

QString serverInfoText(const Dvars &dvars)
{
    QString text = u"Server info settings:\n"_s;
    const QMap<QString, QString> info = information(dvars);
    for (const auto &[key, value] : info.asKeyValueRange())
        text += key.leftJustified(20) + value + u'\n';
    return text;
}
