// SPDX-License-Identifier: MIT
#include "message_sets.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int buffer = 200; // characters
const QString nameKey = u"name"_s;

QString sectionOf(int number)
{
    return u"set"_s + QString::number(number);
}

QString keyOf(qsizetype number)
{
    return u"mess"_s + QString::number(number);
}

} // namespace

void MessageSets::load(const IniText &ini)
{
    *this = MessageSets();
    for (int number = 0; number < slotCount; ++number) {
        const QString section = sectionOf(number);
        const QString name = ini.value(section, nameKey, buffer);
        if (name.isEmpty())
            return;
        const auto slot = static_cast<std::size_t>(count);
        setnames[count] = savedsetnames[count] = name;
        for (qsizetype position = 0;; ++position) {
            const QString text = ini.value(section, keyOf(position), buffer);
            if (text.isEmpty())
                break;
            if (position == setmessages.size()) {
                setmessages.append(Position());
                savedsetmessages.append(Position());
            }
            setmessages[position][slot] = savedsetmessages[position][slot] = text;
        }
        ++count;
    }
}

int MessageSets::slotOf(const QString &name) const
{
    return static_cast<int>(setnames.indexOf(name));
}

QStringList MessageSets::messages() const
{
    QStringList texts;
    for (const Position &position : setmessages) {
        const QString &text = position.at(static_cast<std::size_t>(current));
        if (!text.isEmpty())
            texts.append(text);
    }
    return texts;
}

bool MessageSets::hasFreeSlot() const
{
    return count < slotCount && slotOf({}) >= 0;
}

void MessageSets::select(const QString &name)
{
    if (const int slot = slotOf(name); slot >= 0)
        current = slot;
}

void MessageSets::create(const QString &name)
{
    current = slotOf({});
    ++count;
    setnames[current] = name;
}

void MessageSets::add(const QString &message_)
{
    qsizetype position = 0;
    while (position < setmessages.size() && !message(position).isEmpty())
        ++position;
    if (position == setmessages.size())
        setmessages.append(Position());
    message(position) = message_;
}

bool MessageSets::edit(const QString &old, const QString &message_)
{
    if (old == message_)
        return false;
    for (qsizetype position = 0; position < setmessages.size(); ++position) {
        if (message(position) == old) {
            message(position) = message_;
            return true;
        }
    }
    return false;
}

void MessageSets::removeAt(qsizetype position)
{
    if (position < setmessages.size())
        message(position).clear();
}

void MessageSets::swap(qsizetype one, qsizetype other)
{
    while (setmessages.size() <= std::max(one, other))
        setmessages.append(Position());
    std::swap(message(one), message(other));
}

void MessageSets::removeSet(const QString &name)
{
    const int slot = slotOf(name);
    if (slot < 0)
        return;
    for (Position &position : setmessages)
        position[static_cast<std::size_t>(slot)].clear();
    setnames[slot].clear();
    --count;
}

QStringList MessageSets::discard()
{
    setmessages = QList<Position>(savedsetmessages.size());
    QStringList names;
    for (int slot = 0; slot < slotCount && !savedsetnames.at(slot).isEmpty(); ++slot) {
        setnames[slot] = savedsetnames.at(slot);
        names.append(setnames.at(slot));
        const auto index = static_cast<std::size_t>(slot);
        for (qsizetype position = 0; position < setmessages.size(); ++position)
            setmessages[position][index] = savedsetmessages.at(position).at(index);
    }
    return names;
}

QList<IniEntry> MessageSets::entries() const
{
    QList<IniEntry> written;
    int sets = 0;
    for (int slot = 0; slot < slotCount; ++slot) {
        if (setnames.at(slot).isEmpty())
            continue;
        const QString section = sectionOf(sets++);
        written.append({section, nameKey, setnames.at(slot)});
        qsizetype number = 0;
        for (qsizetype position = 0; position < setmessages.size(); ++position) {
            const QString &text = setmessages.at(position).at(static_cast<std::size_t>(slot));
            if (!text.isEmpty() || position == 0)
                written.append({section, keyOf(number++), text});
        }
        written.append({section, keyOf(number), {}});
    }
    for (int blank = sets; blank < slotCount; ++blank)
        written.append({sectionOf(blank), nameKey, {}});
    return written;
}

void MessageSets::beginSave()
{
    savedsetmessages = QList<Position>(setmessages.size());
    count = 0;
    current = 0;
}

void MessageSets::endSave()
{
    for (int slot = 0; slot < slotCount; ++slot) {
        if (setnames.at(slot).isEmpty())
            continue;
        ++count;
        savedsetnames[slot] = setnames.at(slot);
        const auto index = static_cast<std::size_t>(slot);
        for (qsizetype position = 0; position < setmessages.size(); ++position)
            savedsetmessages[position][index] = setmessages.at(position).at(index);
    }
}

int MessageSets::savedSlotOf(const QString &name) const
{
    return static_cast<int>(savedsetnames.indexOf(name));
}

QStringList MessageSets::savedMessages(int slot) const
{
    QStringList texts;
    for (const Position &position : savedsetmessages)
        texts.append(position.at(static_cast<std::size_t>(slot)));
    return texts;
}
