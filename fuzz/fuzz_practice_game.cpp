// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "practice/datagrams.h"
#include "practice/game_server.h"

#include <algorithm>

namespace {

constexpr qsizetype longestCommand = 1023; // bytes
const QByteArray head("\xFF\xFF\xFF\xFFprint\n");

void read(const QByteArray &datagram)
{
    const Request request = readRequest(datagram);
    require(!request.command.contains('\n') && request.command.size() <= longestCommand, "a command is one short line");
    require(datagram.contains(request.command) && datagram.contains(request.password), "nothing is made up");
    const Request cut = readRequest(datagram, PracticeOptions::cod2());
    require(cut.password.size() + cut.command.size() <= longestCommand, "the password counts");
    require(!cut.command.contains('%') && !cut.command.contains('\n'), "a command is read the engine's way");
}

void cutUp(const QByteArray &text, qsizetype size)
{
    QList<QByteArray> datagrams = printDatagrams(text, size);
    QByteArray joined;
    for (const QByteArray &datagram : datagrams) {
        require(datagram.startsWith(head) && datagram.size() <= head.size() + size, "pieces have a head and fit");
        joined += datagram.sliced(head.size());
    }
    require(joined == text, "the pieces are the text");
    for (const QByteArray &datagram : losingPrintDatagrams(text))
        require(datagram.startsWith(head) && datagram.size() <= 1303, "a full piece lacks its last character");
    QList<QByteArray> mixed = reordered(datagrams);
    std::ranges::sort(mixed);
    std::ranges::sort(datagrams);
    require(mixed == datagrams, "a careless network loses nothing");
}

void play(GameServer game, const QByteArrayList &lines)
{
    constexpr qsizetype mostCommands = 8;
    for (const QByteArray &line : lines.first(std::min(lines.size(), mostCommands))) {
        const CommandResult result = game.execute(fromAnsi(line.left(longestCommand)));
        require(result.reply.isEmpty() || result.reply.endsWith(u'\n'), "lines of a reply are ended");
        require(!result.event.contains(u'\n'), "an event is one line");
        game.tick();
    }
}

} // namespace

// Every line is a command for the game's console.
void fuzz(const QByteArray &input)
{
    read(input);
    read("\xFF\xFF\xFF\xFFrcon " + input);
    cutUp(input, input.size() % 100 + 1);

    static const GameServer fresh; // copying it is quicker than making one
    static const GameServer harsh(PracticeOptions::cod2());
    play(fresh, input.split('\n'));
    play(harsh, input.split('\n'));
}
