// SPDX-License-Identifier: MIT
#include "players.h"

#include "regulars.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int noAnswer = 999;

QString described(const Player &player)
{
    return u"%1 (slot %2)"_s.arg(player.name).arg(player.slot);
}

} // namespace

Players::Players(int count, quint32 seed, bool quirks)
    : m_random(seed), m_regulars(regulars(m_random, quirks)), m_wanted(count), m_quirks(quirks)
{
    for (int slot = 0; slot < count; ++slot)
        settleIn(m_regulars.at(slot), slot);
    for (Player &player : m_players) {
        player.state = Player::State::Playing;
        player.score = m_random.bounded(quirks ? -5 : 0, 40);
        if (chance(8))
            player.hangingFor = 1;
        play(player);
        if (quirks && player.slot % 8 == 4)
            player.state = Player::State::Connecting;
        if (quirks && player.slot % 8 == 6)
            player.state = Player::State::Leaving;
    }
}

const Player *Players::at(int slot) const
{
    const auto found = std::ranges::find(m_players, slot, &Player::slot);
    return found == m_players.end() ? nullptr : &*found;
}

void Players::put(const Player &player)
{
    remove(player.slot);
    m_players.insert(std::ranges::lower_bound(m_players, player.slot, {}, &Player::slot), player);
}

void Players::remove(int slot)
{
    m_players.removeIf([slot](const Player &player) { return player.slot == slot; });
}

void Players::resetScores()
{
    for (Player &player : m_players)
        player.score = 0;
}

QStringList Players::step(const Bans &bans, qint64 now, int slotCount)
{
    QStringList events;
    for (Player &player : m_players) {
        const bool hung = player.hangingFor > 0;
        play(player);
        if (!hung && player.hangingFor > 0)
            events.append(described(player) + u" hangs at ping 999"_s);
    }
    leave(events);
    arrive(bans, now, slotCount, events);
    return events;
}

void Players::settleIn(const Regular &regular, int slot)
{
    Player player;
    player.slot = slot;
    player.name = regular.name;
    player.guid = regular.guid;
    player.address = regular.address;
    player.qport = regular.qport;
    player.rate = regular.rate;
    player.ping = noAnswer; // as everybody who is still joining
    player.state = m_quirks ? Player::State::Connecting : Player::State::Playing;
    put(player);
}

void Players::play(Player &player)
{
    if (player.state == Player::State::Connecting && chance(4))
        player.state = Player::State::Playing;
    if (player.state != Player::State::Playing)
        return;
    if (player.hangingFor > 0 ? chance(20) : chance(200))
        player.hangingFor = player.hangingFor > 0 ? 0 : 1;
    else if (player.hangingFor > 0)
        ++player.hangingFor;
    player.ping = player.hangingFor > 0 ? noAnswer : m_random.bounded(25, 140);
    player.lastmsg = player.hangingFor > 0 ? player.hangingFor * 1000 : m_random.bounded(2) * 50;
    if (player.hangingFor == 0 && chance(6))
        player.score += m_quirks && chance(5) ? -1 : 1;
}

void Players::leave(QStringList &events)
{
    constexpr int longestHang = 60; // seconds until the game gives somebody up
    for (qsizetype at = m_players.size() - 1; at >= 0; --at) {
        Player &player = m_players[at];
        const bool timedOut = player.hangingFor >= longestHang;
        if (player.state == Player::State::Leaving) {
            m_players.removeAt(at);
        } else if (timedOut || chance(300)) {
            events.append(described(player) + (timedOut ? u" timed out"_s : u" left"_s));
            player.state = Player::State::Leaving;
            if (!m_quirks)
                m_players.removeAt(at);
        }
    }
}

void Players::arrive(const Bans &bans, qint64 now, int slotCount, QStringList &events)
{
    const bool missed = m_players.size() < m_wanted;
    if (m_wanted == 0 || !chance(missed ? 5 : 100) || m_players.size() > m_wanted)
        return;
    const Regular &regular = m_regulars.at(m_random.bounded(m_regulars.size()));
    const std::optional<int> slot = freeSlot(slotCount);
    if (isHere(regular) || !slot)
        return;
    if (bans.holds(regular.guid, regular.address, now)) {
        events.append(regular.name + u" is banned and was turned away"_s);
        return;
    }
    settleIn(regular, *slot);
    events.append(described(*at(*slot)) + u" came in"_s);
}

bool Players::isHere(const Regular &regular) const
{
    return std::ranges::any_of(m_players, [&regular](const Player &player) {
        return player.guid == regular.guid && player.name == regular.name;
    });
}

std::optional<int> Players::freeSlot(int slotCount) const
{
    for (int slot = 0; slot < slotCount; ++slot) {
        if (at(slot) == nullptr)
            return slot;
    }
    return std::nullopt;
}
