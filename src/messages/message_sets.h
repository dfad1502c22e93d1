// SPDX-License-Identifier: MIT
#pragma once

#include "settings/ini_text.h"

#include <QList>
#include <QStringList>

#include <array>

/// The chat message sets: ten slots with a name and messages each, as the person edits them and as they were last
/// loaded or saved. A slot without a name is free, and a position without a text is empty. The number of positions is
/// shared by all slots and grows with the longest.
class MessageSets final {
public:
    static constexpr int slotCount = 10;

    /// Reads the sets of the settings file: up to the first without a name, each up to its first empty message.
    void load(const IniText &ini);

    [[nodiscard]] int setcount() const { return count; }
    [[nodiscard]] int currentset() const { return current; }
    [[nodiscard]] const QString &name(int slot) const { return setnames.at(slot); }
    /// The first slot of that name; -1 when there is none.
    [[nodiscard]] int slotOf(const QString &name) const;
    [[nodiscard]] bool hasFreeSlot() const;
    /// The messages of the current set in order, without the empty positions.
    [[nodiscard]] QStringList messages() const;

    /// Makes the set of that name the current one, if there is one.
    void select(const QString &name);
    /// Takes the first free slot for a new set and makes it current. Its positions stay as they are: what was added
    /// before there was any set joins it. There must be a free slot.
    void create(const QString &name);

    /// Puts a message into the current set's first empty position, a new one if need be.
    void add(const QString &message);
    /// Replaces the first message of the current set that is `old`. False when there is none or nothing changes.
    bool edit(const QString &old, const QString &message);
    /// Empties a position of the current set, if there is one; the positions behind it stay where they are.
    void removeAt(qsizetype position);
    void swap(qsizetype one, qsizetype other);
    /// Frees the slot of that name, if there is one. The current set stays the same slot.
    void removeSet(const QString &name);
    /// The first slot again, whatever it holds.
    void resetCurrent() { current = 0; }

    /// Puts the saved names and messages back, up to the first saved slot without a name, and returns those names. The
    /// count, the current set and the names behind that slot stay.
    QStringList discard();

    /// The keys that hold the sets, one behind the other whatever their slots, each set with an empty message as its
    /// end; the names behind the last set are emptied. A set's first position is written also when it is empty.
    [[nodiscard]] QList<IniEntry> entries() const;
    /// Saving begins: the saved messages, the count and the current set are set back.
    void beginSave();
    /// All entries have been written: takes over what was saved. The saved name of a freed slot stays.
    void endSave();

    /// The first slot whose saved name that is; -1 when there is none.
    [[nodiscard]] int savedSlotOf(const QString &name) const;
    /// The saved messages of a slot, by position.
    [[nodiscard]] QStringList savedMessages(int slot) const;

private:
    using Position = std::array<QString, slotCount>; ///< one message of each slot

    [[nodiscard]] QString &message(qsizetype position)
    {
        return setmessages[position][static_cast<std::size_t>(current)];
    }

    QStringList setnames = QStringList(slotCount);
    QStringList savedsetnames = QStringList(slotCount);
    QList<Position> setmessages{Position()};
    QList<Position> savedsetmessages{Position()};
    int count = 0;
    int current = 0;
};
