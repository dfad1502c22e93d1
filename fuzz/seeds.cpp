// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "practice/datagrams.h"
#include "practice/game_server.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// Where each target has a folder of its own.
QDir corpus;

void write(const QString &target, const QString &name, const QByteArray &bytes)
{
    QFile file(corpus.filePath(target + u'/' + name));
    if (!corpus.mkpath(target) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "Cannot be written: %s\n", qPrintable(file.fileName()));
        std::exit(1);
    }
}

QByteArray answerOf(GameServer &game, const QString &command)
{
    return toAnsi(game.execute(command).reply);
}

QByteArray fields(const QList<QByteArray> &values, char separator)
{
    return values.join(separator);
}

void writePlayers(GameServer &game, const QString &name)
{
    const QByteArray table = answerOf(game, u"status"_s);
    const QByteArray response = "\xFF\xFF\xFF\xFF" + toAnsi(game.statusResponse());
    constexpr qsizetype pause = 300; // characters
    const QByteArray cut{static_cast<char>(pause / 256), static_cast<char>(pause % 256)};
    write(u"status_table"_s, name, cut + table);
    write(u"status_table"_s, name + u"_squeezed"_s, cut + toAnsi(squeezeBlanks(fromAnsi(table))));
    write(u"getstatus_reply"_s, name, response);
    write(u"server_info"_s, name, response);

    QByteArrayList names;
    QByteArrayList rows{"\x02"};
    QByteArrayList populate;
    for (const Player &player : game.players().all()) {
        const QByteArray slot = QByteArray::number(player.slot);
        const QByteArray ping = QByteArray::number(player.ping);
        names.append(toAnsi(player.name));
        rows.append(fields({"", slot, player.guid.toLatin1(), toAnsi(player.name), ping}, '\t'));
        populate.append(fields({toAnsi(player.name), player.slot % 3 == 0 ? "999" : ping, slot}, '\t'));
    }
    write(u"colour_codes"_s, name, names.join('\n'));
    write(u"player_csv"_s, name, names.join('\n'));
    write(u"player_table"_s, name, rows.join('\n'));
    write(u"list999"_s, name, populate.join('\n') + "\n\n" + populate.join('\n') + "\n\n");

    write(u"arrival"_s, name, printDatagrams(table, 1000).join("<next>"));
    write(u"arrival"_s, name + u"_getstatus"_s, response);
}

void writeListings(GameServer &game)
{
    const QByteArray rotation = answerOf(game, u"dvarlist sv_maprotation"_s);
    const QByteArray files = answerOf(game, u"fdir *.cfg"_s);
    const QByteArray maps = answerOf(game, u"dir maps/mp d3dbsp"_s);
    write(u"rotation"_s, u"rotation"_s, rotation);
    write(u"rotation"_s, u"files"_s, files);
    write(u"rotation_text"_s, u"limits"_s, answerOf(game, u"dvarlist scr_*_timelimit"_s));
    write(u"file_listing"_s, u"files"_s, files);
    write(u"map_listing"_s, u"maps"_s, maps);
    write(u"dvar_reply"_s, u"rotation"_s, "sv_maprotation\n" + rotation);
    write(u"dvar_reply"_s, u"server"_s, "sv_hostname\n" + answerOf(game, u"dvarlist sv_*"_s));
    write(u"dvar_reply"_s, u"modes"_s, "scr_sd_timelimit\n" + answerOf(game, u"dvarlist scr_sd"_s));
    write(u"arrival"_s, u"files"_s, printDatagram(files));
    write(u"arrival"_s, u"unknown"_s, printDatagram(answerOf(game, u"nonsense"_s)));
    write(u"arrival"_s, u"empty"_s, "<next>");
    write(u"arrival"_s, u"all"_s, printDatagram(answerOf(game, u"dvarlist"_s)));
}

void writeSettings()
{
    const QByteArray servers = "[servers]\r\nserver1=cod.example.org\r\nserver2=\" 10.0.0.1 \"\r\n"
                               "[ports]\r\nport1=28960\r\nport2=28961\r\n[rcon]\r\nrcon1='a b'\r\nrcon2=\r\n";
    const QByteArray sets =
        "; mine\r\n[set0]\r\nname=Rules\r\nmess0=Welcome to %SN%\r\nmess1=Fire is %ff%\r\nmess2=\r\n"
        "\r\n[set1]\r\nname=Ads\r\nmess0=Join us on %ip%\r\n";
    const QByteArray options = "\xEF\xBB\xBF[options]\r\nsavercon=0\r\nautoqplayer=1\r\nautoqplayerint=5\r\n"
                               "autoconnectserv=cod.example.org\r\nautoconnectport=28960\r\nautoconnectrcon=secret\r\n";
    write(u"saved_servers"_s, u"two"_s, servers);
    write(u"message_sets"_s, u"two"_s, sets);
    write(u"preferences"_s, u"some"_s, options);
    write(u"ini_text"_s, u"servers"_s, "servers\nserver3\ncod.example.com\n" + servers);
    write(u"ini_text"_s, u"sets"_s, "set1\nname\n\"quoted\"\n" + sets);
    write(u"ini_text"_s, u"options"_s, "Options\nSAVERCON\n  \n" + options);
}

void writeSmall()
{
    const QByteArrayList numbers{"1",  " -2.5 ",     "3.5e4", "32767.5", "-32768",
                                 ".5", "2147483647", "1e999", "+ 1",     "12 players"};
    for (qsizetype index = 0; index < numbers.size(); ++index)
        write(u"numbers"_s, QString::number(index), numbers.at(index));
    write(u"placeholders"_s, u"all"_s, "%ip% runs %SN%, friendly fire %Ff%\n2\n\nsecond\n");
    const QByteArray rotation = "gametype dm map mp_decoy gametype tdm map mp_toujane map mp_carentan";
    write(u"rotation_text"_s, u"held"_s, rotation);
    write(u"rotation_text"_s, u"odd"_s, "map mp_a foo GAMETYPE sd gametype hq bar MAP mp_b gametype dm map");
    write(u"rotation_text"_s, u"config"_s, "// mine\r\nset sv_mapRotation \"" + rotation + "\"\r\nset g_speed 190\r\n");
    write(u"rotation_presets"_s, u"two"_s,
          "{\"presets\":[{\"name\":\"War\",\"rotation\":\"" + rotation +
              "\"},{\"name\":\"Empty\",\"rotation\":\"\"}]}");
    write(u"rotation_presets"_s, u"twice"_s, R"({"presets":[{"name":"a","rotation":""},{"name":"A","rotation":""}]})");
    write(u"practice_game"_s, u"asking"_s, "status\nserverinfo\ndvarlist scr_*\nfdir *.cfg\ndir maps/mp d3dbsp\n");
    write(u"practice_game"_s, u"setting"_s, "set g_gametype sd\nscr_sd_timelimit \"5\"\nmap mp_carentan\nmap_rotate\n");
    write(u"practice_game"_s, u"players"_s, "say hello\ntell 1 hi\nclientkick 0\ntempbanclient 1\nexec match.cfg\n");
    write(u"wire_text"_s, u"blanks"_s, "  a   b\tc\xE4\x80\x81  ");
    write(u"server_info"_s, u"refused"_s, "Bad rconpassword.\n");
    write(u"server_info"_s, u"nameless"_s, "statusResponse\n\\g_gametype\\\\mapname\\\\protocol\\118\n");
}

} // namespace

// Writes what a server answers, and a few settings and texts of a person's making, below the folder that is its only
// argument: for each target something to begin with.
int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    corpus = QDir(QString::fromLocal8Bit(argv[1]));
    GameServer usual;
    writePlayers(usual, u"usual"_s);
    writeListings(usual);
    PracticeOptions options;
    options.players = 20;
    options.quirks = true;
    GameServer nasty(options);
    writePlayers(nasty, u"nasty"_s);
    options.players = 0;
    GameServer empty(options);
    writePlayers(empty, u"empty"_s);
    writeSettings();
    writeSmall();
    return 0;
}
