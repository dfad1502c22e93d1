// SPDX-License-Identifier: MIT
#include "players.h"

#include "colours.h"
#include "regulars.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int noAnswer = 999;
constexpr qsizetype longestName = 31; // characters

QString described(const Player &player)
{
    return u"%1 (slot %2)"_s.arg(player.name, QString::number(player.slot));
}

PracticeOptions optionsFor(int count, quint32 seed, bool quirks)
{
    PracticeOptions options;
    options.players = count;
    options.seed = seed;
    options.quirks = quirks;
    return options;
}

} // namespace

Players::Players(int count, quint32 seed, bool quirks_) : Players(optionsFor(count, seed, quirks_)) {}

Players::Players(const PracticeOptions &options)
    : random(options.seed),
      visitors(regulars(random, options.quirks, options.guidBans)),
      wanted(qBound(PracticeOptions::playerLimits.lowest, options.players, PracticeOptions::playerLimits.highest)),
      quirks(options.quirks),
      renames(options.renames)
{
    if (renames)
        mixVisitors();
    for (int slot = 0; slot < wanted; ++slot)
        settleIn(visitors.at(slot), slot);
    for (Player &player : present) {
        const bool isJoining = quirks && player.slot % 8 == 4;
        if (!isJoining)
            lookBack(player);
        if (quirks && player.slot % 8 == 6)
            player.state = Player::State::Leaving;
    }
}

// Other people at other places, some in a clan or in colours, so that each seed has rows of other lengths. The first
// three stay: the demo client is one of them.
void Players::mixVisitors()
{
    std::shuffle(visitors.begin() + 3, visitors.end(), random);
    for (Regular &regular : visitors) {
        if (regular.guid != "0"_L1 && chance(3))
            regular.name = dressed(regular.name);
    }
}

const Player *Players::at(int slot) const
{
    const auto found = std::ranges::find(present, slot, &Player::slot);
    return found == present.end() ? nullptr : &*found;
}

void Players::put(const Player &player)
{
    remove(player.slot);
    present.insert(std::ranges::lower_bound(present, player.slot, {}, &Player::slot), player);
}

void Players::remove(int slot)
{
    present.removeIf([slot](const Player &player) { return player.slot == slot; });
}

void Players::rename(int slot, const QString &name)
{
    const auto found = std::ranges::find(present, slot, &Player::slot);
    if (found != present.end())
        found->name = name;
}

void Players::resetScores()
{
    for (Player &player : present)
        player.score = 0;
}

QStringList Players::step(const Bans &bans, qint64 now, int slotCount)
{
    QStringList events;
    for (Player &player : present) {
        const bool hung = player.hangingFor > 0;
        play(player);
        if (!hung && player.hangingFor > 0)
            events.append(described(player) + u" hangs at ping 999"_s);
    }
    if (renames)
        chooseNames(events);
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
    player.score = 0; // as everybody who is still joining, like the ping
    player.ping = noAnswer;
    player.state = quirks ? Player::State::Connecting : Player::State::Playing;
    put(player);
}

// Gives somebody who was there before the story begins a past.
void Players::lookBack(Player &player)
{
    player.state = Player::State::Playing;
    player.score = random.bounded(quirks ? -5 : 0, 40);
    if (chance(8))
        player.hangingFor = 1;
    play(player);
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
    player.ping = player.hangingFor > 0 ? noAnswer : random.bounded(25, 140);
    player.lastmsg = player.hangingFor > 0 ? player.hangingFor * 1000 : random.bounded(2) * 50;
    if (player.hangingFor == 0 && chance(6))
        player.score += quirks && chance(5) ? -1 : 1;
}

void Players::chooseNames(QStringList &events)
{
    for (Player &player : present) {
        if (player.state != Player::State::Playing || player.guid == "0"_L1 || !chance(200))
            continue;
        const QString before = described(player);
        player.name = otherName(player);
        events.append(before + u" is now called "_s + player.name);
    }
}

// What people do: another colour, a clan's tag, or the name of somebody else.
QString Players::otherName(const Player &player)
{
    return chance(3) ? present.at(random.bounded(present.size())).name : dressed(player.name);
}

QString Players::dressed(const QString &name)
{
    QString text = withoutColours(name);
    const QString tag = u"[DE] "_s;
    if (chance(2))
        return (text.startsWith(tag) ? text.sliced(tag.size()) : tag + text).left(longestName);
    for (qsizetype at = text.size() - 1; at >= 0; --at) {
        if (at == 0 || chance(4))
            text.insert(at, u'^' + QString::number(random.bounded(8)));
    }
    return text.left(longestName);
}

void Players::leave(QStringList &events)
{
    constexpr int longestHang = 60; // seconds until the game gives somebody up
    for (qsizetype at = present.size() - 1; at >= 0; --at) {
        Player &player = present[at];
        const bool timedOut = player.hangingFor >= longestHang;
        if (player.state == Player::State::Leaving) {
            present.removeAt(at);
        } else if (timedOut || chance(300)) {
            events.append(described(player) + (timedOut ? u" timed out"_s : u" left"_s));
            player.state = Player::State::Leaving;
            if (!quirks)
                present.removeAt(at);
        }
    }
}

void Players::arrive(const Bans &bans, qint64 now, int slotCount, QStringList &events)
{
    const bool missed = present.size() < wanted;
    if (wanted == 0 || !chance(missed ? 5 : 100) || present.size() > wanted)
        return;
    const Regular &regular = visitors.at(random.bounded(visitors.size()));
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
    return std::ranges::any_of(present, [this, &regular](const Player &player) {
        const bool isKnownByGuid = renames && regular.guid != "0"_L1; // whatever he is called by now
        return player.guid == regular.guid && (isKnownByGuid || player.name == regular.name);
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
