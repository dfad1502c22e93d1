// SPDX-License-Identifier: MIT
#include "fuzz.h"
#include "messages/message_sets.h"

namespace {

constexpr qsizetype longest = 199; // characters

QStringList withoutEmpty(QStringList texts)
{
    texts.removeAll(QString());
    return texts;
}

void examine(const MessageSets &sets)
{
    require(sets.setcount() >= 0 && sets.setcount() <= MessageSets::slotCount, "there are ten slots");
    require(sets.currentset() == 0, "the first set is the current one");
    for (int slot = 0; slot < MessageSets::slotCount; ++slot) {
        require(sets.name(slot).isEmpty() == (slot >= sets.setcount()), "the sets take the first slots");
        require(sets.name(slot).size() <= longest, "no name is longer than the buffer");
        for (const QString &message : sets.savedMessages(slot))
            require(message.size() <= longest, "no message is longer than the buffer");
    }
    require(sets.messages() == withoutEmpty(sets.savedMessages(0)), "what was loaded is what is saved");
}

} // namespace

void fuzz(const QByteArray &input)
{
    IniText ini(input);
    MessageSets sets;
    sets.load(ini);
    examine(sets);

    for (const IniEntry &entry : sets.entries())
        ini.set(entry);
    MessageSets again;
    again.load(ini);
    examine(again);
    require(again.entries() == sets.entries(), "sets that are written back read the same");
}
