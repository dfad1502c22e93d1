// SPDX-License-Identifier: MIT
#include "fuzz.h"
#include "rcon/server_listing.h"
#include "rcon/words_file.h"

#include <algorithm>

void fuzz(const QByteArray &input)
{
    QString fault;
    const KeptWords read = wordsIn(input, fault);
    require(fault.isEmpty() || read == KeptWords(), "of a broken file nothing is taken");
    for (const KeptWords::Server &server : read.servers) {
        require(std::ranges::all_of(server.words.commands + server.words.variables, &isWord), "each is a word");
        require(server.words.count() <= ServerWords::most, "there are no more than the bound");
    }
    QString again;
    require(wordsIn(bytesOf(read), again) == read && again.isEmpty(), "what is written is read");
}
